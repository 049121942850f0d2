// A grid on a form, and the user before it.
#pragma once

#include <gmock/gmock.h>

#include "platform/windows/WindowsApi.h"

#include <commctrl.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/text.h"
#include "platform/windows/forms/Font.h"
#include "platform/windows/forms/GridControl.h"
#include "platform/windows/forms/WindowText.h"
#include "tests/windows/gui_test.h"

namespace qva::windows {

constexpr UiScale kScale{96};
using Texts = std::vector<std::u16string>;

/// Rows of texts that show themselves anew after every change, as the library's list does.
class TestModel : public ui::GridModel {
 public:
  std::vector<Texts> rows;
  std::size_t width = 5;
  bool gives_rows = true;
  std::u16string refused = u"bloga";
  ui::Grid* grid = nullptr;
  Texts stored;   ///< every text that was to be stored
  Texts pressed;  ///< the cells whose button was pressed, as "row:column"
  std::function<void()> on_press;

  std::size_t RowCount() const override { return rows.size(); }
  std::u16string CellText(std::size_t row, std::size_t column) const override {
    return rows.at(row).at(column);
  }
  bool SetCellText(std::size_t row, std::size_t column, std::u16string_view text) override {
    stored.emplace_back(text);
    if (text == refused) return false;
    rows.at(row).at(column) = text;
    Show(row);
    return true;
  }
  void AppendRow() override {
    if (!gives_rows) return;
    rows.emplace_back(width);
    Show(rows.size() - 1);
  }
  void DeleteRow(std::size_t row) override {
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(row));
    grid->Refresh();
  }
  void PressCellButton(std::size_t row, std::size_t column) override {
    pressed.push_back(FromUtf8(std::to_string(row) + ":" + std::to_string(column)));
    if (on_press) on_press();
  }

 private:
  void Show(std::size_t row) {
    grid->Refresh();
    grid->SetCurrentRow(row);
  }
};

/// A form with a field, the grid and another field, and the buttons OK and Cancel; and the user before it.
class GridControlTest : public testing::Test {
 protected:
  struct EmptyTemplate {
    DLGTEMPLATE dialog;
    WORD menu = 0;
    WORD window_class = 0;
    WORD title = 0;
  };

  void SetUp() override {
    if (!HasDisplay()) GTEST_SKIP() << "no display";
    Open();
  }
  void TearDown() override { Close(); }

