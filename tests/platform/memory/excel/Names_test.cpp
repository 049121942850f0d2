#include "platform/memory/excel/Names.h"

#include <gtest/gtest.h>

#include "platform/excel.h"
#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

class NamesTest : public ExcelTest {
 protected:
  ObjectPtr Add(std::u16string_view name, const Value& refers_to) const {
    return Call(names, u"Add", {name, refers_to}).ToObject();
  }

  ObjectPtr names = GetObject(workbook, u"Names");
};

TEST_F(NamesTest, AreSortedAndFoundByPositionOrTextInAnyLetterCase) {
  Add(u"Metai", u"=Sheet1!$B$1");
  Add(u"Diena", u"=Sheet1!$B$2");
  EXPECT_EQ(Get(names, u"Count"), Value(2));
  EXPECT_EQ(Text(GetObject(names, u"Item", {1}), u"Name"), u"Diena");
  EXPECT_EQ(Text(GetObject(names, u"Item", {u"METAI"}), u"Name"), u"Metai");
  EXPECT_TRUE(GetObject(workbook, u"Names", {u"metai"}) == GetObject(names, u"Item", {2}));
  for (const Value& index : {Value(0), Value(3), Value(u"Nėra"), Value(u"Sheet1!Metai")}) {
    EXPECT_EQ(RaisedBy([&] { Get(names, u"Item", {index}); }), 1004);
  }
}

TEST_F(NamesTest, ReferToCells) {
  const ObjectPtr name = Add(u"Metai", u"=Sheet1!$B$1:$B$2");
  EXPECT_EQ(Text(name, u"RefersTo"), u"=Sheet1!$B$1:$B$2");
  EXPECT_EQ(AddressOf(GetObject(name, u"RefersToRange")), u"$B$1:$B$2");
  EXPECT_TRUE(GetObject(GetObject(name, u"RefersToRange"), u"Worksheet") == sheet);
  Put(name, u"RefersTo", u"=Sheet2!$A$1");
  EXPECT_EQ(Text(GetObject(GetObject(name, u"RefersToRange"), u"Worksheet"), u"Name"), u"Sheet2");
  EXPECT_EQ(RaisedBy([&] { Put(name, u"RefersTo", u"=(1"); }), 1004);
  EXPECT_EQ(Text(name, u"RefersTo"), u"=Sheet2!$A$1");
}

TEST_F(NamesTest, ReferToWhatAnObjectOrConstantMeans) {
  EXPECT_EQ(Text(Add(u"a", Range(u"C3")), u"RefersTo"), u"=Sheet1!$C$3");
  EXPECT_EQ(Text(Add(u"b", 5), u"RefersTo"), u"=5");
  EXPECT_EQ(Text(Add(u"d", u"tekstas \"x\""), u"RefersTo"), u"=\"tekstas \"\"x\"\"\"");
  EXPECT_EQ(Text(Add(u"e", true), u"RefersTo"), u"=TRUE");
  EXPECT_EQ(Evaluate(u"=d"), Value(u"tekstas \"x\""));
  EXPECT_EQ(RaisedBy([&] { Get(GetObject(names, u"Item", {u"b"}), u"RefersToRange"); }), 1004);
}

TEST_F(NamesTest, MayHaveLostTheirCells) {
  for (const char16_t* lost : {u"=#REF!", u"=Sheet1!#REF!", u"=#REF!$A$1", u"=#REF!$A$1:$B$2"}) {
    const ObjectPtr name = Add(u"Metai", lost);
    EXPECT_EQ(Text(name, u"RefersTo"), lost);
    EXPECT_EQ(RaisedBy([&] { Get(name, u"RefersToRange"); }), 1004);
  }
  EXPECT_EQ(RaisedBy([&] { Add(u"Metai", u"=#REF!Metai"); }), 1004);
  EXPECT_EQ(RaisedBy([&] { Add(u"Metai", u"=#N/A$A$1"); }), 1004);
}

TEST_F(NamesTest, AreAddedByArgumentsThatAreNamed) {
  const excel::Workbook book(workbook);
  const excel::DefinedName name = book.Names().Add(u"Metai", u"=Sheet1!$B$1");
  EXPECT_EQ(name.Name(), u"Metai");
  EXPECT_EQ(name.RefersToRange().Address(), u"$B$1");
  Put(sheet, u"Name", u"Mano lapas");
  EXPECT_EQ(RaisedBy([&] { book.Names().Add(u"Kiti", u"=Mano lapas!$B$1"); }), 1004) << "quotes are missing";
  EXPECT_EQ(book.Names().Count(), 1);
}

