#include "platform/forms/memory_form.h"

#include "platform/date.h"
#include "tests/platform/core_test.h"
#include "tests/platform/forms/form_contract.h"
#include "tests/platform/forms/memory_desk.h"
#include "tests/platform/forms/text_rows.h"

namespace qva {

INSTANTIATE_TYPED_TEST_SUITE_P(MemoryForms, FormContract, MemoryDesk);

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// One control of each kind.
ui::FormDescription Sample() {
  using enum ui::ControlKind;
  ui::FormDescription form;
  form.name = u"frmTest";
  form.cancel_button = u"btCancel";
  form.controls = {{Frame, u"Kinds", u"", {}, u"", 0},
                   {OptionButton, u"optA", u"A", {}, u"Kinds", 0},
                   {OptionButton, u"optB", u"B", {}, u"Kinds", 0},
                   {OptionButton, u"optOther", u"C", {}, u"", 0},
                   {TextBox, u"txt", u"", {}, u"", 0},
                   {TextBox, u"note", u"", {}, u"", 0, true},
                   {ComboBox, u"cb", u"", {}, u"", 0},
                   {DatePicker, u"ed", u"", {}, u"", 0},
                   {MonthView, u"month", u"", {}, u"", 0},
                   {TabControl, u"tab", u"", {}, u"", 0},
                   {Grid, u"grid", u"", {}, u"", 0},
                   {Grid, u"list", u"", {}, u"", 0, true},
                   {Label, u"label", u"Metai", {}, u"", 0},
                   {Button, u"bt", u"Spausti", {}, u"", 0},
                   {Button, u"btCancel", u"", {}, u"", 0}};
  return form;
}

class MemoryFormTest : public CoreTest {
 protected:
  /// Shows the form to a user.
  void Show(const MemoryForm::User& user) {
    form = std::make_unique<MemoryForm>(Sample(), user);
    if (prepare) prepare(*form);
    form->ShowModal();
  }
  template <class T>
  T& Control(std::u16string_view name) {
    return ui::Get<T>(*form, name);
  }

