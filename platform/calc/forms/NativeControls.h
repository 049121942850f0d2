// The controls that LibreOffice's toolkit has of its own.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "platform/calc/forms/FormControl.h"
#include "platform/forms/code_list.h"

namespace qva::calc {

class LabelControl : public FormControl, public ui::Label {
 public:
  LabelControl(FormWindow& form, const ui::ControlDescription& description);
  std::u16string Caption() const override { return caption().value_or(u""); }
  void SetCaption(std::u16string_view caption) override { SetWindowCaption(caption); }
  bool TakesFocus() const override { return false; }
};

/// A text box that is only read: to assistive technology, too, it is a label.
class NoteControl : public FormControl, public ui::TextBox {
 public:
  NoteControl(FormWindow& form, const ui::ControlDescription& description);
  std::u16string Text() const override { return caption().value_or(u""); }
  void SetText(std::u16string_view text) override;
  void SetMaxLength(int length) override { max_length_ = static_cast<std::size_t>(std::max(length, 0)); }
  bool TakesFocus() const override { return false; }

 private:
  std::size_t max_length_ = 0;
};

class FrameControl : public FormControl {
 public:
  FrameControl(FormWindow& form, const ui::ControlDescription& description);
  bool TakesFocus() const override { return false; }
};

class TextBoxControl : public FormControl, public ui::TextBox {
 public:
  TextBoxControl(FormWindow& form, const ui::ControlDescription& description);
  std::u16string Text() const override;
  void SetText(std::u16string_view text) override;
  void SetMaxLength(int length) override;
  void TakeFocus() override;

 private:
  void OnTextChanged() override;
  void LimitTyping();

  std::u16string text_;  ///< of which the program knows
  std::size_t max_length_ = 0;
};

class OptionControl : public FormControl, public ui::OptionButton {
 public:
  OptionControl(FormWindow& form, const ui::ControlDescription& description);
  bool Selected() const override { return selected_; }
  void Select() override;
  /// One option of a group can be reached by Tab; the others follow by the arrow keys.
  bool TakesFocus() const override { return selected_; }

 private:
  void OnItemChanged() override;

  bool selected_ = false;
};

class ComboBoxControl : public FormControl, public ui::ComboBox {
 public:
  ComboBoxControl(FormWindow& form, const ui::ControlDescription& description);
  void SetItems(std::vector<Item> items) override;
  std::u16string Value() const override;
  void SetValue(std::u16string_view code) override;

 private:
  CodeList list_;
};

class ButtonControl : public FormControl, public ui::Button {
 public:
  ButtonControl(FormWindow& form, const ui::ControlDescription& description);

 private:
  void OnAction() override;
};

}  // namespace qva::calc
