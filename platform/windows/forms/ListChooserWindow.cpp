#include "platform/windows/forms/ListChooserWindow.h"

#include "platform/windows/WindowsApi.h"

#include <commctrl.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/forms/Guarded.h"
#include "platform/forms/list_filter.h"
#include "platform/message_box.h"
#include "platform/windows/WideText.h"
#include "platform/windows/forms/EmptyDialog.h"
#include "platform/windows/forms/Font.h"
#include "platform/windows/forms/LateFunctions.h"
#include "platform/windows/forms/Modality.h"
#include "platform/windows/forms/UiScale.h"
#include "platform/windows/forms/VisualStyles.h"
#include "platform/windows/forms/WindowClass.h"
#include "platform/windows/forms/WindowPlace.h"
#include "platform/windows/forms/WindowText.h"

namespace qva::windows {
namespace {

constexpr int kFilterId = 100;  // apart from Windows' own numbers such as IDCANCEL
constexpr int kListId = 101;

// Measures in pixels at 100 % scale.
constexpr int kFieldHeight = 23;
constexpr int kLabelWidth = 56;
constexpr int kButtonWidth = 88;
constexpr int kButtonHeight = 28;
constexpr int kWidth = 480;
constexpr int kHeight = 400;
constexpr int kLeastWidth = 280;
constexpr int kLeastHeight = 220;
constexpr int kColumnPadding = 16;
constexpr int kGreatestColumn = 240;

constexpr std::size_t kMeasuredRows = 200;  // for the columns' widths; more would take too long

constexpr DWORD kListStyle = WS_EX_DLGMODALFRAME;  // without an icon
constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN;

/// One showing of a list.
class Chooser {
 public:
  Chooser(const ChoiceList& list, std::u16string_view selected)
      : list_(list), selected_(selected), filter_(list) {}

