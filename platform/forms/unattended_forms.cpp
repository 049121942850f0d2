#include "platform/forms/unattended_forms.h"

#include <algorithm>

#include "platform/date.h"
#include "platform/failure_listener.h"
#include "platform/text.h"

namespace qva {
namespace {

constexpr std::u16string_view kList = u"list";

/// An answer that cannot have been meant for the form.
class WrongAnswer : public AutomationError {
 public:
  explicit WrongAnswer(const std::string& description)
      : AutomationError(kInvalidProcedureCall, FromUtf8(description)) {}
};

/// The form does not take what it understood, or gets no answer at all.
class Refusal : public AutomationError {
 public:
  explicit Refusal(const std::string& description)
      : AutomationError(kInvalidProcedureCall, FromUtf8(description)) {}
};

/// The words of an answer's left side.
std::vector<std::u16string_view> Words(std::u16string_view text) {
  std::vector<std::u16string_view> words;
  for (text = Trim(text); !text.empty(); text = Trim(text)) {
    const std::size_t end = std::min(text.find(u' '), text.size());
    words.push_back(text.substr(0, end));
    text.remove_prefix(end);
  }
  return words;
}

/// A whole number from 1; nothing for any other text.
std::optional<std::size_t> Number(std::u16string_view text) {
  if (text.empty() || text.size() > 6) return std::nullopt;
  std::size_t number = 0;
  for (const char16_t digit : text) {
    if (!IsDigit(digit)) return std::nullopt;
    number = number * 10 + (digit - u'0');
  }
  return number == 0 ? std::nullopt : std::optional(number);
}

}  // namespace

UnattendedForms::UnattendedForms(NativePath answers, NativePath log, const Clock& clock, const Locale& locale)
    : answers_path_(std::move(answers)), log_path_(std::move(log)), clock_(clock), locale_(locale) {
}

std::unique_ptr<ui::Form> UnattendedForms::Create(const ui::FormDescription& description) {
  return std::make_unique<MemoryForm>(description, [this](MemoryForm& form) { Work(form); });
}

void UnattendedForms::Work(MemoryForm& form) {
  if (!answers_) ReadAnswers();
  const std::string name = ToUtf8(form.description().name);
  Log("form " + name);
  const std::optional<Answer> left_over = NextAnswer();
  SkipShowing();
  try {
    if (next_ == answers_->size() || (*answers_)[next_].text != u"[" + form.description().name + u"]") {
      throw Refusal("There are no answers for the form " + name +
                    (answers_path_.empty() ? "" : " in " + PathText(answers_path_)));
    }
    ++next_;
    if (left_over) throw WrongAnswer(Place(*left_over) + ": no form was open for it");
    while (form.Visible()) {
      const std::optional<Answer> answer = NextAnswer();
      if (!answer) throw Refusal("The answers end while the form " + name + " is still open");
      Do(form, *answer);
      if (!list_problem_.empty()) throw WrongAnswer(std::exchange(list_problem_, {}));
      Log("  " + ToUtf8(answer->text));
    }
  } catch (const AutomationError& error) {
    Log("ERROR: " + ToUtf8(error.description()));
    SkipShowing();
    if (dynamic_cast<const WrongAnswer*>(&error)) {
      TellWrongAnswer(error.description());
    } else {
      TellFailure(error.description());
    }
    throw;
  }
}

void UnattendedForms::Do(MemoryForm& form, const Answer& answer) {
  const std::size_t equals = answer.text.find(u'=');
  const bool has_value = equals != std::u16string::npos;
  const auto words = Words(std::u16string_view(answer.text).substr(0, equals));
  const std::u16string_view value =
      has_value ? Trim(std::u16string_view(answer.text).substr(equals + 1)) : std::u16string_view();
  const auto date = [&](std::u16string_view text) {
    const std::optional<Date> day = ParseDate(text, locale_);
    if (!day) throw WrongAnswer("\"" + ToUtf8(text) + "\" is no date");
    return *day;
  };

  try {
    const std::u16string_view name = words.empty() ? std::u16string_view() : words.front();
    const ui::Control* control = form.Find(name);
    const bool is_grid = dynamic_cast<const ui::Grid*>(control) != nullptr;
    const std::size_t row = is_grid && words.size() >= 2 ? Number(words[1]).value_or(0) : 0;
    if (is_grid && row && words.size() == 3 && has_value) {
      if (!form.TypeCell(name, row - 1, words[2], value)) throw Refusal("The form refuses this value");
    } else if (is_grid && row && words.size() == 3) {
      form.PressCellButton(name, row - 1, words[2]);
    } else if (is_grid && row && words.size() == 2 && !has_value) {
      form.SelectRow(name, row - 1);
    } else if (words.size() == 3 && words[1] == u"double" && !has_value) {
      form.DoubleClickDay(name, date(words[2]));
    } else if (words.size() == 3 && words[1] == u"key" && Number(words[2]) && !has_value) {
      form.PressKey(name, static_cast<int>(*Number(words[2])));
    } else if (words.size() != 1 || is_grid) {
      throw WrongAnswer("This is no answer");
    } else if (!has_value) {
      form.Click(name);
    } else if (dynamic_cast<const ui::DatePicker*>(control) || dynamic_cast<const ui::MonthView*>(control)) {
      form.PickDate(name, date(value));
    } else {
      form.Type(name, value);
    }
    if (name == form.description().default_button && form.Visible()) {
      throw Refusal("The form refuses what it was given");
    }
  } catch (const Refusal& refusal) {
    throw Refusal(Place(answer) + ": " + ToUtf8(refusal.description()));
  } catch (const WrongAnswer& error) {
    throw WrongAnswer(Place(answer) + ": " + ToUtf8(error.description()));
  } catch (const ImpossibleStep& error) {
    throw WrongAnswer(Place(answer) + ": " + ToUtf8(error.description()));
  }
}

std::optional<std::size_t> UnattendedForms::Choose(const ChoiceList& list, std::u16string_view) {
  if (!answers_) ReadAnswers();
  std::optional<Answer> answer = NextAnswer();
  const std::u16string_view text = answer ? std::u16string_view(answer->text) : std::u16string_view();
  const std::size_t equals = text.find(u'=');
  if (!answer || Trim(text.substr(0, equals)) != kList) {
    if (answer) --next_;  // it is the form's
    list_problem_ = "There is no answer for the list \"" + ToUtf8(list.title) + "\"";
  } else if (equals == text.npos) {
    Log("  list: left");
    return std::nullopt;
  } else {
    const std::u16string_view code = Trim(text.substr(equals + 1));
    const auto row = std::ranges::find_if(list.rows, [&](const std::vector<std::u16string>& cells) {
      return !cells.empty() && cells[0] == code;
    });
    if (row != list.rows.end()) {
      Log("  list: " + ToUtf8(code));
      return static_cast<std::size_t>(row - list.rows.begin());
    }
    list_problem_ = Place(*answer) + ": the list \"" + ToUtf8(list.title) + "\" has no row " + ToUtf8(code);
  }
  Log("ERROR: " + list_problem_);
  return std::nullopt;
}

std::optional<UnattendedForms::Answer> UnattendedForms::NextAnswer() {
  if (next_ == answers_->size() || (*answers_)[next_].text.front() == u'[') return std::nullopt;
  return (*answers_)[next_++];
}

void UnattendedForms::SkipShowing() {
  while (NextAnswer()) continue;
}

void UnattendedForms::ReadAnswers() {
  answers_.emplace();
  if (answers_path_.empty()) return;
  const auto lines = ReadLines(answers_path_);
  if (!lines) {
    const std::string problem = "cannot read the answers file " + PathText(answers_path_);
    Log("ERROR: " + problem);
    TellWrongAnswer(FromUtf8(problem));
    return;
  }
  for (std::size_t line = 0; line < lines->size(); ++line) {
    const std::u16string& text = (*lines)[line];
    if (!text.empty() && text.front() != u'#') answers_->push_back({text, static_cast<int>(line) + 1});
  }
}

std::string UnattendedForms::Place(const Answer& answer) const {
  return "line " + std::to_string(answer.line) + " of " + PathText(answers_path_) + " (" +
         ToUtf8(answer.text) + ")";
}

void UnattendedForms::Log(const std::string& entry) const {
  AppendToLog(log_path_,
              ToUtf8(FormatByWindowsPattern(clock_.Now(), u"yyyy-MM-dd HH:mm:ss")) + " " + entry + "\n");
}

}  // namespace qva
