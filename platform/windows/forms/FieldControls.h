// Controls into which the user types.
#pragma once

#include <vector>

#include "platform/forms/code_list.h"
#include "platform/windows/forms/NativeControl.h"

namespace qva::windows {

class NativeTextBox : public NativeControl, public ui::TextBox {
 public:
  NativeTextBox(FormWindow& form, const ui::ControlDescription& description);
  std::u16string Text() const override;
  void SetText(std::u16string_view text) override;
  void SetMaxLength(int length) override;
  bool IsTabStop() const override { return !description().read_only && NativeControl::IsTabStop(); }
  void OnCommand(WORD code) override;
  /// Selects the text, so that typing replaces it.
  void SetFocus() override;
  void Place(const RECT& place) override { NativeControl::Place(FieldIn(place)); }

 private:
  std::u16string text_;  ///< of which the program knows
  std::size_t max_length_ = 0;
};

/// Shows an item as its code, two blanks and its text.
class NativeComboBox : public NativeControl, public ui::ComboBox {
 public:
  NativeComboBox(FormWindow& form, const ui::ControlDescription& description);
  void SetItems(std::vector<Item> items) override;
  std::u16string Value() const override;
  void SetValue(std::u16string_view code) override;
  /// A code that was typed gets its text when the field is left.
  void OnCommand(WORD code) override;
  void Place(const RECT& place) override;

 private:
  CodeList list_;
};

}  // namespace qva::windows
