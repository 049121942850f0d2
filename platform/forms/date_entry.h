// A date that the user enters part by part.
#pragma once

#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/forms/picker_dates.h"

namespace qva {

/// A date by a format whose parts - year, month, day - are chosen and changed one at a time, for toolkits
/// whose date fields know no formats. The form's control shows it and tells it what the user does. Without
/// any part in the format nothing is changed but by the program.
class DateEntry : public ui::DatePicker {
 public:
  struct MarkedText {
    std::u16string text;
    std::size_t from = 0;  ///< where the part that the user changes begins
    std::size_t to = 0;    ///< behind its end
  };

  Date Value() const override { return date_; }
  /// Digits that wait stay, and are shown over the new date.
  void SetValue(Date value) override;
  void SetFormat(std::u16string_view format) override;
  /// What is shown: the date, with digits that wait in place of their part. The current part is marked; of a
  /// format without parts all of it.
  MarkedText Text() const;

  /// The next (1) or the previous (-1) year, month or day.
  void Step(int direction);
  /// To the next (1) or the previous (-1) part, if there is one.
  void MoveToPart(int direction);
  /// To the part that a caret stands in or behind in the text as it is shown; from 0, before the first
  /// character.
  void ChoosePartAt(std::size_t caret);
  /// Types a digit. A year is changed by its fourth one, which leads on to the next part, a month or a day by
  /// the second one, or by the first where none can follow.
  void TypeDigit(char16_t digit);
  /// Takes the digits that wait for others as they are. A number that the part cannot have changes nothing.
  void StoreDigits();

 private:
  struct Part {
    char16_t kind;  ///< 'y', 'M' or 'd'; 0 for what stands between the others
    std::u16string text;
  };

  /// Shows Text() as it is now: after each change, and before on_change.
  virtual void Show() = 0;
  static std::vector<Part> PartsOfFormat(std::u16string_view format);
  /// What the current part is; 0 where the format has none.
  char16_t Kind() const { return parts_.empty() ? u'\0' : parts_[current_].kind; }
  std::u16string TextOf(std::size_t part) const;
  void Change(Date date);
  void MoveBy(int years_months_or_days);

  Date date_ = kFirstShownDay;
  std::vector<Part> parts_ = PartsOfFormat(u"yyyy-MM-dd");
  std::size_t current_ = 0;
  std::u16string digits_;  ///< typed into the current part so far
};

}  // namespace qva
