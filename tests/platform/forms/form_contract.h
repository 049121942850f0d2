// What forms and their controls promise the program (platform/controls.h), as tests that every form factory
// passes. A Desk is made for each test and brings the factory:
// - static bool IsThere(): whether forms can be shown here at all.
// - ui::FormFactory& factory(): the factory.
// - void Show(ui::Form& form): shows a form to a user who presses its button "btStep" once.
// - void ShowGrid(ui::Form& form, std::u16string_view text): shows a form whose grid "grid" has the focus to
//   a user who types a text into its first cell, in the column "A", and ends with Enter; without a text he
//   presses the cell's button.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/date.h"
#include "platform/text.h"
#include "tests/raised_error.h"

namespace qva {

template <class Desk>
class FormContract : public testing::Test {
 protected:
  /// Rows of one text in every column.
  struct Rows : ui::GridModel {
    std::size_t RowCount() const override { return texts.size(); }
    std::u16string CellText(std::size_t row, std::size_t) const override { return texts[row]; }
    bool SetCellText(std::size_t, std::size_t, std::u16string_view) override {
      if (on_use) on_use();
      return false;
    }
    void AppendRow() override {}
    void DeleteRow(std::size_t) override {}
    void PressCellButton(std::size_t, std::size_t) override {
      if (on_use) on_use();
    }
    std::vector<std::u16string> texts;
    std::function<void()> on_use;
  };

  /// One control of each kind, and a second group of options.
  static ui::FormDescription Description() {
    using enum ui::ControlKind;
    ui::FormDescription form;
    form.name = u"frmTest";
    form.caption = u"Bandymas";
    form.width = 500;
    form.height = 320;
    form.pages = {u"Pirmas", u"Antras"};
    form.default_button = u"btStep";
    form.controls = {{TabControl, u"tabs", u"", {8, 8, 484, 180}, u"", 0},
                     {Frame, u"frame", u"Rūšis", {16, 36, 120, 100}, u"tabs", 0},
                     {OptionButton, u"optA", u"A", {8, 20, 90, 20}, u"frame", 0},
                     {OptionButton, u"optB", u"B", {8, 44, 90, 20}, u"frame", 0},
                     {Label, u"label", u"Metai & kt.", {150, 36, 100, 17}, u"tabs", 0},
                     {TextBox, u"text", u"Pastaba", {150, 60, 100, 23}, u"tabs", 0},
                     {TextBox, u"note", u"Tik skaitoma", {150, 120, 100, 23}, u"tabs", 0, true},
                     {ComboBox, u"combo", u"", {150, 90, 100, 23}, u"tabs", 0},
                     {Grid, u"grid", u"", {16, 36, 200, 100}, u"tabs", 1},
                     {Grid, u"list", u"", {224, 36, 200, 100}, u"tabs", 1, true},
                     {OptionButton, u"optOther", u"Kita", {8, 196, 90, 20}, u"", 0},
                     {DatePicker, u"date", u"", {8, 222, 110, 23}, u"", 0},
                     {MonthView, u"month", u"", {250, 192, 232, 100}, u"", 0},
                     {Button, u"btStep", u"Toliau", {8, 280, 88, 28}, u"", 0}};
    return form;
  }

  void SetUp() override {
    if (!Desk::IsThere()) GTEST_SKIP() << "no display";
    form = desk.factory().Create(Description());
  }

  template <class Control>
  Control& Get(std::u16string_view name) {
    return ui::Get<Control>(*form, name);
  }
  std::function<void()> Counting() {
    return [this] { ++events; };
  }
  /// Does something while the form is shown, which it is no more then.
  void WhileShown(std::function<void()> step) {
    Get<ui::Button>(u"btStep").on_click = [&] {
      step();
      form->Hide();
    };
    desk.Show(*form);
  }
  /// Has the user work a grid whose model raises then.
  void ExpectTheModelsError(std::u16string_view text) {
    auto& grid = Get<ui::Grid>(u"grid");
    grid.SetColumns({{.name = u"A", .caption = u"Pirmas", .width = 80, .cell_button = true}});
    rows.texts = {u"1"};
    rows.on_use = [] { throw AutomationError(kOverflow); };
    grid.SetModel(&rows);
    grid.SetFocus();
    EXPECT_EQ(RaisedBy([&] { desk.ShowGrid(*form, text); }), kOverflow);
    EXPECT_FALSE(form->Visible());
  }

