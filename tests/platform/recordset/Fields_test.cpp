#include "platform/recordset/Fields.h"

#include "platform/ado.h"
#include "platform/recordset/RecordsetFactory.h"
#include "tests/platform/core_test.h"

namespace qva::recordset {
namespace {

using namespace ado;

class FieldsTest : public CoreTest {
 protected:
  /// An open recordset with the one field "x", on a new record.
  static ado::Recordset OneField(DataTypeEnum type, std::int32_t attributes = adFldIsNullable) {
    const ado::Recordset recordset(NewRecordset());
    Call(recordset.Fields().object(), u"Append", {u"x", std::int32_t{type}, 5, attributes});
    recordset.Open();
    Call(recordset.object(), u"AddNew");
    return recordset;
  }
  /// What a field of the type makes of a value.
  static Value Kept(DataTypeEnum type, const Value& value) {
    const ado::Recordset recordset = OneField(type);
    const ado::Field field = recordset.Fields().Item(0);
    field.SetValue(value);
    Call(recordset.object(), u"Update");
    return field.Value();
  }
  static Value Property(const ado::Recordset& recordset, const Value& field, std::u16string_view name) {
    return Get(recordset.Fields().Item(field).object(), name);
  }
};

TEST_F(FieldsTest, AreDescribed) {
  const ado::Recordset recordset(NewRecordset());
  const ado::Fields fields = recordset.Fields();
  fields.Append(u"Code", adVarChar, 25, adFldUnspecified);
  fields.Append(u"Id", adCurrency, 0, adFldIsNullable);
  Call(fields.object(), u"Append", {u"Count", std::int32_t{adInteger}});
  EXPECT_EQ(fields.Count(), 3);
  EXPECT_EQ(recordset.Fields().Count(), 3) << "also as another object";
  EXPECT_EQ(fields.Item(0).Name(), u"Code");
  EXPECT_EQ(Property(recordset, u"code", u"Type"), Value(200));
  EXPECT_EQ(Property(recordset, u"code", u"DefinedSize"), Value(25));
  EXPECT_EQ(Property(recordset, u"code", u"Attributes"), Value(0));
  EXPECT_EQ(Property(recordset, u"ID", u"DefinedSize"), Value(8));
  EXPECT_EQ(Property(recordset, u"ID", u"Attributes"), Value(64 + 16)) << "and of fixed length";
  EXPECT_EQ(Property(recordset, 2, u"Name"), Value(u"Count"));
}

TEST_F(FieldsTest, AreFoundByNameInAnyLetterCaseOrNumber) {
  const ado::Recordset recordset(NewRecordset());
  recordset.Fields().Append(u"Sąskaita", adVarChar, 25, adFldUnspecified);
  EXPECT_EQ(recordset.Fields().Item(u"sĄSKAITA").Name(), u"Sąskaita");
  EXPECT_EQ(recordset.Fields().Item(std::int16_t{0}).Name(), u"Sąskaita");
  for (const Value& index : {Value(1), Value(-1), Value(u"Nėra"), Value(u""), Value(u"0")}) {
    EXPECT_EQ(RaisedBy([&] { recordset.Fields().Item(index); }), adErrItemNotFound);
  }
}

TEST_F(FieldsTest, AreAppendedWhileTheRecordsetIsClosed) {
  const ado::Recordset recordset = OneField(adInteger);
  EXPECT_EQ(RaisedBy([&] { recordset.Fields().Append(u"y", adInteger, 0, adFldUnspecified); }),
            adErrIllegalOperation);
  EXPECT_EQ(recordset.Fields().Count(), 1);
}

TEST_F(FieldsTest, RefuseWhatIsNoFieldOrThereAlready) {
  const ado::Fields fields = ado::Recordset(NewRecordset()).Fields();
  fields.Append(u"Code", adVarChar, 25, adFldUnspecified);
  EXPECT_EQ(RaisedBy([&] { fields.Append(u"CODE", adInteger, 0, adFldUnspecified); }),
            adErrObjectInCollection);
  EXPECT_EQ(RaisedBy([&] { fields.Append(u"", adInteger, 0, adFldUnspecified); }), adErrInvalidArgument);
  EXPECT_EQ(RaisedBy([&] { fields.Append(u"y", adVarChar, 0, adFldUnspecified); }), adErrInvalidArgument);
  EXPECT_EQ(RaisedBy([&] { Call(fields.object(), u"Append", {u"y", 12}); }), adErrInvalidArgument);
  EXPECT_EQ(fields.Count(), 1);
}

TEST_F(FieldsTest, KeepValuesInTheirOwnTypes) {
  EXPECT_EQ(Kept(adVarChar, 12), Value(u"12"));
  EXPECT_EQ(Kept(adVarWChar, u"ąčęėį"), Value(u"ąčęėį"));
  EXPECT_EQ(Kept(adVarChar, Value()), Value(u""));
  EXPECT_EQ(Kept(adSmallInt, 2.5), Value(std::int16_t{2}));
  EXPECT_EQ(Kept(adInteger, 3.5), Value(4));
  EXPECT_EQ(Kept(adInteger, true), Value(-1));
  EXPECT_EQ(Kept(adInteger, Value()), Value(0));
  EXPECT_EQ(Kept(adDouble, std::int16_t{3}), Value(3.0));
  EXPECT_EQ(Kept(adCurrency, 12), Value(Currency{120000}));
  EXPECT_EQ(Kept(adDate, 45000.0), Value(Date{45000}));
  EXPECT_EQ(Kept(adBoolean, 5), Value(true));
  EXPECT_EQ(Kept(adCurrency, Null()), Value(Null()));
}

TEST_F(FieldsTest, TakeTheValueThatAnObjectStandsFor) {
  const ado::Recordset source = OneField(adCurrency);
  const ObjectPtr field = source.Fields().Item(0).object();
  EXPECT_EQ(Kept(adInteger, field), Value(Null()));
  Put(field, u"Value", 7);
  EXPECT_EQ(Kept(adVarChar, field), Value(u"7"));
  EXPECT_EQ(RaisedBy([&] { Kept(adInteger, ObjectPtr()); }), kObjectNotSet);
}

TEST_F(FieldsTest, RefuseWhatTheyCannotHold) {
  EXPECT_EQ(Kept(adVarChar, u"12345"), Value(u"12345"));
  EXPECT_EQ(RaisedBy([] { Kept(adVarChar, u"123456"); }), adErrMultipleStep) << "longer than the field";
  EXPECT_EQ(RaisedBy([] { Kept(adInteger, 3e9); }), adErrMultipleStep);
  EXPECT_EQ(RaisedBy([] { Kept(adSmallInt, 32768); }), adErrMultipleStep);
  EXPECT_EQ(RaisedBy([] { Kept(adCurrency, 1e30); }), adErrMultipleStep);
  EXPECT_EQ(RaisedBy([] { Kept(adInteger, u"x"); }), kTypeMismatch);
  EXPECT_EQ(RaisedBy([] { Kept(adInteger, Array::Of({1})); }), kTypeMismatch);
  EXPECT_EQ(RaisedBy([] { Kept(adDate, u"x"); }), kTypeMismatch);
}

TEST_F(FieldsTest, KeepTheirValueWhenAnotherIsRefused) {
  const ado::Recordset recordset = OneField(adVarChar);
  const ado::Field field = recordset.Fields().Item(0);
  field.SetValue(u"a");
  Call(recordset.object(), u"Update");
  EXPECT_EQ(RaisedBy([&] { field.SetValue(u"too long"); }), adErrMultipleStep);
  EXPECT_EQ(field.Value(), Value(u"a"));
  EXPECT_EQ(Get(recordset.object(), u"EditMode"), Value(std::int32_t{adEditNone}));
}

TEST_F(FieldsTest, TakeNullOnlyWhereTheirAttributesAllowIt) {
  for (const std::int32_t attributes : {0x20, 0x40, 0x60}) {
    const ado::Recordset recordset = OneField(adInteger, attributes);
    EXPECT_EQ(recordset.Fields().Item(0).Value(), Value(Null())) << "as long as it has no value";
    recordset.Fields().Item(0).SetValue(1);
    recordset.Fields().Item(0).SetValue(Null());
    EXPECT_EQ(recordset.Fields().Item(0).Value(), Value(Null()));
  }
  for (const std::int32_t attributes : {std::int32_t{adFldUnspecified}, 0, 4}) {
    const ado::Recordset recordset = OneField(adInteger, attributes);
    EXPECT_EQ(RaisedBy([&] { recordset.Fields().Item(0).SetValue(Null()); }), adErrMultipleStep);
    Call(recordset.object(), u"Update");
    EXPECT_EQ(recordset.Fields().Item(0).Value(), Value()) << "without a value it stays empty";
  }
}

}  // namespace
}  // namespace qva::recordset
