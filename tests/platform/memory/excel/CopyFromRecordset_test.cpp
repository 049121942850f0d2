#include "platform/ado.h"
#include "platform/excel.h"
#include "platform/memory/CallTrace.h"
#include "platform/memory/Interceptor.h"
#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

/// Records of a text, a whole number and a nullable amount, written into cells.
class CopyFromRecordsetTest : public ExcelTest {
 protected:
  CopyFromRecordsetTest() : records(ado::Recordset::Create(platform.object_factory)) {
    records.Fields().Append(u"Code", ado::adVarChar, 10, ado::adFldUnspecified);
    records.Fields().Append(u"Count", ado::adInteger, 0, ado::adFldUnspecified);
    records.Fields().Append(u"Amount", ado::adCurrency, 0, ado::adFldIsNullable);
    records.Open();
  }
  void Add(std::u16string_view code, std::int32_t count, const Value& amount = Null()) const {
    records.AddNew(Array::Of({0, 1, 2}), Array::Of({code, count, amount}));
  }
  std::int32_t CopyTo(std::u16string_view address) const {
    return excel::Range(Range(address)).CopyFromRecordset(records);
  }

  ado::Recordset records;
};

TEST_F(CopyFromRecordsetTest, WritesTheRecordsFromTheCurrentOneOnIntoRows) {
  Add(u"a", 1);
  Add(u"b", 2, 2.5);
  Add(u"d", 3);
  records.MoveFirst();
  records.MoveNext();
  Set(u"D4", u"old");
  EXPECT_EQ(CopyTo(u"B3:Z9"), 2);
  EXPECT_EQ(At(u"B3:D5").ToArray().elements,
            (std::vector<Value>{u"b", 2.0, Currency{25000}, u"d", 3.0, Value(), Value(), Value(), Value()}))
      << "from the first cell on, whatever the size; Null is an empty cell";
  EXPECT_TRUE(records.EndOfFile());
  EXPECT_EQ(CopyTo(u"B3"), 0) << "there are no more";
  EXPECT_EQ(At(u"B3"), Value(u"b"));
}

TEST_F(CopyFromRecordsetTest, WritesNothingOfARecordsetWithoutRecords) {
  Set(u"A1", u"old");
  EXPECT_EQ(CopyTo(u"A1"), 0);
  EXPECT_EQ(At(u"A1"), Value(u"old"));
}

TEST_F(CopyFromRecordsetTest, KeepsTextsAsTheyAre) {
  for (const char16_t* text : {u"007", u"=A1", u"TRUE", u"2024-06-12", u"'x"}) Add(text, 0);
  records.MoveFirst();
  EXPECT_EQ(CopyTo(u"A1"), 5);
  EXPECT_EQ(At(u"A1:A5").ToArray().elements,
            (std::vector<Value>{u"007", u"=A1", u"TRUE", u"2024-06-12", u"'x"}));
}

TEST_F(CopyFromRecordsetTest, LeavesOutWhatDoesNotFitOnTheSheet) {
  for (int i = 0; i < 3; ++i) Add(u"a", i);
  records.MoveFirst();
  EXPECT_EQ(CopyTo(u"IU65535"), 2);
  EXPECT_EQ(At(u"IU65535:IV65536").ToArray().elements, (std::vector<Value>{u"a", 0.0, u"a", 1.0}));
}

TEST_F(CopyFromRecordsetTest, KeepsProtectedCells) {
  Add(u"a", 1);
  Add(u"b", 2);
  Put(Range(u"A1"), u"Locked", false);
  Call(sheet, u"Protect");
  records.MoveFirst();
  EXPECT_EQ(RaisedBy([&] { CopyTo(u"A1"); }), 1004);
  EXPECT_EQ(At(u"A1"), Value());
}

TEST_F(CopyFromRecordsetTest, RefusesWhatIsNoRecordset) {
  EXPECT_EQ(RaisedBy([&] { Call(Range(u"A1"), u"CopyFromRecordset", {5}); }), kTypeMismatch);
  EXPECT_EQ(RaisedBy([&] { Call(Range(u"A1"), u"CopyFromRecordset", {ObjectPtr()}); }), kObjectNotSet);
  EXPECT_EQ(RaisedBy([&] { Call(Range(u"A1"), u"CopyFromRecordset", {sheet}); }), kUnsupportedMember);
  EXPECT_EQ(RaisedBy([&] { CopyTo(u"A1"); }), 0);
  Call(records.object(), u"Close");
  EXPECT_EQ(RaisedBy([&] { CopyTo(u"A1"); }), ado::adErrObjectClosed);
}

TEST_F(CopyFromRecordsetTest, AsksForAllRecordsAtOnce) {
  for (int i = 0; i < 1000; ++i) Add(u"a", i);
  records.MoveFirst();
  CallTrace trace;
  Interceptor interceptor({&trace});
  Call(Range(u"A1"), u"CopyFromRecordset", {interceptor.Wrap(records.object(), u"records")});
  EXPECT_THAT(trace.lines(), testing::SizeIs(2));
  EXPECT_EQ(At(u"B1000"), Value(999.0));
}

}  // namespace
}  // namespace qva::memory
