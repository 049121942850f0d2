#include "platform/forms/unattended_forms.h"

#include "platform/date.h"
#include "platform/memory/MemoryLocale.h"
#include "tests/files.h"
#include "tests/heard_failures.h"
#include "tests/platform/core_test.h"
#include "tests/platform/forms/form_contract.h"
#include "tests/platform/forms/list_chooser_contract.h"
#include "tests/platform/forms/text_rows.h"
#include "tests/raised_error.h"

namespace qva {
namespace {

class UnattendedDesk {
 public:
  UnattendedDesk() { Answer("[frmTest]\nbtStep\n[frmTest]\nbtStep\n"); }
  static bool IsThere() { return true; }
  ui::FormFactory& factory() { return forms_; }
  void Show(ui::Form& form) { form.ShowModal(); }
  void ShowGrid(ui::Form& form, std::u16string_view text) {
    Answer("[frmTest]\ngrid 1 A" + (text.empty() ? "" : " = " + ToUtf8(text)) + "\n");
    form.ShowModal();
  }

 private:
  /// The file is read when the first form is shown.
  void Answer(const std::string& answers) { WriteFile(folder_ / "answers", answers); }

  TemporaryFolder folder_;
  MemoryClock clock_;
  MemoryLocale locale_;
  UnattendedForms forms_{folder_ / "answers", folder_ / "log", clock_, locale_};
};

/// Has a file of one answer for each list.
class UnattendedListUser {
 public:
  UnattendedListUser() = default;
  UnattendedListUser(const UnattendedListUser&) = delete;
  UnattendedListUser& operator=(const UnattendedListUser&) = delete;
  ~UnattendedListUser() {
    const std::string log = FileContent(folder_ / "log");
    EXPECT_EQ(std::ranges::count(log, '\n'), awaited_) << log;
    EXPECT_THAT(log, testing::Not(testing::HasSubstr("ERROR")));
  }
  static bool IsThere() { return true; }
  void Pick(std::u16string_view code) { Answer("list = " + ToUtf8(code)); }
  void Leave() { Answer("list"); }
  ListChooser& chooser() { return *forms_; }

 private:
  void Answer(const std::string& answer) {
    ++awaited_;
    WriteFile(folder_ / "answers", answer);
    forms_.emplace(folder_ / "answers", folder_ / "log", clock_, locale_);
  }

  std::ptrdiff_t awaited_ = 0;
  TemporaryFolder folder_;
  MemoryClock clock_;
  MemoryLocale locale_;
  std::optional<UnattendedForms> forms_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(UnattendedForms, FormContract, UnattendedDesk);
INSTANTIATE_TYPED_TEST_SUITE_P(UnattendedForms, ListChooserContract, UnattendedListUser);

namespace {

using testing::HasSubstr;
using testing::Not;

/// A form with a grid of two columns and a list behind the second one's button.
class UnattendedFormsTest : public testing::Test {
 protected:
  /// Shows the form with these answers; the error's description, empty when none is raised.
  std::string Show(std::string_view content) {
    WriteFile(answers, content);
    forms.emplace(answers, log, clock, locale);
    return ShowAgain();
  }
  std::string ShowAgain() {
    using enum ui::ControlKind;
    ui::FormDescription description;
    description.name = u"frmTest";
    description.default_button = u"btOk";
    description.controls = {{TextBox, u"txt", u"", {}, u"", 0},     {DatePicker, u"ed", u"", {}, u"", 0},
                            {MonthView, u"month", u"", {}, u"", 0}, {OptionButton, u"opt", u"", {}, u"", 0},
                            {Grid, u"grid", u"", {}, u"", 0},       {Button, u"btOk", u"", {}, u"", 0},
                            {Button, u"btCancel", u"", {}, u"", 0}};
    model.rows.clear();
    key = 0;
    form = forms->Create(description);
    auto& grid = ui::Get<ui::Grid>(*form, u"grid");
    grid.SetColumns({{.name = u"A", .caption = u""}, {.name = u"B", .caption = u"", .cell_button = true}});
    model.changed = [&] { grid.Refresh(); };
    model.pressed = [this](std::u16string& text) {
      const auto chosen = forms->Choose({u"Knygos", {u"Kodas"}, {{u"A"}, {u"B"}}}, u"");
      if (chosen) text = *chosen == 0 ? u"A" : u"B";
    };
    grid.SetModel(&model);
    ui::Get<ui::Button>(*form, u"btOk").on_click = [this] {
      if (accepts) form->Hide();
    };
    ui::Get<ui::Button>(*form, u"btCancel").on_click = [this] { form->Hide(); };
    ui::Get<ui::MonthView>(*form, u"month").on_key_press = [this](int character) { key = character; };
    const auto error = ErrorOf([&] { form->ShowModal(); });
    if (!error) return "";
    EXPECT_EQ(error->number(), kInvalidProcedureCall);
    return ToUtf8(error->description());
  }
  std::string Log() const { return FileContent(log); }

