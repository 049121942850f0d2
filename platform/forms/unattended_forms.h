// Forms and lists where no user sits: answered from a file, told in a log.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/filesystem/native_file.h"
#include "platform/forms/memory_form.h"
#include "platform/list_chooser.h"
#include "platform/locale.h"

namespace qva {

/// Works every form that the library shows by the lines of an answers file.
///
/// The file is UTF-8. A line "[frmReportPeriod]" begins the answers of one showing of that form; the showings
/// stand in their order. Each line below it does one thing, in order:
///   txtYear = 2024                      types into a text or combo box; "txtYear =" empties it
///   edCurrBegDate = 2024-01-31          chooses a date
///   optQuarter                          clicks an option or a button
///   MonthView1 = 2024-01-31             clicks a day; "MonthView1 double 2024-01-31" double-clicks it,
///   MonthView1 key 13                   presses the key of a character
///   SpecGrid 1 BookCode = MEDVILNE      types into the cell of a row (from 1) and column
///   SpecGrid 1 BudgetCurrDocCode        presses the button of a cell
///   SpecGrid 2                          makes a row the current one
///   list = BIU-2024-01                  picks the row of a code in the list that the line before opened;
///                                       "list" alone leaves it
/// Empty lines and those that begin with "#" are passed over. The file is read when the first form is shown.
///
/// A form without answers, an answer that names no control, that the control does not take or that the form
/// refuses, and answers that leave the form open raise 5 (Invalid procedure call) with a description that
/// tells the line. The form is hidden then, and the next showing goes on with the next answers. Answers left
/// over when a form closes raise the same from the next showing. Everything is told in the log, as
/// UnattendedMessageBox does, and what is wrong to the failure listener: as a failure where there are no
/// answers, the form refuses one, or a handler of the form raises an error, which is that of the showing
/// then; as a wrong answer otherwise.
class UnattendedForms : public ui::FormFactory, public ListChooser {
 public:
  /// An empty answers path means no answers, an empty log path the standard error output. Clock and locale
  /// are borrowed.
  UnattendedForms(NativePath answers, NativePath log, const Clock& clock, const Locale& locale);

  std::unique_ptr<ui::Form> Create(const ui::FormDescription& description) override;
  /// An answer that names no row of the list is an error in the log and leaves the list.
  std::optional<std::size_t> Choose(const ChoiceList& list, std::u16string_view selected) override;

 private:
  struct Answer {
    std::u16string text;
    int line = 0;  ///< in the file, from 1
  };

  void Work(MemoryForm& form);
  void Do(MemoryForm& form, const Answer& answer);
  /// The next answer of this showing; nothing when there is none.
  std::optional<Answer> NextAnswer();
  /// Passes over the rest of this showing's answers.
  void SkipShowing();
  void ReadAnswers();
  std::string Place(const Answer& answer) const;
  void Log(const std::string& entry) const;

  NativePath answers_path_;
  NativePath log_path_;
  const Clock& clock_;
  const Locale& locale_;
  std::optional<std::vector<Answer>> answers_;  ///< nothing until the first form
  std::size_t next_ = 0;
  std::string list_problem_;  ///< of the last list, until the form's answers go on
};

}  // namespace qva
