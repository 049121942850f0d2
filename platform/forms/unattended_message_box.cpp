#include "platform/forms/unattended_message_box.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/date.h"
#include "platform/failure_listener.h"
#include "platform/text.h"

namespace qva {
namespace {

struct ButtonName {
  std::u16string_view caption;
  std::u16string_view english;
};

// Windows' buttons in the order of their numbers, from vbOK = 1.
constexpr std::array<ButtonName, 7> kButtonNames = {{{kOk, u"OK"},
                                                     {kCancel, u"Cancel"},
                                                     {u"Nutraukti", u"Abort"},
                                                     {u"Kartoti", u"Retry"},
                                                     {u"Ignoruoti", u"Ignore"},
                                                     {kYes, u"Yes"},
                                                     {kNo, u"No"}}};

/// The numbers of the buttons that a style's button set has, in their order (winuser.h, MB_OK and following).
std::vector<std::int32_t> ButtonSet(std::int32_t style) {
  switch (style & kButtonSetMask) {
    case 1:
      return {1, 2};
    case 2:
      return {3, 4, 5};
    case 3:
      return {6, 7, 2};
    case 4:
      return {6, 7};
    case 5:
      return {4, 2};
    default:
      return {1};
  }
}

std::string Indented(std::u16string_view text) {
  return ToUtf8(ReplaceAll(ReplaceAll(text, u"\r\n", u"\n"), u"\n", u"\n           "));
}

}  // namespace

UnattendedMessageBox::UnattendedMessageBox(NativePath answers, NativePath log, const Clock& clock)
    : answers_path_(std::move(answers)), log_path_(std::move(log)), clock_(clock) {
}

UnattendedMessageBox::Button UnattendedMessageBox::ButtonOfShow(std::int32_t number) {
  const ButtonName& name = kButtonNames.at(static_cast<std::size_t>(number - 1));
  return {number, std::u16string(name.caption), std::u16string(name.english)};
}

std::int32_t UnattendedMessageBox::Show(std::u16string_view text, std::int32_t style,
                                        std::u16string_view title) {
  std::vector<Button> buttons;
  for (const std::int32_t number : ButtonSet(style)) buttons.push_back(ButtonOfShow(number));
  return Press(text, title, buttons);
}

std::int32_t UnattendedMessageBox::Ask(std::u16string_view text, std::u16string_view title,
                                       std::span<const std::u16string> captions) {
  std::vector<Button> buttons;
  for (const std::u16string& caption : captions) {
    buttons.push_back({static_cast<std::int32_t>(buttons.size()) + 1, caption, u""});
  }
  // A box always has a button, or it could not be closed.
  if (buttons.empty()) buttons.push_back(ButtonOfShow(vbOK));
  return Press(text, title, buttons);
}

std::int32_t UnattendedMessageBox::Press(std::u16string_view text, std::u16string_view title,
                                         const std::vector<Button>& buttons) {
  const std::optional<Answer> answer = NextAnswer();
  auto pressed = buttons.begin();
  std::string problem;
  std::string_view of_box = " for the box";
  std::string reason =
      (answers_path_.empty() ? "no answers file" : "no answer left") + std::string(", the first button");
  if (is_unreadable_) {
    pressed = std::prev(buttons.end());
    problem = "cannot read the answers file " + PathText(answers_path_);
  } else if (answer) {
    reason = "line " + std::to_string(answer->line) + " of " + PathText(answers_path_);
    pressed = std::ranges::find_if(buttons, [&](const Button& button) {
      return EqualIgnoringCase(answer->text, button.caption) || answer->text == NumberText(button.number) ||
             EqualIgnoringCase(answer->text, button.english);
    });
    if (pressed == buttons.end()) {
      pressed = std::prev(buttons.end());
      problem = "\"" + ToUtf8(answer->text) + "\" in " + reason + " names no button";
      of_box = " of the box";
    }
  } else if (!answers_path_.empty() && buttons.size() > 1) {
    pressed = std::prev(buttons.end());
    problem = "no answer is left in " + PathText(answers_path_);
  }
  if (!problem.empty()) reason = "ERROR: " + problem + ", the box was closed";

  const auto name = [](const Button& button) {
    return std::to_string(button.number) + " " + ToUtf8(button.caption);
  };
  std::string entry = ToUtf8(FormatByWindowsPattern(clock_.Now(), u"yyyy-MM-dd HH:mm:ss")) +
                      "\n  title:   " + Indented(title.empty() ? kLibraryName : title) +
                      "\n  text:    " + Indented(text) + "\n  buttons:";
  for (const Button& button : buttons) {
    entry += (&button == &buttons.front() ? " " : " | ") + name(button);
  }
  AppendToLog(log_path_, entry + "\n  answer:  " + name(*pressed) + " (" + reason + ")\n");
  if (!problem.empty()) {
    TellWrongAnswer(FromUtf8(problem.append(of_box)) + u" \u201E" + std::u16string(text) + u"\u201C");
  }
  return pressed->number;
}

std::optional<UnattendedMessageBox::Answer> UnattendedMessageBox::NextAnswer() {
  if (!answers_) ReadAnswers();
  if (next_ == answers_->size()) return std::nullopt;
  return (*answers_)[next_++];
}

void UnattendedMessageBox::ReadAnswers() {
  answers_.emplace();
  if (answers_path_.empty()) return;
  const auto lines = ReadLines(answers_path_);
  is_unreadable_ = !lines;
  if (!lines) return;
  for (std::size_t line = 0; line < lines->size(); ++line) {
    const std::u16string& answer = (*lines)[line];
    if (!answer.empty() && answer.front() != u'#') answers_->push_back({answer, static_cast<int>(line) + 1});
  }
}

}  // namespace qva