  Desk desk;
  Rows rows;  // goes after the form, which borrows it
  std::unique_ptr<ui::Form> form;
  int events = 0;
};

TYPED_TEST_SUITE_P(FormContract);

// The form.

TYPED_TEST_P(FormContract, FindsItsControlsByTheirNames) {
  for (const ui::ControlDescription& control : this->Description().controls) {
    ui::Control* found = this->form->Find(control.name);
    ASSERT_TRUE(found) << ToUtf8(control.name);
    EXPECT_EQ(found->Name(), control.name);
    EXPECT_TRUE(found->Enabled()) << ToUtf8(control.name);
  }
  EXPECT_EQ(this->form->Find(u"nera"), nullptr);
  EXPECT_EQ(RaisedBy([&] { this->template Get<ui::Label>(u"btStep"); }), kInternalError);
}

TYPED_TEST_P(FormContract, IsMadeOfNoDescriptionThatContradictsItself) {
  const auto refusal = [&](const std::function<void(ui::FormDescription&)>& spoil) {
    ui::FormDescription description = this->Description();
    spoil(description);
    return RaisedBy([&] { this->desk.factory().Create(description); });
  };
  EXPECT_EQ(refusal([](auto&) {}), 0);
  EXPECT_EQ(refusal([](auto& form) { form.controls.push_back(form.controls.back()); }), kInternalError);
  EXPECT_EQ(refusal([](auto& form) { form.controls.back().parent = u"nera"; }), kInternalError);
  EXPECT_EQ(refusal([](auto& form) { form.controls.back().parent = u"text"; }), kInternalError);
  EXPECT_EQ(refusal([](auto& form) { form.controls.front().parent = u"frame"; }), kInternalError);
  EXPECT_EQ(refusal([](auto& form) { form.default_button = u"nera"; }), kInternalError);
  EXPECT_EQ(refusal([](auto& form) { form.cancel_button = u"text"; }), kInternalError);
  EXPECT_EQ(refusal([](auto& form) { form.controls.front().keys_for = u"list"; }), 0);
  EXPECT_EQ(refusal([](auto& form) { form.controls.front().keys_for = u"text"; }), kInternalError);
}

TYPED_TEST_P(FormContract, IsVisibleWhileItIsShown) {
  EXPECT_FALSE(this->form->Visible());
  for (int showing = 0; showing < 2; ++showing) {
    bool was_visible = false;
    this->WhileShown([&] { was_visible = this->form->Visible(); });
    EXPECT_TRUE(was_visible);
    EXPECT_FALSE(this->form->Visible());
  }
  this->form->Hide();
  EXPECT_FALSE(this->form->Visible()) << "hiding what is hidden does nothing";
}

TYPED_TEST_P(FormContract, IsNotShownTwiceAtATime) {
  std::int32_t raised = 0;
  bool was_visible = false;
  this->WhileShown([&] {
    raised = RaisedBy([&] { this->form->ShowModal(); });
    was_visible = this->form->Visible();
  });
  EXPECT_EQ(raised, kFormAlreadyDisplayed);
  EXPECT_TRUE(was_visible);
}

TYPED_TEST_P(FormContract, AHandlerThatRaisesEndsTheShowingWhichRaisesTheSame) {
  auto& box = this->template Get<ui::TextBox>(u"text");
  box.on_change = [] { throw AutomationError(kOverflow); };
  const std::function<void()> steps[] = {[] { throw AutomationError(kOverflow); },
                                         [&box] { box.SetText(u"Kita"); }};
  for (const auto& step : steps) {
    this->template Get<ui::Button>(u"btStep").on_click = step;
    EXPECT_EQ(RaisedBy([&] { this->desk.Show(*this->form); }), kOverflow);
    EXPECT_FALSE(this->form->Visible());
  }
}

TYPED_TEST_P(FormContract, AModelThatRaisesAtATextEndsTheShowingWhichRaisesTheSame) {
  this->ExpectTheModelsError(u"x");
}

TYPED_TEST_P(FormContract, AModelThatRaisesAtACellsButtonEndsTheShowingWhichRaisesTheSame) {
  this->ExpectTheModelsError(u"");
}

TYPED_TEST_P(FormContract, HasItsSizeAndIsAskedOnceForEachControl) {
  // A month is as large as the platform draws it, and a form with one follows it.
  ui::FormDescription description = this->Description();
  std::erase_if(description.controls, [](const auto& control) { return control.name == u"month"; });
  this->form = this->desk.factory().Create(description);
  EXPECT_EQ(this->form->Width(), 500);
  EXPECT_EQ(this->form->Height(), 320);
  description.first_width = 400;
  description.first_height = 330;
  this->form = this->desk.factory().Create(description);
  EXPECT_EQ(this->form->Width(), 500);
  EXPECT_EQ(this->form->Height(), 330);
  std::map<std::u16string, int> asked;
  this->form->StartResizer(500, 320, [&](std::u16string_view name) {
    ++asked[std::u16string(name)];
    return std::optional<ui::ResizeMode>();
  });
  for (const ui::ControlDescription& control : description.controls) {
    EXPECT_EQ(asked[control.name], 1) << ToUtf8(control.name);
  }
  EXPECT_EQ(RaisedBy([&] {
              this->form->StartResizer(500, 320, [](std::u16string_view) -> std::optional<ui::ResizeMode> {
                throw AutomationError(kOverflow);
              });
            }),
            kOverflow);
}

// Its controls.

TYPED_TEST_P(FormContract, LabelsAndTextBoxesShowTheirCaptionsFirst) {
  auto& label = this->template Get<ui::Label>(u"label");
  EXPECT_EQ(label.Caption(), u"Metai & kt.");
  label.SetCaption(u"Kita && nauja");
  EXPECT_EQ(label.Caption(), u"Kita && nauja");
  EXPECT_EQ(this->template Get<ui::TextBox>(u"text").Text(), u"Pastaba");
}

TYPED_TEST_P(FormContract, ATextBoxTellsOfAnotherTextAlone) {
  auto& box = this->template Get<ui::TextBox>(u"text");
  box.on_change = this->Counting();
  box.SetText(u"Ąžuolas");
  EXPECT_EQ(this->events, 1);
  box.SetText(u"Ąžuolas");
  EXPECT_EQ(this->events, 1);
  box.SetText(u"");
  EXPECT_EQ(this->events, 2);
  EXPECT_EQ(box.Text(), u"");
}

TYPED_TEST_P(FormContract, ATextBoxCutsWhatIsTooLongFromNowOn) {
  auto& box = this->template Get<ui::TextBox>(u"text");
  box.SetMaxLength(4);
  EXPECT_EQ(box.Text(), u"Pastaba");
  box.SetText(u"123456");
  EXPECT_EQ(box.Text(), u"1234");
  box.SetMaxLength(0);
  box.SetText(u"123456");
  EXPECT_EQ(box.Text(), u"123456");
}

TYPED_TEST_P(FormContract, TheProgramSetsWhatTheUserCannot) {
  auto& note = this->template Get<ui::TextBox>(u"note");
  note.SetText(u"1");
  EXPECT_EQ(note.Text(), u"1");
  auto& box = this->template Get<ui::TextBox>(u"text");
  box.SetEnabled(false);
  EXPECT_FALSE(box.Enabled());
  box.SetText(u"2");
  EXPECT_EQ(box.Text(), u"2");
  box.SetEnabled(true);
  EXPECT_TRUE(box.Enabled());
}

TYPED_TEST_P(FormContract, AnOptionClearsThoseOfItsFrameAndTellsOnce) {
  auto& a = this->template Get<ui::OptionButton>(u"optA");
  auto& b = this->template Get<ui::OptionButton>(u"optB");
  auto& other = this->template Get<ui::OptionButton>(u"optOther");
  for (const auto* option : {&a, &b, &other}) EXPECT_FALSE(option->Selected());
  a.on_click = this->Counting();
  other.Select();
  a.Select();
  a.Select();
  EXPECT_EQ(this->events, 1);
  b.Select();
  EXPECT_EQ(this->events, 1);
  EXPECT_FALSE(a.Selected());
  EXPECT_TRUE(b.Selected());
  EXPECT_TRUE(other.Selected());
}

TYPED_TEST_P(FormContract, AComboBoxKeepsItsCode) {
  auto& combo = this->template Get<ui::ComboBox>(u"combo");
  EXPECT_EQ(combo.Value(), u"");
  combo.SetValue(u"F1");
  combo.SetItems({{u"B1", u"Biudžetas"}, {u"F1", u"Finansinė apskaita"}});
  EXPECT_EQ(combo.Value(), u"F1");
  combo.SetItems({{u"B1", u"Biudžetas"}});
  EXPECT_EQ(combo.Value(), u"F1");
  combo.SetValue(u"B1");
  EXPECT_EQ(combo.Value(), u"B1");
  combo.SetValue(u"");
  EXPECT_EQ(combo.Value(), u"");
}

TYPED_TEST_P(FormContract, ADatePickerTellsOfAnotherDayAlone) {
  auto& picker = this->template Get<ui::DatePicker>(u"date");
  const Date day = DateFromParts(2024, 5, 6);
  picker.SetValue(day);
  picker.on_change = this->Counting();
  picker.SetValue({day.serial + 0.5});
  EXPECT_EQ(this->events, 0);
  EXPECT_EQ(picker.Value(), day);
  picker.SetValue({day.serial + 1.75});
  EXPECT_EQ(this->events, 1);
  EXPECT_EQ(picker.Value(), Date{day.serial + 1});
}

TYPED_TEST_P(FormContract, DatesThatPickersCannotShowAreRefused) {
  auto& picker = this->template Get<ui::DatePicker>(u"date");
  auto& month = this->template Get<ui::MonthView>(u"month");
  for (const Date day :
       {DateFromParts(1753, 1, 1), DateFromParts(9999, 12, 31), DateFromParts(2024, 2, 29)}) {
    picker.SetValue(day);
    month.SetValue(day);
    EXPECT_EQ(picker.Value(), day);
    EXPECT_EQ(month.Value(), day);
  }
  for (const Date day : {DateFromParts(1752, 12, 31), Date{DateFromParts(9999, 12, 31).serial + 1}}) {
    EXPECT_EQ(RaisedBy([&] { picker.SetValue(day); }), kInvalidPropertyValue);
    EXPECT_EQ(RaisedBy([&] { month.SetValue(day); }), kInvalidPropertyValue);
    EXPECT_EQ(picker.Value(), DateFromParts(2024, 2, 29));
    EXPECT_EQ(month.Value(), DateFromParts(2024, 2, 29));
  }
}

TYPED_TEST_P(FormContract, PagesComeToTheFront) {
  auto& tabs = this->template Get<ui::TabControl>(u"tabs");
  EXPECT_EQ(tabs.Page(), 0);
  tabs.SetPage(1);
  EXPECT_EQ(tabs.Page(), 1);
}

TYPED_TEST_P(FormContract, AGridHasACurrentRowWhileItHasRows) {
  for (const bool is_list : {false, true}) {
    auto& grid = this->template Get<ui::Grid>(is_list ? u"list" : u"grid");
    EXPECT_EQ(grid.CurrentRow(), std::nullopt);
    grid.SetColumns({{.name = u"A", .caption = u"Pirmas", .width = 80, .read_only = is_list}});
    this->rows.texts = {u"1", u"2", u"3"};
    grid.SetModel(&this->rows);
    EXPECT_EQ(grid.CurrentRow(), 0u);
    grid.SetCurrentRow(2);
    EXPECT_EQ(grid.CurrentRow(), 2u);
    grid.SetCurrentRow(3);
    EXPECT_EQ(grid.CurrentRow(), 2u) << "there is no such row";
    this->rows.texts.pop_back();
    grid.Refresh();
    EXPECT_EQ(grid.CurrentRow(), 1u) << "the last one";
    this->rows.texts.clear();
    grid.Refresh();
    EXPECT_EQ(grid.CurrentRow(), std::nullopt);
    this->rows.texts = {u"1"};
    grid.Refresh();
    EXPECT_EQ(grid.CurrentRow(), 0u);
    grid.SetModel(nullptr);
    EXPECT_EQ(grid.CurrentRow(), std::nullopt);
  }
}

REGISTER_TYPED_TEST_SUITE_P(FormContract, FindsItsControlsByTheirNames,
                            IsMadeOfNoDescriptionThatContradictsItself, IsVisibleWhileItIsShown,
                            IsNotShownTwiceAtATime, AHandlerThatRaisesEndsTheShowingWhichRaisesTheSame,
                            AModelThatRaisesAtATextEndsTheShowingWhichRaisesTheSame,
                            AModelThatRaisesAtACellsButtonEndsTheShowingWhichRaisesTheSame,
                            HasItsSizeAndIsAskedOnceForEachControl, LabelsAndTextBoxesShowTheirCaptionsFirst,
                            ATextBoxTellsOfAnotherTextAlone, ATextBoxCutsWhatIsTooLongFromNowOn,
                            TheProgramSetsWhatTheUserCannot, AnOptionClearsThoseOfItsFrameAndTellsOnce,
                            AComboBoxKeepsItsCode, ADatePickerTellsOfAnotherDayAlone,
                            DatesThatPickersCannotShowAreRefused, PagesComeToTheFront,
                            AGridHasACurrentRowWhileItHasRows);

}  // namespace qva
