#include "platform/forms/unattended_message_box.h"

#include <gmock/gmock.h>

#include <optional>
#include <vector>

#include "platform/memory/MemoryClock.h"
#include "platform/text.h"
#include "tests/files.h"
#include "tests/heard_failures.h"
#include "tests/platform/forms/message_box_contract.h"

namespace qva {
namespace {

using testing::HasSubstr;

/// Has a file of one answer for each box, and looks at the title in the log afterwards.
class UnattendedBoxUser {
 public:
  ~UnattendedBoxUser() {
    for (const std::string& title : titles_) {
      EXPECT_THAT(FileContent(folder_ / "log"), HasSubstr("title:   " + title + "\n"));
    }
  }
  static bool IsThere() { return true; }
  void Press(std::u16string_view title, std::int32_t button) { Answer(title, std::to_string(button)); }
  void Close(std::u16string_view title) { Answer(title, "no button's name"); }
  MessageBox& box() { return *box_; }

 private:
  void Answer(std::u16string_view title, const std::string& answer) {
    titles_.push_back(ToUtf8(title));
    WriteFile(folder_ / "answers", answer);
    box_.emplace(folder_ / "answers", folder_ / "log", clock_);
  }

  TemporaryFolder folder_;
  MemoryClock clock_;
  std::vector<std::string> titles_;
  std::optional<UnattendedMessageBox> box_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(UnattendedMessageBox, MessageBoxContract, UnattendedBoxUser);

namespace {

class UnattendedMessageBoxTest : public testing::Test {
 protected:
  void Answers(std::string_view content) { WriteFile(answers, content); }
  std::int32_t Ask() { return box.Ask(u"Ar tikrai?", u"", captions); }
  std::string Log() const { return FileContent(log); }

