// A field for a date.
#pragma once

#include <string>
#include <vector>

#include "platform/calc/forms/Canvas.h"

namespace qva::calc {

/// Shows a date by a format of its own, which the toolkit's date field cannot. Its parts - year, month, day -
/// are chosen by a click or the arrow keys Left and Right, and changed by Up and Down, by digits or by the
/// two small buttons.
class DateField : public Canvas, public ui::DatePicker {
 public:
  using Canvas::Canvas;
  Date Value() const override { return date_; }
  void SetValue(Date value) override;
  void SetFormat(std::u16string_view format) override;
  bool OnKey(const css::awt::KeyEvent& event) override;

 private:
  struct Part {
    char16_t kind;  ///< 'y', 'M' or 'd'; 0 for what stands between the others
    std::u16string text;
  };

  static std::vector<Part> PartsOfFormat(std::u16string_view format);
  void Draw(Painter& painter) override;
  void Pressed(const MousePress& press) override;
  void OnFocus(bool gained) override;
  void Change(Date date);
  void Step(int direction);
  void MoveToPart(int direction);
  void TypeDigit(char16_t digit);
  void StoreDigits();
  css::awt::Rectangle Buttons() const;

  Date date_{2};  // 1 January 1900, as an automation date
  std::vector<Part> parts_ = PartsOfFormat(u"yyyy-MM-dd");
  std::vector<css::awt::Rectangle> places_;  ///< of the parts, as they were drawn
  std::size_t current_ = 0;                  ///< the part that keys change
  std::u16string digits_;                    ///< typed into it so far
};

}  // namespace qva::calc
