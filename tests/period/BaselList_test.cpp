#include "period/BaselList.h"

#include "tests/library_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A grid that counts how often it is to show the list anew.
class CountingGrid : public ui::Grid {
 public:
  std::u16string Name() const override { return u"Grid"; }
  bool Enabled() const override { return true; }
  void SetEnabled(bool) override {}
  void SetFocus() override {}
  void SetColumns(std::vector<ui::GridColumn> shown) override { columns = std::move(shown); }
  void SetModel(ui::GridModel* shown) override { model = shown; }
  void Refresh() override { ++refreshes; }
  std::optional<std::size_t> CurrentRow() const override { return current; }
  void SetCurrentRow(std::size_t row) override { current = row; }

  std::vector<ui::GridColumn> columns;
  ui::GridModel* model = nullptr;
  std::optional<std::size_t> current;
  int refreshes = 0;
};

/// A list of books, with a note that is only read, another column with a button, and a field that is hidden.
class BaselListInAGrid : public LibraryTest {
 protected:
  BaselListInAGrid() {
    Connected();
    list.on_add_fields = [this] {
      list.AppendField(u"BookCode", u"");
      list.AppendField(u"Note", u"?");
      list.AppendField(u"Other", u"");
      list.AppendField(u"Hidden", 0);
    };
    list.on_add_column = [](BaselList::Column& column) {
      if (column.name == u"BookCode") column.lookup_table = host::kBookTable;
      if (column.name == u"Note") column.read_only = true;
      if (column.name == u"Other") column.cell_button = true;
      if (column.name == u"Hidden") column.hidden = true;
    };
    list.on_show_look_up = [](std::u16string_view, BaselList::Lookup& lookup) {
      lookup.Init(TheGlobals().oBook, host::kBookTable);
      lookup.Reload();
    };
    list.button_click = [this](std::u16string_view column) { pressed = column; };
    list.Init(grid, TheGlobals().oBook.Table(host::kCarrierTable));
  }

  void TurnAllOn() {
    list.SetOptions({.edit = true, .add_rows = true, .delete_rows = true, .lookups = true});
  }

  CountingGrid grid;
  BaselList list;
  std::u16string pressed;
};

TEST_F(BaselListInAGrid, ShowsTheColumnsThatAreNotHidden) {
  ASSERT_THAT(grid.columns, SizeIs(3));
  const auto is = [&](std::size_t column, std::u16string_view name, std::u16string_view caption, int width) {
    EXPECT_EQ(grid.columns[column].name, name);
    EXPECT_EQ(grid.columns[column].caption, caption) << ToUtf8(name);
    EXPECT_EQ(grid.columns[column].width, width) << ToUtf8(name);
    EXPECT_EQ(grid.columns[column].read_only, name == u"Note") << ToUtf8(name);
    EXPECT_EQ(grid.columns[column].cell_button, name == u"Other") << ToUtf8(name);
  };
  is(0, u"BookCode", u"Knyga", 74);
  is(1, u"Note", u"", 100);
  is(2, u"Other", u"", 100);
  EXPECT_EQ(grid.model, &list);
}

TEST_F(BaselListInAGrid, LetsTheUserDoNothingUntilTurnedOn) {
  list.AddRow();
  EXPECT_FALSE(list.SetCellText(0, 0, u"MEDVILNE"));
  EXPECT_EQ(list.CellText(0, 0), u"");
  list.AppendRow();
  list.DeleteRow(0);
  EXPECT_EQ(list.RowCount(), 1u);
  list.PressCellButton(0, 0);
  EXPECT_THAT(platform.list_chooser.shown, IsEmpty());
}

TEST_F(BaselListInAGrid, StoresATextUnlessItsColumnIsOnlyRead) {
  TurnAllOn();
  list.AddRow();
  EXPECT_TRUE(list.SetCellText(0, 0, u"MEDVILNE"));
  EXPECT_EQ(list.CellText(0, 0), u"MEDVILNE");
  EXPECT_FALSE(list.SetCellText(0, 1, u"!"));
  EXPECT_EQ(list.CellText(0, 1), u"?");
}

TEST_F(BaselListInAGrid, ShowsItselfAnewAfterEachChange) {
  TurnAllOn();
  list.AppendRow();
  list.AppendRow();
  EXPECT_EQ(grid.refreshes, 2);
  EXPECT_EQ(grid.current, 1u);
  list.SetCellText(0, 0, u"MEDVILNE");
  EXPECT_EQ(grid.refreshes, 3);
  EXPECT_EQ(grid.current, 0u);
  list.PressCellButton(1, 2);
  EXPECT_EQ(pressed, u"Other");
  EXPECT_EQ(grid.refreshes, 4);
  EXPECT_EQ(grid.current, 1u);
  list.DeleteRow(1);
  EXPECT_EQ(grid.refreshes, 5);
  EXPECT_EQ(grid.current, 0u);
}

TEST_F(BaselListInAGrid, OffersCodesAndNamesUnderTheColumnsCaption) {
  TurnAllOn();
  list.AddRow();
  list.PressCellButton(0, 0);
  ASSERT_THAT(platform.list_chooser.shown, SizeIs(1));
  EXPECT_EQ(platform.list_chooser.shown[0].title, u"Knyga");
  EXPECT_THAT(platform.list_chooser.shown[0].captions, ElementsAre(u"Kodas", u"Pavadinimas"));
}

TEST_F(BaselListInAGrid, NeedsATable) {
  EXPECT_EQ(RaisedBy([&] { list.Init(grid, {}); }), kObjectNotSet);
}

// --- Without a grid

TEST(BaselList, GivesANewRowItsFieldsStartingValues) {
  BaselList list;
  list.AppendField(u"A", u"");
  list.AppendField(u"B", 0);
  list.AddRow();
  EXPECT_EQ(list.Get(u"A"), Value(u""));
  EXPECT_EQ(list.Get(u"b"), Value(0));
  list.Set(u"B", 7);
  list.Clear(u"B");
  EXPECT_EQ(list.Get(u"B"), Value(0));
}

TEST(BaselList, ReadsRowsOfNoTable) {
  BaselList list;
  list.SetCondition(u"Code = 'F1'");
  EXPECT_EQ(RaisedBy([&] { list.Fill(); }), kUnsupportedAction);
}

TEST(BaselList, GoesToTheLastRowWhenTheOneAtTheEndIsDeleted) {
  BaselList list;
  list.AddRow();
  list.AddRow();
  list.DeleteCurrentRow();
  EXPECT_EQ(list.CurrentRow(), 0u);
  list.DeleteCurrentRow();
  EXPECT_EQ(list.CurrentRow(), std::nullopt);
}

TEST(BaselList, KnowsNoFieldAndNoRowThatIsNotThere) {
  BaselList list;
  list.AppendField(u"A", u"");
  EXPECT_EQ(RaisedBy([&] { list.Get(u"A"); }), kSubscriptOutOfRange);
  EXPECT_EQ(RaisedBy([&] { list.MoveTo(0); }), kSubscriptOutOfRange);
  EXPECT_EQ(RaisedBy([&] { list.DeleteCurrentRow(); }), kSubscriptOutOfRange);
  list.AddRow();
  EXPECT_EQ(RaisedBy([&] { list.Get(u"B"); }), kSubscriptOutOfRange);
}

}  // namespace
}  // namespace qva