  void Open() {
    EmptyTemplate empty{};
    empty.dialog.style = WS_POPUP | WS_CAPTION | WS_VISIBLE | DS_CONTROL;
    form = CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &empty.dialog, nullptr, &Procedure,
                                      reinterpret_cast<LPARAM>(this));
    ASSERT_TRUE(form);
    SetWindowPos(form, nullptr, 50, 50, 500, 300, SWP_NOZORDER);
    before = AddControl(L"EDIT", 10, 0);
    grid = std::make_unique<GridControl>(form, 11, u"SpecGrid", kScale,
                                         [this](std::exception_ptr failure) { failures.push_back(failure); });
    font.emplace(kScale);
    grid->SetFont(font->get());
    MoveWindow(grid->window(), 0, 30, 440, 180, TRUE);
    after = AddControl(L"EDIT", 12, 220);
    AddControl(L"BUTTON", IDOK, 245);
    AddControl(L"BUTTON", IDCANCEL, 265);
    SendMessageW(form, DM_SETDEFID, IDOK, 0);
    grid->SetColumns(
        {{.name = u"Code", .caption = u"Kodas", .width = 90},
         {.name = u"Plan", .caption = u"Planas", .width = 90, .cell_button = true},
         {.name = u"Id", .caption = u"", .width = 0},
         {.name = u"Flag", .caption = u"Biudžeto", .width = 60, .read_only = true, .check_box = true},
         {.name = u"Name", .caption = u"Pavadinimas", .width = 120, .read_only = true}});
    model.grid = grid.get();
    model.rows = {{u"a0", u"b0", u"1", u"True", u"n0"},
                  {u"a1", u"b1", u"2", u"False", u"n1"},
                  {u"a2", u"b2", u"3", u"0", u"n2"}};
    grid->SetModel(&model);
    SetForegroundWindow(form);
    grid->SetFocus();
    Pump();
  }

  void Close() {
    grid.reset();
    if (form) DestroyWindow(form);
    form = nullptr;
    font.reset();
    Pump();
  }

  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_INITDIALOG) SetWindowLongPtrW(window, DWLP_USER, second);
    auto* test = reinterpret_cast<GridControlTest*>(GetWindowLongPtrW(window, DWLP_USER));
    if (message != WM_COMMAND || !test || LOWORD(first) > IDCANCEL) return FALSE;
    test->commands.push_back(LOWORD(first));
    return TRUE;
  }

  HWND AddControl(const wchar_t* window_class, int id, int top) {
    return CreateWindowExW(0, window_class, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, top, 100, 20, form,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
  }

  void Pump() const {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      if (form && IsDialogMessageW(form, &message)) continue;
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }

  void Press(WORD key, const std::vector<WORD>& held = {}) const {
    StrikeKey(key, held);
    Pump();
  }
  void Type(std::u16string_view text) const {
    StrikeText(text);
    Pump();
  }
  void Repeat(int times, WORD key, const std::vector<WORD>& held = {}) const {
    for (int i = 0; i < times; ++i) Press(key, held);
  }

  /// The field over the current cell; null while none is edited.
  HWND Editor() const {
    HWND editor = FindWindowExW(grid->window(), nullptr, L"Edit", nullptr);
    return IsWindowVisible(editor) ? editor : nullptr;
  }
  std::u16string EditorText() const { return TextOfWindow(Editor()); }
  HWND Header() const { return FindWindowExW(grid->window(), nullptr, WC_HEADERW, nullptr); }
  RECT HeaderItem(int item) const {
    RECT area{};
    SendMessageW(Header(), HDM_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&area));
    return area;
  }
  /// The height of a line, which all lines have.
  int LineHeight() const {
    HDC context = GetDC(nullptr);
    HGDIOBJ old = SelectObject(context, font->get());
    TEXTMETRICW metrics{};
    GetTextMetricsW(context, &metrics);
    SelectObject(context, old);
    ReleaseDC(nullptr, context);
    return static_cast<int>(metrics.tmHeight) + 7;
  }
  /// A place in a cell of a grid that is not scrolled, at its left or right end.
  LPARAM PlaceIn(int line, int item, bool at_right = false) const {
    const RECT heading = HeaderItem(item);
    return MAKELPARAM(at_right ? heading.right - 6 : heading.left + 6,
                      heading.bottom + line * LineHeight() + LineHeight() / 2);
  }
  void Click(LPARAM place, UINT down = WM_LBUTTONDOWN) const {
    SendMessageW(grid->window(), down, MK_LBUTTON, place);
    SendMessageW(grid->window(), WM_LBUTTONUP, 0, place);
    Pump();
  }
  /// The texts of a column.
  Texts Column(std::size_t column) const {
    Texts texts;
    for (const Texts& row : model.rows) texts.push_back(row.at(column));
    return texts;
  }
  /// Writes a mark into the current cell, to see which one it is.
  Texts CellTakenByTyping(std::u16string_view mark) {
    Type(mark);
    Press(VK_RETURN);
    for (std::size_t row = 0; row < model.rows.size(); ++row) {
      for (std::size_t column = 0; column < model.width; ++column) {
        if (model.rows[row][column] == mark) {
          return {FromUtf8(std::to_string(row)), FromUtf8(std::to_string(column))};
        }
      }
    }
    return {};
  }

  TestModel model;
  std::optional<MessageFont> font;
  HWND form = nullptr;
  HWND before = nullptr;
  HWND after = nullptr;
  std::unique_ptr<GridControl> grid;
  std::vector<int> commands;
  std::vector<std::exception_ptr> failures;  ///< what Windows must not see
};

}  // namespace qva::windows