  std::optional<std::size_t> Show() {
    const PerDisplayPixels pixels;
    const VisualStyles styles;
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
    late::InitCommonControlsEx(&controls);
    EmptyDialog empty{};
    empty.dialog.style = kStyle | DS_SETFOREGROUND;
    empty.dialog.dwExtendedStyle = kListStyle;
    DialogBoxIndirectParamW(OwnModule(), &empty.dialog, OwnerWindow(), &Chooser::Procedure,
                            reinterpret_cast<LPARAM>(this));
    return chosen_;
  }

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_INITDIALOG) {
      SetWindowLongPtrW(window, DWLP_USER, second);
      reinterpret_cast<Chooser*>(second)->window_ = window;
    }
    auto* chooser = reinterpret_cast<Chooser*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!chooser) return FALSE;
    return Guarded([&] { return chooser->Handle(message, first, second); },
                   [&](std::exception_ptr) { chooser->Leave(); });
  }

  static LRESULT CALLBACK FilterProcedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                          DWORD_PTR list) {
    if (message == WM_KEYDOWN &&
        (first == VK_UP || first == VK_DOWN || first == VK_PRIOR || first == VK_NEXT)) {
      return SendMessageW(reinterpret_cast<HWND>(list), message, first, second);
    }
    if (message == WM_NCDESTROY) late::RemoveWindowSubclass(window, &Chooser::FilterProcedure, id);
    return late::DefSubclassProc(window, message, first, second);
  }

  INT_PTR Handle(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
      case WM_INITDIALOG:
        Fill();
        return FALSE;  // the focus is set
      case WM_SIZE:
        Arrange();
        return TRUE;
      case WM_GETMINMAXINFO: {
        const SIZE least = OuterSize(kLeastWidth, kLeastHeight);
        reinterpret_cast<MINMAXINFO*>(second)->ptMinTrackSize = {least.cx, least.cy};
        return TRUE;
      }
      case WM_DPICHANGED:
        Rescale(UiScale{LOWORD(first)}, *reinterpret_cast<const RECT*>(second));
        return TRUE;
      case WM_COMMAND:
        if (LOWORD(first) == kFilterId && HIWORD(first) == EN_CHANGE) ShowMatches();
        if (LOWORD(first) == IDOK) Pick();
        if (LOWORD(first) == IDCANCEL) Leave();
        return TRUE;
      case WM_NOTIFY:
        return HandleList(reinterpret_cast<NMHDR*>(second));
      default:
        return FALSE;
    }
  }

  INT_PTR HandleList(NMHDR* notice) {
    if (notice->idFrom != kListId) return FALSE;
    switch (notice->code) {
      case static_cast<UINT>(LVN_GETDISPINFOW):
        Tell(reinterpret_cast<NMLVDISPINFOW*>(notice)->item);
        return TRUE;
      case static_cast<UINT>(LVN_ITEMCHANGED):
      case static_cast<UINT>(LVN_ODSTATECHANGED):
        EnableWindow(ok_, Selection() >= 0);
        return TRUE;
      case static_cast<UINT>(NM_CUSTOMDRAW):
        SetWindowLongPtrW(window_, DWLP_MSGRESULT, Draw(*reinterpret_cast<NMLVCUSTOMDRAW*>(notice)));
        return TRUE;
      case static_cast<UINT>(NM_DBLCLK):
        if (reinterpret_cast<const NMITEMACTIVATE*>(notice)->iItem >= 0) Pick();
        return TRUE;
      default:
        return FALSE;
    }
  }

  /// The selected row looks so also while the user types: that is where Enter goes.
  LRESULT Draw(NMLVCUSTOMDRAW& draw) const {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && static_cast<int>(draw.nmcd.dwItemSpec) == Selection()) {
      draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
      draw.clrText = GetSysColor(COLOR_HIGHLIGHTTEXT);
      draw.clrTextBk = GetSysColor(COLOR_HIGHLIGHT);
    }
    return CDRF_DODEFAULT;
  }

  /// The text of a cell, which lives as long as the list.
  void Tell(LVITEMW& item) const {
    if (!(item.mask & LVIF_TEXT)) return;
    const std::u16string_view text =
        filter_.TextAt(static_cast<std::size_t>(item.iItem), static_cast<std::size_t>(item.iSubItem));
    item.pszText = const_cast<wchar_t*>(Wide(text.data()));
  }

  HWND AddControl(const wchar_t* window_class, std::u16string_view caption, DWORD style, DWORD extended_style,
                  int id) {
    return CreateWindowExW(extended_style, window_class, WideText(caption).c_str(),
                           WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, window_,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
  }

  void Fill() {
    SetWindowTextW(window_, WideText(list_.title).c_str());
    scale_ = ScaleOf(window_);
    label_ = AddControl(L"STATIC", u"&" + std::u16string(kFilterCaption), 0, 0, -1);
    filter_field_ = AddControl(WC_EDITW, {}, WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, kFilterId);
    list_view_ = AddControl(
        WC_LISTVIEWW, {},
        WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_OWNERDATA | LVS_NOSORTHEADER,
        WS_EX_CLIENTEDGE, kListId);
    ok_ = AddControl(WC_BUTTONW, kPickCaption, WS_TABSTOP | BS_DEFPUSHBUTTON, 0, IDOK);
    cancel_ = AddControl(WC_BUTTONW, kCancel, WS_TABSTOP, 0, IDCANCEL);
    if (!list_view_ || !filter_field_) return Leave();
    late::SetWindowSubclass(filter_field_, &Chooser::FilterProcedure, 0,
                            reinterpret_cast<DWORD_PTR>(list_view_));
    SendMessageW(list_view_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
                 LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    SetFonts();
    AddColumns();
    PlaceAbove(GetWindow(window_, GW_OWNER), window_, OuterSize(kWidth, kHeight));
    ShowRows({}, filter_.RowOf(selected_));
    ::SetFocus(filter_field_);
    others_.emplace(window_);
  }

  void SetFonts() {
    MessageFont font(scale_);
    for (HWND control : {label_, filter_field_, list_view_, ok_, cancel_}) SetFont(control, font.get());
    font_ = std::move(font);  // the one before goes when no window has it any more
  }

  void AddColumns() {
    for (std::size_t i = 0; i < list_.captions.size(); ++i) {
      const std::wstring caption = WideText(list_.captions[i]);
      LVCOLUMNW column{};
      column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
      column.pszText = const_cast<wchar_t*>(caption.c_str());
      column.iSubItem = static_cast<int>(i);
      column.cx = WidthOf(i);
      SendMessageW(list_view_, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
  }

  /// Room for a column's caption and its texts.
  int WidthOf(std::size_t column) const {
    const auto measure = [&](const std::u16string& text) {
      return static_cast<int>(
          SendMessageW(list_view_, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(Wide(text.c_str()))));
    };
    int width = measure(list_.captions[column]);
    for (std::size_t row = 0; row < std::min(list_.rows.size(), kMeasuredRows); ++row) {
      if (column < list_.rows[row].size()) width = std::max(width, measure(list_.rows[row][column]));
    }
    return std::min(width + scale_(kColumnPadding), scale_(kGreatestColumn));
  }

  /// The window's size around an inside that is given at 100 %.
  SIZE OuterSize(int width, int height) const {
    return WithFrame({scale_(width), scale_(height)}, kStyle, kListStyle, scale_);
  }

  void Rescale(UiScale scale, const RECT& place) {
    const UiScale before = std::exchange(scale_, scale);
    SetFonts();
    for (std::size_t i = 0; i < list_.captions.size(); ++i) {
      const auto width = static_cast<int>(SendMessageW(list_view_, LVM_GETCOLUMNWIDTH, i, 0));
      SendMessageW(list_view_, LVM_SETCOLUMNWIDTH, i, MulDiv(width, scale.dpi, before.dpi));
    }
    SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    Arrange();
  }

  /// The field at the top, the buttons at the bottom right, the list between them.
  void Arrange() {
    if (!list_view_) return;
    RECT inside;
    GetClientRect(window_, &inside);
    const int width = static_cast<int>(inside.right);
    const int margin = scale_(kDialogMargin);
    const int gap = scale_(kDialogGap);
    const int field = scale_(kFieldHeight);
    const int field_left = margin + scale_(kLabelWidth) + gap;
    const int button = scale_(kButtonWidth);
    const int button_height = scale_(kButtonHeight);
    const int button_top = static_cast<int>(inside.bottom) - margin - button_height;
    const int list_top = margin + field + gap;
    MoveWindow(label_, margin, margin + scale_(4), scale_(kLabelWidth), field, TRUE);
    MoveWindow(filter_field_, field_left, margin, width - margin - field_left, field, TRUE);
    MoveWindow(list_view_, margin, list_top, width - 2 * margin, button_top - margin - list_top, TRUE);
    MoveWindow(ok_, width - margin - 2 * button - gap, button_top, button, button_height, TRUE);
    MoveWindow(cancel_, width - margin - button, button_top, button, button_height, TRUE);
    FitLastColumn();
  }

  /// The last column takes what the others leave.
  void FitLastColumn() {
    SendMessageW(list_view_, LVM_SETCOLUMNWIDTH, list_.captions.size() - 1, LVSCW_AUTOSIZE_USEHEADER);
  }

  /// The selected line of the list, -1 for none.
  int Selection() const {
    return static_cast<int>(
        SendMessageW(list_view_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
  }

  /// Leaves the rows that fit the field's text; the selected one stays so while it fits.
  void ShowMatches() {
    const int line = Selection();
    ShowRows(TextOfWindow(filter_field_),
             line >= 0 ? filter_.rows()[static_cast<std::size_t>(line)] : filter_.RowOf(selected_));
  }

  /// Shows the rows with a text and selects one of them: the given one, or else the first.
  void ShowRows(std::u16string_view text, std::size_t row) {
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list_view_, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
    filter_.Filter(text);
    SendMessageW(list_view_, LVM_SETITEMCOUNT, filter_.rows().size(), 0);
    FitLastColumn();  // there may be a scroll bar more or less
    const WPARAM line = filter_.LineOf(row);
    state.state = state.stateMask;
    if (!filter_.rows().empty()) {
      SendMessageW(list_view_, LVM_SETITEMSTATE, line, reinterpret_cast<LPARAM>(&state));
      SendMessageW(list_view_, LVM_ENSUREVISIBLE, line, FALSE);
    }
    InvalidateRect(list_view_, nullptr, FALSE);
    EnableWindow(ok_, !filter_.rows().empty());
  }

  void Pick() {
    const int line = Selection();
    if (line < 0) return;
    chosen_ = filter_.rows()[static_cast<std::size_t>(line)];
    Leave();
  }

  void Leave() {
    others_.reset();  // before the window goes, so that none of another program comes to the front
    EndDialog(window_, 0);
  }

  const ChoiceList& list_;
  std::u16string_view selected_;
  ListFilter filter_;
  MessageFont font_;
  std::optional<OthersDisabled> others_;
  UiScale scale_;
  HWND window_ = nullptr;
  HWND label_ = nullptr;
  HWND filter_field_ = nullptr;
  HWND list_view_ = nullptr;
  HWND ok_ = nullptr;
  HWND cancel_ = nullptr;
  std::optional<std::size_t> chosen_;
};

}  // namespace

std::optional<std::size_t> ListChooserWindow::Choose(const ChoiceList& list, std::u16string_view selected) {
  try {
    return Chooser(list, selected).Show();
  } catch (...) {  // not even memory for the list
    return std::nullopt;
  }
}

}  // namespace qva::windows