  std::function<void(MemoryForm&)> prepare;
  std::unique_ptr<MemoryForm> form;
};

TEST_F(MemoryFormTest, RaisesAChangeOnlyWhenTheTextIsAnotherOne) {
  std::vector<std::u16string> seen;
  Show([&](MemoryForm&) {
    auto& box = Control<ui::TextBox>(u"txt");
    box.on_change = [&] { seen.push_back(box.Text()); };
    box.SetText(u"a");
    box.SetText(u"a");
    form->Type(u"txt", u"20");
    form->Type(u"txt", u"");
  });
  EXPECT_THAT(seen, ElementsAre(u"a", u"2", u"20", u""));
}

TEST_F(MemoryFormTest, CutsATextThatIsTooLong) {
  Show([&](MemoryForm&) {
    Control<ui::TextBox>(u"txt").SetText(u"ilgas tekstas");
    Control<ui::TextBox>(u"txt").SetMaxLength(4);
    EXPECT_EQ(form->Text(u"txt"), u"ilgas tekstas");  // a limit concerns what comes
    form->Type(u"txt", u"20245");
    EXPECT_EQ(form->Text(u"txt"), u"2024");
  });
}

TEST_F(MemoryFormTest, ClicksAnOptionWhenItBecomesTheSelectedOneOfItsFrame) {
  std::string clicks;
  Show([&](MemoryForm&) {
    Control<ui::OptionButton>(u"optA").on_click = [&] { clicks += 'A'; };
    Control<ui::OptionButton>(u"optB").on_click = [&] { clicks += 'B'; };
    Control<ui::OptionButton>(u"optOther").Select();
    Control<ui::OptionButton>(u"optA").Select();
    form->Click(u"optA");
    form->Click(u"optB");
    EXPECT_FALSE(Control<ui::OptionButton>(u"optA").Selected());
    EXPECT_TRUE(Control<ui::OptionButton>(u"optOther").Selected());
  });
  EXPECT_EQ(clicks, "AB");
}

TEST_F(MemoryFormTest, RaisesAChangeOfADateAlsoWhenTheProgramSetsIt) {
  int changes = 0;
  Show([&](MemoryForm&) {
    auto& picker = Control<ui::DatePicker>(u"ed");
    picker.on_change = [&] { ++changes; };
    picker.SetValue(DateFromParts(2024, 5, 6));
    picker.SetValue(Date{DateFromParts(2024, 5, 6).serial + 0.5});
    form->PickDate(u"ed", DateFromParts(2024, 5, 7));
    picker.SetFormat(u"yyyy.MM");
    EXPECT_EQ(form->Text(u"ed"), u"2024.05");
  });
  EXPECT_EQ(changes, 2);
}

TEST_F(MemoryFormTest, PicksADayWithADoubleClickAndPassesKeysOn) {
  std::vector<int> keys;
  Date picked;
  Show([&](MemoryForm&) {
    auto& month = Control<ui::MonthView>(u"month");
    month.on_day_double_click = [&] { picked = month.Value(); };
    month.on_key_press = [&](int key) { keys.push_back(key); };
    form->PressKey(u"month", 13);
    form->DoubleClickDay(u"month", DateFromParts(2024, 2, 29));
  });
  EXPECT_EQ(picked, DateFromParts(2024, 2, 29));
  EXPECT_THAT(keys, ElementsAre(13));
}

TEST_F(MemoryFormTest, LetsNobodyWorkWhatIsNotThereDisabledOrOfAnotherKind) {
  Show([&](MemoryForm&) {
    EXPECT_EQ(RaisedBy([&] { form->Click(u"nėra"); }), kInvalidProcedureCall);
    EXPECT_EQ(RaisedBy([&] { form->Click(u"txt"); }), kInvalidProcedureCall);
    EXPECT_EQ(RaisedBy([&] { form->Type(u"bt", u"x"); }), kInvalidProcedureCall);
    form->Find(u"txt")->SetEnabled(false);
    EXPECT_EQ(RaisedBy([&] { form->Type(u"txt", u"x"); }), kInvalidProcedureCall);
    form->Find(u"txt")->SetEnabled(true);
    EXPECT_EQ(RaisedBy([&] { form->Type(u"note", u"x"); }), kInvalidProcedureCall);
    EXPECT_EQ(RaisedBy([&] { form->TypeCell(u"grid", 0, u"A", u"x"); }), kInvalidProcedureCall);
    EXPECT_EQ(RaisedBy([&] { form->SelectRow(u"grid", 0); }), kInvalidProcedureCall);
    for (const Date day : {DateFromParts(1752, 12, 31), Date{DateFromParts(9999, 12, 31).serial + 1}}) {
      EXPECT_EQ(RaisedBy([&] { form->PickDate(u"ed", day); }), kInvalidProcedureCall);
      EXPECT_EQ(RaisedBy([&] { form->DoubleClickDay(u"month", day); }), kInvalidProcedureCall);
    }
    form->Hide();
    EXPECT_EQ(RaisedBy([&] { form->Click(u"bt"); }), kInvalidProcedureCall);
  });
}

TEST_F(MemoryFormTest, ADoubleClickPicksARowOfAGridThatIsOnlyRead) {
  TextRows model(1);
  model.rows = {{u"1"}, {u"2"}};
  Show([&](MemoryForm&) {
    std::optional<std::size_t> picked;
    for (const char16_t* const name : {u"grid", u"list"}) {
      auto& grid = Control<ui::Grid>(name);
      grid.on_pick = [&] { picked = grid.CurrentRow(); };
      grid.SetColumns({{.name = u"A", .width = 80, .read_only = true}});
      grid.SetModel(&model);
    }
    EXPECT_EQ(RaisedBy([&] { form->DoubleClickRow(u"grid", 1); }), kInvalidProcedureCall);
    EXPECT_EQ(picked, std::nullopt);
    form->DoubleClickRow(u"list", 1);
    EXPECT_EQ(picked, 1u);
    EXPECT_EQ(RaisedBy([&] { form->DoubleClickRow(u"list", 2); }), kInvalidProcedureCall);
  });
}

TEST_F(MemoryFormTest, DropsANewRowWhoseFirstTextIsRefused) {
  TextRows model(1);
  Show([&](MemoryForm&) {
    auto& grid = Control<ui::Grid>(u"grid");
    model.changed = [&] { grid.Refresh(); };
    grid.SetColumns({{.name = u"A", .caption = u""}});
    grid.SetModel(&model);
    EXPECT_FALSE(form->TypeCell(u"grid", 0, u"A", u"bloga"));
    EXPECT_EQ(form->RowCount(u"grid"), 0u);
    EXPECT_EQ(grid.CurrentRow(), std::nullopt);
    EXPECT_TRUE(form->TypeCell(u"grid", 0, u"A", u"gera"));
    EXPECT_FALSE(form->TypeCell(u"grid", 0, u"A", u"bloga"));  // a row that was there stays
    EXPECT_EQ(form->CellText(u"grid", 0, u"A"), u"gera");
  });
}

TEST_F(MemoryFormTest, ShowsAGridAsItWasAtItsLastRefresh) {
  TextRows model(2);
  model.rows = {{u"gera", u""}};
  Show([&](MemoryForm&) {
    auto& grid = Control<ui::Grid>(u"grid");
    model.changed = [&] { grid.Refresh(); };
    grid.SetColumns({{.name = u"A", .caption = u""}});
    grid.SetModel(&model);
    model.rows = {{u"kita", u""}, {u"antra", u"antros"}};
    EXPECT_EQ(form->RowCount(u"grid"), 1u);
    EXPECT_EQ(form->CellText(u"grid", 0, u"A"), u"gera") << "nobody said that there is something new";
    grid.Refresh();
    EXPECT_EQ(form->RowCount(u"grid"), 2u);
    EXPECT_EQ(form->CellText(u"grid", 1, u"A"), u"antra");
    grid.SetColumns({{.name = u"A", .caption = u""}, {.name = u"B", .caption = u""}});
    EXPECT_EQ(form->CellText(u"grid", 1, u"B"), u"antros") << "other columns show the rows anew";
  });
}

TEST_F(MemoryFormTest, GivesTheFocusToWhatIsWorked) {
  Show([&](MemoryForm&) {
    form->Type(u"cb", u"F1");
    EXPECT_EQ(form->focused(), u"cb");
    EXPECT_EQ(form->Text(u"cb"), u"F1");
    form->Find(u"txt")->SetFocus();
    EXPECT_EQ(form->focused(), u"txt");
  });
}

TEST_F(MemoryFormTest, ClosesAWindowThatTheUserLeavesOpenByItsCancelButton) {
  int cancelled = 0;
  prepare = [&](MemoryForm&) {
    Control<ui::Button>(u"btCancel").on_click = [&] {
      ++cancelled;
      form->Hide();
    };
  };
  Show([&](MemoryForm&) { EXPECT_TRUE(form->Visible()); });
  EXPECT_EQ(cancelled, 1);
  EXPECT_FALSE(form->Visible());
}

TEST_F(MemoryFormTest, IsHiddenWhenItsUserFails) {
  EXPECT_EQ(RaisedBy([&] { Show([](MemoryForm&) { throw AutomationError(kOverflow); }); }), kOverflow);
  EXPECT_FALSE(form->Visible());
}

}  // namespace
}  // namespace qva
