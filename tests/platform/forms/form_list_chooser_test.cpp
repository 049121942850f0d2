#include "platform/forms/form_list_chooser.h"

#include <gmock/gmock.h>

#include "platform/memory/FaultyFormFactory.h"
#include "platform/memory/MemoryForms.h"
#include "tests/platform/forms/list_chooser_contract.h"

namespace qva {
namespace {

using testing::ElementsAre;
using Texts = std::vector<std::u16string>;

class FormListUser {
 public:
  ~FormListUser() { EXPECT_TRUE(is_done_); }
  static bool IsThere() { return true; }
  void Pick(std::u16string_view code) {
    Do([code = std::u16string(code)](MemoryForm& form) {
      form.Type(u"Filter", code);
      form.Click(u"Ok");
    });
  }
  void Leave() {
    Do([](MemoryForm& form) { form.CloseWindow(); });
  }
  ListChooser& chooser() { return chooser_; }

 private:
  void Do(MemoryForm::User user) {
    is_done_ = false;
    forms_.user = [this, user = std::move(user)](MemoryForm& form) {
      EXPECT_EQ(form.description().caption, u"Sąrašas");
      user(form);
      is_done_ = true;
    };
  }

  bool is_done_ = true;  ///< all that the user was told; what is raised meanwhile the chooser keeps to itself

  MemoryForms forms_;
  FormListChooser chooser_{forms_};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(FormListChooser, ListChooserContract, FormListUser);

namespace {

class FormListChooserTest : public testing::Test {
 protected:
  std::optional<std::size_t> Choose(std::u16string_view selected, MemoryForm::User user) {
    bool is_done = false;  // what is raised meanwhile the chooser keeps to itself
    forms.user = [&, user = std::move(user)](MemoryForm& shown) {
      form = &shown;
      user(shown);
      is_done = true;
    };
    const auto chosen = FormListChooser(forms).Choose(list, selected);
    EXPECT_TRUE(is_done);
    return chosen;
  }
  Texts Codes() const {
    Texts codes;
    for (std::size_t row = 0; row < form->RowCount(u"List"); ++row) {
      codes.push_back(form->CellText(u"List", row, u"Kodas"));
    }
    return codes;
  }
  /// The code of the current row; empty where there is none.
  std::u16string Current() const {
    const auto row = ui::Get<ui::Grid>(*form, u"List").CurrentRow();
    return row ? Codes().at(*row) : u"";
  }
  std::vector<int> Widths() {
    std::vector<int> widths;
    Choose(u"", [&](MemoryForm& shown) {
      for (const ui::GridColumn& column : shown.Columns(u"List")) widths.push_back(column.width);
    });
    return widths;
  }