  TemporaryFolder folder;
  const std::filesystem::path answers = folder / "answers";
  const std::filesystem::path log = folder / "log";
  MemoryClock clock;
  MemoryLocale locale;
  std::optional<UnattendedForms> forms;
  std::unique_ptr<ui::Form> form;
  TextRows model{2};
  bool accepts = true;
  int key = 0;
};

TEST_F(UnattendedFormsTest, WorksTheControlsInOrder) {
  EXPECT_EQ(
      Show("# one showing\n[frmTest]\ntxt = 2024 m.\nopt\ned = 2024-02-29\n\ngrid 1 A = x\ngrid 2 A = y\n"
           "grid 1 B\nlist = B\ngrid 2\nmonth = 2024-01-31\nmonth key 13\nbtOk\n"),
      "");
  EXPECT_EQ(ui::Get<ui::TextBox>(*form, u"txt").Text(), u"2024 m.");
  EXPECT_TRUE(ui::Get<ui::OptionButton>(*form, u"opt").Selected());
  EXPECT_EQ(ui::Get<ui::DatePicker>(*form, u"ed").Value(), DateFromParts(2024, 2, 29));
  EXPECT_EQ(model.rows, (std::vector<std::vector<std::u16string>>{{u"x", u"B"}, {u"y", u""}}));
  EXPECT_EQ(ui::Get<ui::Grid>(*form, u"grid").CurrentRow(), 1u);
  EXPECT_EQ(ui::Get<ui::MonthView>(*form, u"month").Value(), DateFromParts(2024, 1, 31));
  EXPECT_EQ(key, 13);
  EXPECT_THAT(Log(), HasSubstr("form frmTest"));
  EXPECT_THAT(Log(), HasSubstr("txt = 2024 m."));
  EXPECT_THAT(Log(), Not(HasSubstr("ERROR")));
}

TEST_F(UnattendedFormsTest, AnswersOneShowingAfterTheOther) {
  EXPECT_EQ(Show("[frmTest]\ntxt = 1\nbtOk\n[frmTest]\ntxt =\nbtCancel\n"), "");
  EXPECT_EQ(ui::Get<ui::TextBox>(*form, u"txt").Text(), u"1");
  EXPECT_EQ(ShowAgain(), "");
  EXPECT_EQ(ui::Get<ui::TextBox>(*form, u"txt").Text(), u"");
  EXPECT_THAT(ShowAgain(), HasSubstr("There are no answers for the form frmTest"));
}

TEST_F(UnattendedFormsTest, RefusesAnAnswerForAControlThatIsNotThere) {
  EXPECT_THAT(
      Show("[frmTest]\nnera = 1\nbtOk\n"),
      HasSubstr("line 2 of " + answers.string() + " (nera = 1): The control nera is not on the form"));
  EXPECT_THAT(Log(), HasSubstr("ERROR: line 2"));
  EXPECT_FALSE(form->Visible());
}

TEST_F(UnattendedFormsTest, RefusesWhatTheFormDoesNotAccept) {
  accepts = false;
  EXPECT_THAT(Show("[frmTest]\nbtOk\nbtCancel\n"), HasSubstr("line 2"));
  EXPECT_THAT(Show("[frmTest]\ngrid 1 A = bloga\nbtOk\n"), HasSubstr("(grid 1 A = bloga): The form refuses"));
}

TEST_F(UnattendedFormsTest, RefusesWhatIsNoAnswer) {
  for (const std::string line :
       {"opt opt", "grid = 1", "grid 0 A = x", "grid 9", "month double kada", "month key 0", "ed = vakar",
        "ed = 1700-01-01", "=", "month treble 2024-01-01"}) {
    EXPECT_THAT(Show("[frmTest]\n" + line + "\nbtOk\n"), HasSubstr("line 2")) << line;
  }
}

TEST_F(UnattendedFormsTest, RefusesAnswersThatLeaveTheFormOpen) {
  EXPECT_THAT(Show("[frmTest]\ntxt = 1\n"), HasSubstr("still open"));
  EXPECT_THAT(Show("[frmTest]\ntxt = 1\n[frmTest]\nbtOk\n"), HasSubstr("still open"));
}

TEST_F(UnattendedFormsTest, GoesOnWithTheNextShowingAfterARefusedOne) {
  EXPECT_THAT(Show("[frmTest]\nnera = 1\ntxt = 1\nbtOk\n[frmTest]\ntxt = 2\nbtOk\n"), HasSubstr("line 2"));
  EXPECT_EQ(ShowAgain(), "");
  EXPECT_EQ(ui::Get<ui::TextBox>(*form, u"txt").Text(), u"2");
}

TEST_F(UnattendedFormsTest, TellsOfAnswersLeftOverFromTheFormBefore) {
  EXPECT_EQ(Show("[frmTest]\nbtOk\ntxt = 1\nopt\n[frmTest]\nbtOk\n[frmTest]\nbtOk\n"), "");
  EXPECT_EQ(ShowAgain(), "line 3 of " + answers.string() + " (txt = 1): no form was open for it");
  EXPECT_FALSE(form->Visible());
  EXPECT_EQ(ShowAgain(), "");
}

TEST_F(UnattendedFormsTest, RefusesAnswersForAnotherForm) {
  EXPECT_THAT(Show("[frmDatePic]\nbtOk\n"), HasSubstr("There are no answers for the form frmTest"));
}

TEST_F(UnattendedFormsTest, RefusesAFormWithoutAnAnswersFile) {
  forms.emplace(NativePath(), log, clock, locale);
  EXPECT_EQ(ShowAgain(), "There are no answers for the form frmTest");
  forms.emplace(folder / "missing", log, clock, locale);
  EXPECT_THAT(ShowAgain(), HasSubstr("There are no answers"));
  EXPECT_THAT(Log(), HasSubstr("ERROR: cannot read the answers file"));
}

TEST_F(UnattendedFormsTest, RefusesAListWithoutItsAnswer) {
  EXPECT_THAT(Show("[frmTest]\ngrid 1 A = x\ngrid 1 B\nbtOk\n"),
              HasSubstr("There is no answer for the list \"Knygos\""));
  EXPECT_THAT(Show("[frmTest]\ngrid 1 A = x\ngrid 1 B\nlist = C\nbtOk\n"),
              HasSubstr("line 4 of " + answers.string() + " (list = C): the list \"Knygos\" has no row C"));
}

TEST_F(UnattendedFormsTest, LeavesAListWhenToldTo) {
  EXPECT_EQ(Show("[frmTest]\ngrid 1 A = x\ngrid 1 B\nlist\nbtOk\n"), "");
  EXPECT_EQ(model.rows[0][1], u"");
}

TEST_F(UnattendedFormsTest, ARefusedOrMissingAnswerIsAFailureAndAnyOtherMistakeAWrongAnswer) {
  const HeardFailures failures;
  Show("[frmTest]\ngrid 1 A = bloga\n");
  Show("");
  Show("[frmTest]\ntxt = 1\n");
  EXPECT_EQ(failures.failed.size(), 3u);
  EXPECT_TRUE(failures.wrongly_answered.empty());
  Show("[frmTest]\ntxtt = 1\nbtOk\n");
  Show("[frmTest]\ned = 2024-02-30\nbtOk\n");
  Show("[frmTest]\ngrid 1 B\nlist = C\nbtOk\n");
  EXPECT_EQ(failures.failed.size(), 3u);
  ASSERT_EQ(failures.wrongly_answered.size(), 3u);
  EXPECT_THAT(ToUtf8(failures.wrongly_answered[0]),
              HasSubstr("line 2 of " + answers.string() + " (txtt = 1)"));
}

TEST_F(UnattendedFormsTest, WhatAHandlerRaisesIsAFailureAndNoWrongAnswer) {
  const HeardFailures failures;
  WriteFile(answers, "[frmTest]\nbtOk\n");
  UnattendedForms forms(answers, log, clock, locale);
  const auto form =
      forms.Create({.name = u"frmTest", .controls = {{.kind = ui::ControlKind::Button, .name = u"btOk"}}});
  ui::Get<ui::Button>(*form, u"btOk").on_click = [] { throw AutomationError(kOverflow); };
  EXPECT_THROW(form->ShowModal(), AutomationError);
  EXPECT_THAT(failures.failed, testing::ElementsAre(u"Overflow"));
  EXPECT_TRUE(failures.wrongly_answered.empty());
  EXPECT_THAT(Log(), HasSubstr("ERROR: Overflow"));
}

}  // namespace
}  // namespace qva