  TemporaryFolder folder;
  const std::filesystem::path answers = folder / "answers";
  const std::filesystem::path log = folder / "log";
  const std::vector<std::u16string> captions = {u"Įrašyti", u"Neįrašyti", u"Atšaukti"};
  MemoryClock clock;
  UnattendedMessageBox box{answers, log, clock};
};

TEST_F(UnattendedMessageBoxTest, UsesTheAnswersInTheirOrder) {
  Answers("Neįrašyti\nATŠAUKTI\n1\n3\n");
  EXPECT_EQ(Ask(), 2);
  EXPECT_EQ(Ask(), 3);
  EXPECT_EQ(Ask(), 1);
  EXPECT_EQ(Ask(), 3);
}

TEST_F(UnattendedMessageBoxTest, PassesOverCommentsAndEmptyLines) {
  Answers("\xEF\xBB\xBF# first the saving\r\n\r\n  Neįrašyti  \r\n   \n# then\n3");
  EXPECT_EQ(Ask(), 2);
  EXPECT_EQ(Ask(), 3);
  EXPECT_THAT(Log(), HasSubstr("(line 6 of " + answers.string() + ")"));
}

TEST_F(UnattendedMessageBoxTest, AQuestionForWhichNoAnswerIsLeftIsClosedAndAnError) {
  const HeardFailures failures;
  Answers("2\n");
  EXPECT_EQ(Ask(), 2);
  EXPECT_EQ(Ask(), 3) << "nothing is agreed to";
  EXPECT_EQ(box.Show(u"Ar ištrinti?", 4, u""), 7);
  EXPECT_THAT(Log(), HasSubstr("answer:  3 Atšaukti (ERROR: no answer is left in " + answers.string()));
  ASSERT_EQ(failures.wrongly_answered.size(), 2u);
  EXPECT_EQ(ToUtf8(failures.wrongly_answered[0]),
            "no answer is left in " + answers.string() + " for the box „Ar tikrai?“");
  EXPECT_TRUE(failures.failed.empty());
}

TEST_F(UnattendedMessageBoxTest, ABoxOfOneButtonNeedsNoAnswer) {
  const HeardFailures failures;
  Answers("# none\n");
  EXPECT_EQ(box.Show(u"Baigta", vbOKOnly, u""), vbOK);
  EXPECT_THAT(Log(), HasSubstr("answer:  1 Gerai (no answer left, the first button)"));
  EXPECT_TRUE(failures.wrongly_answered.empty());
}

TEST_F(UnattendedMessageBoxTest, PressesTheFirstButtonWithoutAnAnswersFile) {
  UnattendedMessageBox without({}, log, clock);
  EXPECT_EQ(without.Ask(u"?", u"", captions), 1);
  EXPECT_THAT(Log(), HasSubstr("(no answers file, the first button)"));
}

TEST_F(UnattendedMessageBoxTest, TellsWhenTheAnswersFileCannotBeRead) {
  const HeardFailures failures;
  EXPECT_EQ(Ask(), 3) << "nothing is agreed to";
  EXPECT_EQ(failures.wrongly_answered.size(), 1u);
  EXPECT_THAT(Log(), HasSubstr("ERROR: cannot read the answers file " + answers.string()));
}

TEST_F(UnattendedMessageBoxTest, AnswerThatNamesNoButtonClosesTheBoxAndIsAnError) {
  const HeardFailures failures;
  Answers("Galbūt\n4\n0\n2\n");
  EXPECT_EQ(Ask(), 3);
  EXPECT_THAT(Log(), HasSubstr("ERROR: \"Galbūt\" in line 1 of " + answers.string() + " names no button"));
  ASSERT_EQ(failures.wrongly_answered.size(), 1u);
  EXPECT_THAT(ToUtf8(failures.wrongly_answered[0]), HasSubstr("\"Galbūt\" in line 1 of " + answers.string()));
  EXPECT_EQ(Ask(), 3);
  EXPECT_EQ(Ask(), 3);
  EXPECT_EQ(Ask(), 2);
  EXPECT_EQ(failures.wrongly_answered.size(), 3u);
  EXPECT_TRUE(failures.failed.empty());
}

TEST_F(UnattendedMessageBoxTest, AsksWithOneButtonAtLeast) {
  EXPECT_EQ(box.Ask(u"?", u"", {}), 1);
  EXPECT_THAT(Log(), HasSubstr("buttons: 1 Gerai\n"));
}

TEST_F(UnattendedMessageBoxTest, ShowHasTheButtonsOfItsStyle) {
  Answers("Gerai\nok\n1\nCancel\n");
  EXPECT_EQ(box.Show(u"Klaida", vbOKOnly | vbCritical, u""), vbOK);
  EXPECT_THAT(Log(), HasSubstr("buttons: 1 Gerai\n"));
  EXPECT_EQ(box.Show(u"Klaida", vbOKOnly, u""), vbOK);
  EXPECT_EQ(box.Show(u"Klaida", vbOKOnly, u""), vbOK);
  EXPECT_EQ(box.Show(u"Klaida", vbOKOnly, u""), vbOK);
  EXPECT_THAT(Log(), HasSubstr("ERROR: \"Cancel\""));
}

TEST_F(UnattendedMessageBoxTest, ShowKnowsEveryButtonSetByWindowsNumbers) {
  struct {
    std::int32_t style;
    const char* buttons;
    std::int32_t first;
  } const sets[] = {
      {0, "1 Gerai", 1},
      {1, "1 Gerai | 2 Atšaukti", 1},
      {2, "3 Nutraukti | 4 Kartoti | 5 Ignoruoti", 3},
      {3, "6 Taip | 7 Ne | 2 Atšaukti", 6},
      {4, "6 Taip | 7 Ne", 6},
      {5, "4 Kartoti | 2 Atšaukti", 4},
      {64, "1 Gerai", 1},
  };
  UnattendedMessageBox without({}, log, clock);
  for (const auto& set : sets) {
    std::filesystem::remove(log);
    EXPECT_EQ(without.Show(u"?", set.style, u""), set.first) << set.style;
    EXPECT_THAT(Log(), HasSubstr(std::string("buttons: ") + set.buttons + "\n"));
  }
  Answers("No\nCancel\nnothing\n");
  EXPECT_EQ(box.Show(u"?", 3, u""), 7);
  EXPECT_EQ(box.Show(u"?", 3, u""), vbCancel);
  EXPECT_EQ(box.Show(u"?", 3, u""), vbCancel);
}

TEST_F(UnattendedMessageBoxTest, LogTellsEverythingOfEachBox) {
  Answers("2\n");
  box.Ask(u"Pirma eilutė\r\nantra eilutė", u"Ataskaita", captions);
  box.Show(u"Klaida", vbCritical, u"");
  EXPECT_EQ(Log(),
            "2024-06-12 10:00:00\n"
            "  title:   Ataskaita\n"
            "  text:    Pirma eilutė\n"
            "           antra eilutė\n"
            "  buttons: 1 Įrašyti | 2 Neįrašyti | 3 Atšaukti\n"
            "  answer:  2 Neįrašyti (line 1 of " +
                answers.string() +
                ")\n"
                "2024-06-12 10:00:00\n"
                "  title:   QVA_Varnholt\n"
                "  text:    Klaida\n"
                "  buttons: 1 Gerai\n"
                "  answer:  1 Gerai (no answer left, the first button)\n");
}

TEST_F(UnattendedMessageBoxTest, GoesToTheStandardErrorOutputWithoutALog) {
  for (const std::filesystem::path& nowhere : {std::filesystem::path(), folder / "missing" / "log"}) {
    UnattendedMessageBox without({}, nowhere, clock);
    testing::internal::CaptureStderr();
    EXPECT_EQ(without.Show(u"Klaida", vbCritical, u""), vbOK);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("  text:    Klaida\n"));
  }
}

}  // namespace
}  // namespace qva