  MemoryForms forms;
  MemoryForm* form = nullptr;
  ChoiceList list{
      u"Sąrašas",
      {u"Kodas", u"Pavadinimas"},
      {{u"BALT", u"Baltų žąsys"}, {u"MEDVILNE", u"Medvilnė ir Ko"}, {u"ZUIKIS", u"Žalias zuikis"}}};
};

TEST_F(FormListChooserTest, ShowsTheRowsUnderTheirCaptionsWithTheMarkedOneCurrent) {
  Choose(u"MEDVILNE", [&](MemoryForm& shown) {
    EXPECT_THAT(Codes(), ElementsAre(u"BALT", u"MEDVILNE", u"ZUIKIS"));
    EXPECT_EQ(shown.CellText(u"List", 2, u"Pavadinimas"), u"Žalias zuikis");
    EXPECT_EQ(Current(), u"MEDVILNE");
    for (const ui::GridColumn& column : shown.Columns(u"List")) {
      EXPECT_EQ(column.caption, column.name);
      EXPECT_TRUE(column.read_only);
    }
  });
  Choose(u"nėra", [&](MemoryForm&) { EXPECT_EQ(Current(), u"BALT"); });
}

TEST_F(FormListChooserTest, TheFieldHasTheKeysFirstAndPassesThoseThatMove) {
  Choose(u"", [](MemoryForm& shown) {
    EXPECT_EQ(shown.focused(), u"Filter");
    const auto field =
        std::ranges::find(shown.description().controls, u"Filter", &ui::ControlDescription::name);
    EXPECT_EQ(field->keys_for, u"List");
    EXPECT_EQ(shown.description().default_button, u"Ok");
  });
}

TEST_F(FormListChooserTest, TypingLeavesTheRowsThatFitAndPicksByTheNumberInTheWholeList) {
  EXPECT_EQ(Choose(u"BALT",
                   [&](MemoryForm& shown) {
                     shown.Type(u"Filter", u"ŽALI");
                     EXPECT_THAT(Codes(), ElementsAre(u"ZUIKIS"));
                     shown.Click(u"Ok");
                   }),
            2u);
}

TEST_F(FormListChooserTest, TheCurrentRowStaysSoWhileItFits) {
  Choose(u"BALT", [&](MemoryForm& shown) {
    shown.SelectRow(u"List", 2);
    shown.Type(u"Filter", u"z");
    EXPECT_THAT(Codes(), ElementsAre(u"BALT", u"ZUIKIS"));
    EXPECT_EQ(Current(), u"ZUIKIS");
    shown.Type(u"Filter", u"ząs");
    EXPECT_EQ(Current(), u"BALT") << "it alone is left";
    shown.Type(u"Filter", u"");
    EXPECT_EQ(Current(), u"BALT");
  });
}

TEST_F(FormListChooserTest, TheCurrentRowComesBackWhereNothingFitted) {
  EXPECT_EQ(Choose(u"BALT",
                   [&](MemoryForm& shown) {
                     shown.SelectRow(u"List", 1);
                     ui::Get<ui::TextBox>(shown, u"Filter").SetText(u"qq");
                     EXPECT_EQ(Current(), u"");
                     EXPECT_FALSE(shown.Find(u"Ok")->Enabled());
                     shown.Type(u"Filter", u"");
                     EXPECT_EQ(Current(), u"MEDVILNE");
                     EXPECT_TRUE(shown.Find(u"Ok")->Enabled());
                   }),
            std::nullopt);
}

TEST_F(FormListChooserTest, ADoubleClickPicks) {
  EXPECT_EQ(Choose(u"BALT", [](MemoryForm& shown) { shown.DoubleClickRow(u"List", 1); }), 1u);
}

TEST_F(FormListChooserTest, NothingCanBePickedOfAnEmptyList) {
  list.rows.clear();
  EXPECT_EQ(Choose(u"BALT",
                   [](MemoryForm& shown) {
                     EXPECT_FALSE(shown.Find(u"Ok")->Enabled());
                     ui::Get<ui::Button>(shown, u"Ok").on_click();
                     EXPECT_TRUE(shown.Visible());
                   }),
            std::nullopt);
}

TEST_F(FormListChooserTest, ColumnsAreAsWideAsTheirTextsWithinBounds) {
  list.captions = {u"Nr", u"Pavadinimas", u"Data"};
  list.rows = {{u"1", u"x"}, {u"2", std::u16string(20, u'x'), std::u16string(50, u'x')}, {}};
  EXPECT_THAT(Widths(), ElementsAre(80, 20 * 8 + 16, 240));
  list.rows.clear();
  EXPECT_THAT(Widths(), ElementsAre(80, 11 * 8 + 16, 80)) << "as the captions";
  list.captions.clear();
  EXPECT_THAT(Widths(), ElementsAre());
}

TEST_F(FormListChooserTest, BecomesLargerWithTheListAndItsFieldAndSmallerThanAtFirst) {
  Choose(u"", [](MemoryForm& shown) {
    EXPECT_TRUE(shown.description().resizable);
    EXPECT_EQ(shown.resizer_start(), std::pair(280, 220));
    EXPECT_EQ(shown.Width(), 480);
    EXPECT_EQ(shown.Height(), 400);
    EXPECT_EQ(shown.resize_modes(),
              (std::map<std::u16string, ui::ResizeMode>{{u"Filter", ui::ResizeMode::StretchWithWidth}}));
  });
}

TEST_F(FormListChooserTest, GivesNothingWhereNoFormCanBeMadeOrShown) {
  FaultyFormFactory faulty(forms);
  forms.user = [](MemoryForm& shown) { shown.Click(u"Ok"); };
  EXPECT_EQ(FormListChooser(faulty).Choose(list, u""), 0u);
  faulty.Refuse();
  EXPECT_EQ(FormListChooser(faulty).Choose(list, u""), std::nullopt);
  faulty.Allow();
  faulty.RefuseShowing();
  EXPECT_EQ(FormListChooser(faulty).Choose(list, u""), std::nullopt);
}

}  // namespace
}  // namespace qva