TEST_F(NamesTest, CloseUpWhenOneIsDeletedOnTheWay) {
  const excel::Names all = excel::Workbook(workbook).Names();
  for (const char16_t* name : {u"a", u"b", u"d", u"e"}) all.Add(name, u"=Sheet1!$B$1");
  std::u16string seen;
  for (std::int32_t i = 1; i <= all.Count();) {
    seen += all.Item(i).Name();
    if (seen.back() == u'b') {
      all.Item(i).Delete();
    } else {
      ++i;
    }
  }
  EXPECT_EQ(seen, u"abde");
  EXPECT_EQ(all.Count(), 3);
}

TEST_F(NamesTest, AreReplacedWithinTheirScope) {
  const ObjectPtr first = Add(u"Metai", 1);
  Add(u"METAI", 2);
  EXPECT_EQ(Get(names, u"Count"), Value(1));
  EXPECT_EQ(Text(first, u"RefersTo"), u"=2");
  EXPECT_EQ(Text(first, u"Name"), u"METAI");
}

TEST_F(NamesTest, MayBelongToASheet) {
  Add(u"Metai", 1);
  const ObjectPtr own = Add(u"Sheet1!Metai", 2);
  EXPECT_EQ(Text(own, u"Name"), u"Sheet1!Metai");
  EXPECT_EQ(Get(names, u"Count"), Value(2));
  EXPECT_EQ(Text(GetObject(names, u"Item", {u"Metai"}), u"RefersTo"), u"=1");
  EXPECT_TRUE(GetObject(names, u"Item", {u"sheet1!metai"}) == own);
  const ObjectPtr sheet_names = GetObject(sheet, u"Names");
  EXPECT_EQ(Get(sheet_names, u"Count"), Value(1));
  EXPECT_TRUE(GetObject(sheet_names, u"Item", {u"Metai"}) == own);
  Put(sheet, u"Name", u"Mano lapas");
  EXPECT_EQ(Text(own, u"Name"), u"'Mano lapas'!Metai");
  EXPECT_TRUE(GetObject(names, u"Item", {u"'Mano lapas'!Metai"}) == own);
  EXPECT_EQ(RaisedBy([&] { Add(u"Nėra!x", 1); }), 1004);
}

TEST_F(NamesTest, RefuseWhatIsNoName) {
  for (const char16_t* text : {u"", u"A1", u"IV65536", u"1x", u"a b", u"a-b", u"R", u"c", u".x"}) {
    EXPECT_EQ(RaisedBy([&] { Add(text, 1); }), 1004) << ToUtf8(text);
  }
  EXPECT_EQ(RaisedBy([&] { Add(u"x", u"=1+"); }), 1004);
  EXPECT_EQ(Get(names, u"Count"), Value(0));
  for (const char16_t* text : {u"_x", u"Ąžuolas", u"a.b", u"x1y", u"\\x", u"IW1", u"nTotalButtons"}) {
    Add(text, 1);
  }
  EXPECT_EQ(Get(names, u"Count"), Value(7));
}

TEST_F(NamesTest, AreHiddenAndShown) {
  const ObjectPtr name = Add(u"Print", u"=Sheet1!$A$1");
  EXPECT_EQ(Get(name, u"Visible"), Value(true));
  Put(name, u"Visible", false);
  EXPECT_EQ(Get(GetObject(names, u"Item", {u"Print"}), u"Visible"), Value(false));
  EXPECT_EQ(Get(Call(names, u"Add", {u"x", 1, false}).ToObject(), u"Visible"), Value(false));
}

TEST_F(NamesTest, AreGoneOnceDeleted) {
  const ObjectPtr name = Add(u"Metai", 1);
  Call(name, u"Delete");
  EXPECT_EQ(Get(names, u"Count"), Value(0));
  EXPECT_EQ(RaisedBy([&] { Get(name, u"RefersTo"); }), kObjectGone);
  EXPECT_EQ(RaisedBy([&] { Call(name, u"Delete"); }), kObjectGone);
  const ObjectPtr own = Add(u"Sheet1!Metai", 2);
  Call(own, u"Delete");
  EXPECT_EQ(Get(names, u"Count"), Value(0));
}

}  // namespace
}  // namespace qva::memory
