#include "platform/windows/forms/FieldControls.h"

#include <algorithm>

#include "platform/windows/forms/WindowText.h"

namespace qva::windows {
namespace {

constexpr int kListRows = 10;

}  // namespace

NativeTextBox::NativeTextBox(FormWindow& form, const ui::ControlDescription& description)
    : NativeControl(form, description), text_(description.caption) {
  const bool read_only = description.read_only;
  Create(L"EDIT", WideText(text_), ES_AUTOHSCROLL | (read_only ? ES_READONLY : WS_TABSTOP),
         read_only ? 0 : WS_EX_CLIENTEDGE);
}

std::u16string NativeTextBox::Text() const {
  return TextOfWindow(window());
}

void NativeTextBox::SetText(std::u16string_view text) {
  if (max_length_ > 0) text = text.substr(0, max_length_);
  if (text == text_) return;
  text_ = text;  // first, so that Windows' notice tells nothing new
  SetWindowTextW(window(), WideText(text_).c_str());
  Raise(on_change);
}

void NativeTextBox::SetMaxLength(int length) {
  max_length_ = static_cast<std::size_t>(std::max(length, 0));
  Send(EM_SETLIMITTEXT, max_length_);
}

void NativeTextBox::OnCommand(WORD code) {
  if (code != EN_CHANGE) return;
  std::u16string text = Text();
  if (text == text_) return;
  text_ = std::move(text);
  Raise(on_change);
}

void NativeTextBox::SetFocus() {
  NativeControl::SetFocus();
  Send(EM_SETSEL, 0, -1);
}

NativeComboBox::NativeComboBox(FormWindow& form, const ui::ControlDescription& description)
    : NativeControl(form, description) {
  Create(L"COMBOBOX", {}, CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL | WS_TABSTOP);
}

void NativeComboBox::SetItems(std::vector<Item> items) {
  const std::u16string code = Value();
  list_.SetItems(std::move(items));
  Send(CB_RESETCONTENT);
  for (const Item& item : list_.items()) {
    Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WideText(CodeList::Shown(item)).c_str()));
  }
  SetValue(code);
}

std::u16string NativeComboBox::Value() const {
  return list_.CodeOf(TextOfWindow(window()));
}

void NativeComboBox::SetValue(std::u16string_view code) {
  const auto& items = list_.items();
  const auto item = std::ranges::find(items, code, &Item::code);
  Send(CB_SETCURSEL, static_cast<WPARAM>(item == items.end() ? -1 : item - items.begin()));
  SetWindowTextW(window(), WideText(list_.Shown(code)).c_str());
}

void NativeComboBox::OnCommand(WORD code) {
  if (code == CBN_KILLFOCUS) SetValue(Value());
}

void NativeComboBox::Place(const RECT& place) {
  // The field's height follows from its text's, and the window's own is that of the list.
  RECT now;
  GetWindowRect(window(), &now);
  const auto field = static_cast<WPARAM>(-1);
  const LRESULT border = now.bottom - now.top - Send(CB_GETITEMHEIGHT, field);
  RECT with_list = FieldIn(place);
  Send(CB_SETITEMHEIGHT, field, with_list.bottom - with_list.top - border);
  with_list.bottom += kListRows * static_cast<LONG>(Send(CB_GETITEMHEIGHT, 0));
  NativeControl::Place(with_list);
  Send(CB_SETEDITSEL, 0, 0);  // Windows selects the text of a field that changes its size
}

}  // namespace qva::windows
