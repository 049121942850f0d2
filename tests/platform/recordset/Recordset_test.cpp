#include "platform/recordset/Recordset.h"

#include "platform/ado.h"
#include "platform/recordset/RecordsetFactory.h"
#include "tests/platform/core_test.h"

namespace qva::recordset {
namespace {

using namespace ado;
using testing::ElementsAre;

class RecordsetTest : public CoreTest {
 protected:
  /// An open recordset of the fields Code (text of 5), Count (whole number) and Amount (nullable currency).
  static ado::Recordset NewOpen() {
    const ado::Recordset recordset(NewRecordset());
    recordset.Fields().Append(u"Code", adVarChar, 5, adFldUnspecified);
    recordset.Fields().Append(u"Count", adInteger, 0, adFldUnspecified);
    recordset.Fields().Append(u"Amount", adCurrency, 0, adFldIsNullable);
    recordset.Open();
    return recordset;
  }
  static void Add(const ado::Recordset& recordset, std::u16string_view code, std::int32_t count = 0) {
    recordset.AddNew(Array::Of({u"Code", u"Count"}), Array::Of({code, count}));
  }
  /// Records with these codes; the last one is current.
  static ado::Recordset Of(std::initializer_list<std::u16string_view> codes) {
    const ado::Recordset recordset = NewOpen();
    for (const std::u16string_view code : codes) Add(recordset, code);
    return recordset;
  }
  static Value At(const ado::Recordset& recordset, const Value& field) {
    return recordset.Fields().Item(field).Value();
  }
  static void Set(const ado::Recordset& recordset, const Value& field, const Value& value) {
    recordset.Fields().Item(field).SetValue(value);
  }
  static std::u16string Code(const ado::Recordset& recordset) { return At(recordset, u"Code").ToText(); }
  static Value Do(const ado::Recordset& recordset, std::u16string_view member, Arguments arguments = {}) {
    return Call(recordset.object(), member, std::move(arguments));
  }
  static bool BOF_(const ado::Recordset& recordset) { return Get(recordset.object(), u"BOF").ToBoolean(); }
  /// The codes of all records, read from the first to the last.
  static std::vector<std::u16string> Codes(const ado::Recordset& recordset) {
    std::vector<std::u16string> codes;
    if (recordset.RecordCount() == 0) return codes;
    for (recordset.MoveFirst(); !recordset.EndOfFile(); recordset.MoveNext())
      codes.push_back(Code(recordset));
    return codes;
  }
};

TEST_F(RecordsetTest, IsClosedUntilItIsOpenedWithItsOwnFields) {
  const ado::Recordset recordset(NewRecordset());
  EXPECT_EQ(Get(recordset.object(), u"State"), Value(0));
  EXPECT_EQ(RaisedBy([&] { recordset.Open(); }), adErrInvalidConnection) << "it has no fields";
  recordset.Fields().Append(u"Code", adVarChar, 5, adFldUnspecified);
  EXPECT_EQ(RaisedBy([&] { Do(recordset, u"Open", {u"SELECT 1"}); }), adErrInvalidConnection);
  EXPECT_EQ(RaisedBy([&] { Do(recordset, u"Open", {Missing(), u"Provider=X"}); }), adErrInvalidConnection);
  EXPECT_EQ(Get(recordset.object(), u"State"), Value(0));
  recordset.Open();
  EXPECT_EQ(Get(recordset.object(), u"State"), Value(1));
  EXPECT_TRUE(recordset.EndOfFile());
  EXPECT_TRUE(BOF_(recordset));
  EXPECT_EQ(recordset.RecordCount(), 0);
  EXPECT_EQ(RaisedBy([&] { recordset.Open(); }), adErrObjectOpen);
}

TEST_F(RecordsetTest, OpensWithoutArgumentsOrWithNothing) {
  const ado::Recordset recordset(NewRecordset());
  recordset.Fields().Append(u"Code", adVarChar, 5, adFldUnspecified);
  Do(recordset, u"Open");
  Do(recordset, u"Close");
  recordset.Fields().Append(u"Code", adVarChar, 5, adFldUnspecified);
  Do(recordset, u"Open", {u"", ObjectPtr()});
  EXPECT_EQ(Get(recordset.object(), u"State"), Value(1));
}

TEST_F(RecordsetTest, RefusesEverythingButFieldsWhileItIsClosed) {
  const ado::Recordset recordset(NewRecordset());
  recordset.Fields().Append(u"Code", adVarChar, 5, adFldUnspecified);
  for (const char16_t* member :
       {u"BOF", u"EOF", u"RecordCount", u"EditMode", u"Close", u"AddNew", u"Update", u"CancelUpdate",
        u"Delete", u"MoveFirst", u"MoveLast", u"MoveNext", u"MovePrevious", u"Clone", u"GetRows"}) {
    EXPECT_EQ(RaisedBy([&] { Do(recordset, member); }), adErrObjectClosed) << ToUtf8(member);
  }
  EXPECT_EQ(RaisedBy([&] { At(recordset, 0); }), adErrObjectClosed);
  EXPECT_EQ(RaisedBy([&] { Set(recordset, 0, u"a"); }), adErrObjectClosed);
}

TEST_F(RecordsetTest, LosesFieldsAndRecordsWhenItIsClosed) {
  const ado::Recordset recordset = Of({u"a"});
  const ado::Field field = recordset.Fields().Item(0);
  Do(recordset, u"Close");
  EXPECT_EQ(recordset.Fields().Count(), 0);
  EXPECT_EQ(field.Name(), u"Code");
  EXPECT_EQ(RaisedBy([&] { field.Value(); }), adErrObjectClosed);
  recordset.Fields().Append(u"Other", adInteger, 0, adFldUnspecified);
  recordset.Open();
  EXPECT_EQ(recordset.RecordCount(), 0);
  Do(recordset, u"AddNew");
  EXPECT_EQ(RaisedBy([&] { field.SetValue(u"x"); }), adErrObjectClosed) << "a field of before";
}

TEST_F(RecordsetTest, AddsARecordFieldByField) {
  const ado::Recordset recordset = NewOpen();
  Do(recordset, u"AddNew");
  EXPECT_EQ(Get(recordset.object(), u"EditMode"), Value(std::int32_t{adEditAdd}));
  EXPECT_FALSE(recordset.EndOfFile());
  EXPECT_FALSE(BOF_(recordset));
  Set(recordset, u"CODE", u"a");
  Set(recordset, 1, u"12");
  EXPECT_EQ(At(recordset, u"Count"), Value(12)) << "visible before it is stored";
  EXPECT_EQ(recordset.RecordCount(), 0);
  Do(recordset, u"Update");
  EXPECT_EQ(recordset.RecordCount(), 1);
  EXPECT_EQ(Get(recordset.object(), u"EditMode"), Value(std::int32_t{adEditNone}));
  EXPECT_EQ(Code(recordset), u"a") << "it is current";
  Do(recordset, u"Update");
  EXPECT_EQ(recordset.RecordCount(), 1) << "nothing was left to store";
}

TEST_F(RecordsetTest, StoresARecordAtOnceWithFieldsAndValues) {
  const ado::Recordset recordset = NewOpen();
  recordset.AddNew(Array::Of({u"Code", 2}), Array::Of({u"a", 1.5}));
  recordset.AddNew(u"code", u"b");
  recordset.AddNew(Array::Of({1}, 5), Array::Of({7}, 1));
  EXPECT_EQ(Get(recordset.object(), u"EditMode"), Value(std::int32_t{adEditNone}));
  EXPECT_EQ(recordset.RecordCount(), 3);
  EXPECT_EQ(At(recordset, u"Count"), Value(7)) << "the last one is current";
  recordset.MoveFirst();
  EXPECT_EQ(At(recordset, u"Amount"), Value(Currency{15000}));
}

TEST_F(RecordsetTest, StoresNothingOfARecordWhoseValuesAreRefused) {
  const ado::Recordset recordset = Of({u"a"});
  const Value fields = Array::Of({u"Code", u"Count"});
  EXPECT_EQ(RaisedBy([&] { recordset.AddNew(fields, Array::Of({u"b", u"x"})); }), kTypeMismatch);
  EXPECT_EQ(RaisedBy([&] { recordset.AddNew(fields, Array::Of({u"b"})); }), adErrInvalidArgument);
  EXPECT_EQ(RaisedBy([&] { recordset.AddNew(fields, Missing()); }), adErrInvalidArgument);
  EXPECT_EQ(RaisedBy([&] { recordset.AddNew(Missing(), fields); }), adErrInvalidArgument);
  EXPECT_EQ(RaisedBy([&] { recordset.AddNew(Array::Block(1, 1, {u"Code"}), u"b"); }), adErrInvalidArgument);
  EXPECT_EQ(RaisedBy([&] { recordset.AddNew(u"None", u"b"); }), adErrItemNotFound);
  EXPECT_EQ(recordset.RecordCount(), 1);
  EXPECT_EQ(Code(recordset), u"a");
}

TEST_F(RecordsetTest, StoresWhatIsBeingChangedBeforeItMoves) {
  const ado::Recordset recordset = Of({u"a", u"b"});
  Set(recordset, u"Count", 5);
  EXPECT_EQ(Get(recordset.object(), u"EditMode"), Value(std::int32_t{adEditInProgress}));
  recordset.MoveFirst();
  Do(recordset, u"AddNew");
  Set(recordset, u"Code", u"c");
  Do(recordset, u"AddNew");
  Set(recordset, u"Code", u"d");
  EXPECT_THAT(Codes(recordset), ElementsAre(u"a", u"b", u"c", u"d"));
  Do(recordset, u"MoveFirst");
  Do(recordset, u"MoveNext");
  EXPECT_EQ(At(recordset, u"Count"), Value(5));
}

TEST_F(RecordsetTest, UpdatesWithFieldsAndValues) {
  const ado::Recordset recordset = Of({u"a"});
  Do(recordset, u"Update", {Array::Of({u"Code", u"Count"}), Array::Of({u"b", 3})});
  EXPECT_EQ(Code(recordset), u"b");
  EXPECT_EQ(At(recordset, u"Count"), Value(3));
  EXPECT_EQ(RaisedBy([&] { Do(recordset, u"Update", {u"Code", u"too long"}); }), adErrMultipleStep);
  EXPECT_EQ(Get(recordset.object(), u"EditMode"), Value(std::int32_t{adEditNone}));
  Do(recordset, u"AddNew");
  Do(recordset, u"Update", {u"Code", u"c"});
  EXPECT_THAT(Codes(recordset), ElementsAre(u"b", u"c"));
}

TEST_F(RecordsetTest, ForgetsWhatWasChanged) {
  const ado::Recordset recordset = Of({u"a", u"b"});
  recordset.MoveFirst();
  Set(recordset, u"Code", u"x");
  Do(recordset, u"CancelUpdate");
  EXPECT_EQ(Code(recordset), u"a");
  Do(recordset, u"AddNew");
  Set(recordset, u"Code", u"x");
  Do(recordset, u"CancelUpdate");
  EXPECT_EQ(Code(recordset), u"a") << "the record before it";
  Do(recordset, u"AddNew");
  recordset.Delete();
  EXPECT_THAT(Codes(recordset), ElementsAre(u"a", u"b"));
}

TEST_F(RecordsetTest, IsNotClosedWhileARecordIsBeingChanged) {
  const ado::Recordset recordset = Of({u"a"});
  Set(recordset, u"Code", u"x");
  EXPECT_EQ(RaisedBy([&] { Do(recordset, u"Close"); }), adErrIllegalOperation);
  Do(recordset, u"CancelUpdate");
  Do(recordset, u"Close");
  EXPECT_EQ(Get(recordset.object(), u"State"), Value(0));
}

TEST_F(RecordsetTest, MovesBetweenItsEnds) {
  const ado::Recordset recordset = Of({u"a", u"b"});
  Do(recordset, u"MoveNext");
  EXPECT_TRUE(recordset.EndOfFile());
  EXPECT_FALSE(BOF_(recordset));
  EXPECT_EQ(RaisedBy([&] { recordset.MoveNext(); }), adErrNoCurrentRecord);
  EXPECT_EQ(RaisedBy([&] { Code(recordset); }), adErrNoCurrentRecord);
  EXPECT_EQ(RaisedBy([&] { Set(recordset, 0, u"x"); }), adErrNoCurrentRecord);
  EXPECT_EQ(RaisedBy([&] { recordset.Delete(); }), adErrNoCurrentRecord);
  EXPECT_EQ(RaisedBy([&] { recordset.GetRows(); }), adErrNoCurrentRecord);
  Do(recordset, u"MovePrevious");
  EXPECT_EQ(Code(recordset), u"b");
  Do(recordset, u"MovePrevious");
  EXPECT_EQ(Code(recordset), u"a");
  Do(recordset, u"MovePrevious");
  EXPECT_TRUE(BOF_(recordset));
  EXPECT_FALSE(recordset.EndOfFile());
  EXPECT_EQ(RaisedBy([&] { Do(recordset, u"MovePrevious"); }), adErrNoCurrentRecord);
  recordset.MoveNext();
  EXPECT_EQ(Code(recordset), u"a");
  Do(recordset, u"MoveLast");
  EXPECT_EQ(Code(recordset), u"b");
}

TEST_F(RecordsetTest, HasNowhereToMoveWithoutRecords) {
  const ado::Recordset recordset = NewOpen();
  for (const char16_t* member : {u"MoveFirst", u"MoveLast", u"MoveNext", u"MovePrevious", u"GetRows"}) {
    EXPECT_EQ(RaisedBy([&] { Do(recordset, member); }), adErrNoCurrentRecord) << ToUtf8(member);
  }
}

TEST_F(RecordsetTest, MovesOnFromADeletedRecord) {
  const ado::Recordset recordset = Of({u"a", u"b", u"c"});
  recordset.MoveFirst();
  recordset.MoveNext();
  recordset.Delete();
  EXPECT_EQ(recordset.RecordCount(), 2);
  EXPECT_EQ(RaisedBy([&] { Code(recordset); }), adErrNoCurrentRecord);
  EXPECT_EQ(RaisedBy([&] { recordset.Delete(); }), adErrNoCurrentRecord);
  EXPECT_FALSE(recordset.EndOfFile());
  recordset.MoveNext();
  EXPECT_EQ(Code(recordset), u"c");
  Do(recordset, u"MovePrevious");
  EXPECT_EQ(Code(recordset), u"a");
  EXPECT_EQ(RaisedBy([&] { Do(recordset, u"Delete", {2}); }), adErrInvalidArgument)
      << "not all that a filter shows";
}

TEST_F(RecordsetTest, IsEmptiedByDeletingAndMovingOn) {
  const ado::Recordset recordset = Of({u"a", u"b", u"c"});
  recordset.MoveFirst();
  while (!recordset.EndOfFile()) {
    recordset.Delete();
    recordset.MoveNext();
  }
  EXPECT_EQ(recordset.RecordCount(), 0);
  EXPECT_TRUE(BOF_(recordset));
  Add(recordset, u"d");
  EXPECT_THAT(Codes(recordset), ElementsAre(u"d"));
}

TEST_F(RecordsetTest, SharesItsRecordsWithClonesThatHavePositionsOfTheirOwn) {
  const ado::Recordset recordset = Of({u"a", u"b"});
  const ado::Recordset clone = recordset.Clone();
  EXPECT_EQ(Code(clone), u"a") << "a clone begins at the first record";
  EXPECT_EQ(Code(recordset), u"b");
  clone.MoveNext();
  Set(clone, u"Code", u"x");
  EXPECT_EQ(Code(recordset), u"b") << "not stored yet";
  Do(clone, u"Update");
  EXPECT_EQ(Code(recordset), u"x");
  Add(recordset, u"c");
  clone.MoveNext();
  EXPECT_EQ(Code(clone), u"c");
  recordset.MoveFirst();
  recordset.Delete();
  EXPECT_EQ(clone.RecordCount(), 2);
  Do(recordset, u"Close");
  EXPECT_THAT(Codes(clone), ElementsAre(u"x", u"c")) << "a clone outlives its original";
  EXPECT_EQ(clone.Fields().Count(), 3);
}

TEST_F(RecordsetTest, ClonesStandOnRecordsThatAnotherDeletes) {
  const ado::Recordset recordset = Of({u"a", u"b", u"c"});
  const ado::Recordset clone = recordset.Clone();
  clone.MoveNext();
  const ado::Recordset other = clone.Clone();
  Set(other, u"Code", u"x");
  for (recordset.MoveFirst(); Code(recordset) != u"c"; recordset.MoveNext()) recordset.Delete();
  EXPECT_EQ(RaisedBy([&] { Code(clone); }), adErrNoCurrentRecord);
  clone.MoveNext();
  EXPECT_EQ(Code(clone), u"c");
  EXPECT_EQ(RaisedBy([&] { Do(other, u"Update"); }), adErrNoCurrentRecord);
  Do(other, u"CancelUpdate");
  other.MoveNext();
  EXPECT_EQ(Code(other), u"c");
  EXPECT_TRUE(NewOpen().Clone().EndOfFile());
}

TEST_F(RecordsetTest, GivesTheRestAsFieldsByRecords) {
  const ado::Recordset recordset = NewOpen();
  Add(recordset, u"a", 1);
  Add(recordset, u"b", 2);
  Add(recordset, u"c", 3);
  recordset.MoveFirst();
  recordset.MoveNext();
  const Value rows = recordset.GetRows();
  ASSERT_EQ(rows.ToArray().dimensions.size(), 2u);
  EXPECT_EQ(rows.ToArray().dimensions[0].count, 3);
  EXPECT_EQ(rows.ToArray().dimensions[1].count, 2);
  EXPECT_EQ(rows.ToArray().dimensions[0].lower, 0);
  EXPECT_EQ(rows.ToArray().dimensions[1].lower, 0);
  EXPECT_EQ(rows.ToArray().elements, (std::vector<Value>{u"b", u"c", 2, 3, Null(), Null()}));
  EXPECT_TRUE(recordset.EndOfFile());
}

TEST_F(RecordsetTest, GivesAsManyRecordsAsAskedForAndThereAre) {
  const ado::Recordset recordset = Of({u"a", u"b", u"c"});
  recordset.MoveFirst();
  EXPECT_EQ(Do(recordset, u"GetRows", {2}).ToArray().dimensions[1].count, 2);
  EXPECT_EQ(Code(recordset), u"c") << "the next one is current";
  EXPECT_EQ(Do(recordset, u"GetRows", {2}).ToArray().dimensions[1].count, 1);
  EXPECT_TRUE(recordset.EndOfFile());
  recordset.MoveFirst();
  EXPECT_EQ(RaisedBy([&] { Do(recordset, u"GetRows", {0}); }), adErrInvalidArgument);
  EXPECT_EQ(RaisedBy([&] { Do(recordset, u"GetRows", {-2}); }), adErrInvalidArgument);
  EXPECT_EQ(Code(recordset), u"a");
}

TEST_F(RecordsetTest, IsReadAndWrittenTheShortWay) {
  const ado::Recordset recordset = Of({u"a"});
  EXPECT_EQ(Value(GetObject(recordset.object(), u"", {u"Code"})).ToText(), u"a");
  EXPECT_EQ(Value(GetObject(recordset.object(), u"Fields", {0})).ToText(), u"a");
  Arguments by_fields{u"Count", 4};
  recordset.object()->Invoke(Access::Put, u"Fields", by_fields);
  EXPECT_EQ(At(recordset, u"Count"), Value(4));
  Arguments by_default{0, u"b"};
  recordset.object()->Invoke(Access::Put, u"", by_default);
  EXPECT_EQ(Code(recordset), u"b");
  Arguments by_item{u"code", u"c"};
  recordset.Fields().object()->Invoke(Access::Put, u"Item", by_item);
  EXPECT_EQ(Code(recordset), u"c");
}

TEST_F(RecordsetTest, TellsErrorsInADOsWords) {
  const ado::Recordset recordset = NewOpen();
  const AutomationError error = ErrorOf([&] { recordset.MoveNext(); }).value();
  EXPECT_EQ(error.source(), u"ADODB.Recordset");
  EXPECT_EQ(error.description(),
            u"Either BOF or EOF is True, or the current record has been deleted. Requested operation "
            u"requires a current record.");
}

TEST_F(RecordsetTest, LooksAtEachOfTenThousandRecordsAFewTimes) {
  const auto looked_at = [](int count) {
    const ado::Recordset recordset(NewRecordset());
    for (const char16_t* name : {u"a", u"b", u"c", u"d", u"e", u"f", u"g"}) {
      recordset.Fields().Append(name, adInteger, 0, adFldUnspecified);
    }
    recordset.Open();
    const Value fields = Array::Of({0, 1, 2, 3, 4, 5, 6});
    for (int i = 0; i < count; ++i) recordset.AddNew(fields, Array::Of({i, i, i, i, i, i, i}));
    recordset.MoveFirst();
    EXPECT_EQ(recordset.Clone().GetRows().ToArray().elements.size(), static_cast<std::size_t>(count) * 7);
    for (; !recordset.EndOfFile(); recordset.MoveNext()) At(recordset, u"g");
    recordset.MoveFirst();
    while (recordset.RecordCount() > 0) {
      recordset.Delete();
      if (recordset.RecordCount() > 0) recordset.MoveFirst();
    }
    return dynamic_cast<Recordset&>(*recordset.object()).table()->looked_at();
  };
  EXPECT_GT(looked_at(1'000), 1'000u);
  EXPECT_LT(looked_at(10'000), 10'000u * 10) << "not at all the others for each";
}

}  // namespace
}  // namespace qva::recordset
