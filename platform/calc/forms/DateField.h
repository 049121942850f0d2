// A field for a date.
#pragma once

#include <string>
#include <vector>

#include "platform/calc/forms/FormControl.h"
#include "platform/calc/forms/InnerWindow.h"

namespace qva::calc {

/// Shows a date by a format of its own, which the toolkit's date field cannot. Its parts - year, month, day -
/// are chosen by a click or the arrow keys Left and Right, and changed by Up and Down, by digits or by the
/// two small buttons.
class DateField : public FormControl, public ui::DatePicker {
 public:
  DateField(FormWindow& form, const ui::ControlDescription& description);
  Date Value() const override { return date_; }
  void SetValue(Date value) override;
  void SetFormat(std::u16string_view format) override;
  void SetEnabled(bool enabled) override;
  void SetShown(bool shown) override;
  void Place(const css::awt::Rectangle& pixels) override;
  bool OnKey(const css::awt::KeyEvent& event) override;

 private:
  struct Part {
    char16_t kind;  ///< 'y', 'M' or 'd'; 0 for what stands between the others
    std::u16string text;
  };

  static std::vector<Part> PartsOfFormat(std::u16string_view format);
  void OnFocus(bool gained) override;
  void OnMousePressed(const MousePress& press) override;
  void OnTextChanged() override { Show(); }
  std::u16string TextOf(std::size_t part) const;
  /// What the date is now, with the current part marked.
  void Show();
  void Change(Date date);
  void Step(int direction);
  void MoveToPart(int direction);
  void TypeDigit(char16_t digit);
  void StoreDigits();

  void DrawButtons();

  /// Drawn: the toolkit's own do not fit into a field in every look, and keys do the same.
  InnerWindow buttons_;
  Date date_{2};  // 1 January 1900, as an automation date
  std::vector<Part> parts_ = PartsOfFormat(u"yyyy-MM-dd");
  std::size_t current_ = 0;  ///< the part that keys change
  std::u16string digits_;    ///< typed into it so far
};

}  // namespace qva::calc
