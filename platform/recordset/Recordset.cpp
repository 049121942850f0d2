#include "platform/recordset/Recordset.h"

#include "platform/recordset/Field.h"
#include "platform/recordset/Fields.h"
#include "platform/recordset/RecordsetError.h"

namespace qva::recordset {
namespace {

bool IsGiven(const Value& argument) {
  return !argument.Is(Value::Type::Missing);
}

/// No source, no connection: left out, Empty, the empty text or Nothing.
bool IsNone(const Value& argument) {
  return !IsGiven(argument) || argument.Is(Value::Type::Empty) || argument == Value(u"") ||
         argument.IsNothing();
}

/// The elements of an array of one dimension, or the one value that stands for it.
std::vector<Value> ListOf(const Value& values) {
  if (!values.Is(Value::Type::Array)) return {values};
  if (values.AsArray().dimensions.size() != 1) throw Refusal(ado::adErrInvalidArgument);
  return values.AsArray().elements;
}

}  // namespace

ClassBuilder Recordset::Describe() {
  return ClassBuilder(u"Recordset", "Records in memory")
      .Get<&Recordset::Fields>(u"Fields")
      .Put<&Recordset::SetField>(u"Fields", {{u"Index"}})
      .Default(u"Fields")
      .Get<&Recordset::BeginningOfFile>(u"BOF")
      .Get<&Recordset::EndOfFile>(u"EOF")
      .Get<&Recordset::RecordCount>(u"RecordCount")
      .Get<&Recordset::State>(u"State")
      .Get<&Recordset::EditMode>(u"EditMode")
      .Method<&Recordset::Open>(u"Open",
                                {Optional(u"Source"), Optional(u"ActiveConnection"), Optional(u"CursorType"),
                                 Optional(u"LockType"), Optional(u"Options")})
      .Method<&Recordset::Close>(u"Close")
      .Method<&Recordset::AddNew>(u"AddNew", {Optional(u"FieldList"), Optional(u"Values")})
      .Method<&Recordset::Update>(u"Update", {Optional(u"Fields"), Optional(u"Values")})
      .Method<&Recordset::CancelUpdate>(u"CancelUpdate")
      .Method<&Recordset::Delete>(u"Delete", {Optional(u"AffectRecords", std::int32_t{ado::adAffectCurrent})})
      .Method<&Recordset::MoveFirst>(u"MoveFirst")
      .Method<&Recordset::MoveLast>(u"MoveLast")
      .Method<&Recordset::MoveNext>(u"MoveNext")
      .Method<&Recordset::MovePrevious>(u"MovePrevious")
      .Method<&Recordset::Clone>(u"Clone", {Optional(u"LockType")})
      .Method<&Recordset::GetRows>(u"GetRows", {Optional(u"Rows", std::int32_t{ado::adGetRowsRest})});
}

std::size_t Recordset::FindField(const Value& index) const {
  if (index.Is(Value::Type::Text)) {
    if (const auto field = table_->FindField(index.As<std::u16string>())) return *field;
  } else {
    const std::int32_t number = index.ToInt32();
    if (number >= 0 && static_cast<std::size_t>(number) < table_->fields.size()) {
      return static_cast<std::size_t>(number);
    }
  }
  throw Refusal(ado::adErrItemNotFound, kFieldsSource);
}

Value Recordset::FieldValue(std::size_t field) const {
  RequireOpen();
  return edit_mode_ == ado::adEditNone ? Stored()[field] : edited_[field];
}

void Recordset::SetFieldValue(std::size_t field, const Value& value) {
  RequireOpen();
  if (edit_mode_ == ado::adEditNone) Stored();
  Value converted = table_->fields[field].Converted(value);
  if (edit_mode_ == ado::adEditNone) {
    edited_ = Stored();
    edit_mode_ = ado::adEditInProgress;
  }
  edited_[field] = std::move(converted);
}

ObjectPtr Recordset::Fields() {
  return MakeRef<recordset::Fields>(Ref<Recordset>(this));
}

void Recordset::SetField(const Value& index, const Value& value) {
  SetFieldValue(FindField(index), value);
}

bool Recordset::BeginningOfFile() const {
  RequireOpen();
  if (edit_mode_ == ado::adEditAdd || position_.place == Position::Place::AtRecord) return false;
  return position_.place == Position::Place::Front || table_->Count() == 0;
}

bool Recordset::EndOfFile() const {
  RequireOpen();
  if (edit_mode_ == ado::adEditAdd || position_.place == Position::Place::AtRecord) return false;
  return position_.place == Position::Place::End || table_->Count() == 0;
}

std::int32_t Recordset::RecordCount() const {
  RequireOpen();
  return static_cast<std::int32_t>(table_->Count());
}

std::int32_t Recordset::EditMode() const {
  RequireOpen();
  return edit_mode_;
}

void Recordset::Open(const Value& source, const Value& connection, const Value&, const Value&, const Value&) {
  if (is_open_) throw Refusal(ado::adErrObjectOpen);
  if (!IsNone(source) || !IsNone(connection) || table_->fields.empty()) {
    throw Refusal(ado::adErrInvalidConnection);
  }
  is_open_ = true;
}

void Recordset::Close() {
  RequireOpen();
  if (edit_mode_ != ado::adEditNone) throw Refusal(ado::adErrIllegalOperation);
  table_ = std::make_shared<RecordTable>();
  position_ = {};
  is_open_ = false;
}

void Recordset::AddNew(const Value& fields, const Value& values) {
  RequireOpen();
  Update(Missing(), Missing());
  if (IsGiven(fields) || IsGiven(values)) {
    MoveTo(table_->Append(WithValues(table_->NewRecord(), fields, values)), Position::Place::End);
    return;
  }
  edited_ = table_->NewRecord();
  edit_mode_ = ado::adEditAdd;
}

void Recordset::Update(const Value& fields, const Value& values) {
  RequireOpen();
  if (IsGiven(fields) || IsGiven(values)) {
    Record record = WithValues(edit_mode_ == ado::adEditNone ? Stored() : edited_, fields, values);
    edited_ = std::move(record);
    if (edit_mode_ == ado::adEditNone) edit_mode_ = ado::adEditInProgress;
  }
  if (edit_mode_ == ado::adEditAdd) {
    MoveTo(table_->Append(std::move(edited_)), Position::Place::End);
  } else if (edit_mode_ == ado::adEditInProgress) {
    Stored();  // a clone may have deleted it meanwhile
    table_->Replace(position_.index, std::move(edited_));
  }
  edit_mode_ = ado::adEditNone;
}

void Recordset::CancelUpdate() {
  RequireOpen();
  edit_mode_ = ado::adEditNone;
}

void Recordset::Delete(std::int32_t affected) {
  RequireOpen();
  if (affected != ado::adAffectCurrent) throw Refusal(ado::adErrInvalidArgument);
  if (edit_mode_ == ado::adEditAdd) return CancelUpdate();
  Stored();
  table_->Delete(position_.index);
  edit_mode_ = ado::adEditNone;
}

void Recordset::MoveFirst() {
  Update(Missing(), Missing());
  if (table_->Count() == 0) throw Refusal(ado::adErrNoCurrentRecord);
  MoveTo(table_->NextFrom(0), Position::Place::End);
}

void Recordset::MoveLast() {
  Update(Missing(), Missing());
  if (table_->Count() == 0) throw Refusal(ado::adErrNoCurrentRecord);
  MoveTo(table_->LastBefore(table_->End()), Position::Place::Front);
}

void Recordset::MoveNext() {
  Update(Missing(), Missing());
  if (EndOfFile()) throw Refusal(ado::adErrNoCurrentRecord);
  const bool is_at_record = position_.place == Position::Place::AtRecord;
  MoveTo(table_->NextFrom(is_at_record ? position_.index + 1 : 0), Position::Place::End);
}

void Recordset::MovePrevious() {
  Update(Missing(), Missing());
  if (BeginningOfFile()) throw Refusal(ado::adErrNoCurrentRecord);
  const bool is_at_record = position_.place == Position::Place::AtRecord;
  MoveTo(table_->LastBefore(is_at_record ? position_.index : table_->End()), Position::Place::Front);
}

ObjectPtr Recordset::Clone(const Value&) {
  RequireOpen();
  auto clone = MakeRef<Recordset>();
  clone->table_ = table_;
  clone->is_open_ = true;
  clone->MoveTo(table_->NextFrom(0), Position::Place::End);
  return clone;
}

Value Recordset::GetRows(std::int32_t rows) {
  Update(Missing(), Missing());
  if (rows != ado::adGetRowsRest && rows < 1) throw Refusal(ado::adErrInvalidArgument);
  Stored();
  std::vector<std::size_t> indexes;
  std::optional<std::size_t> next = position_.index;
  while (next && (rows == ado::adGetRowsRest || indexes.size() < static_cast<std::size_t>(rows))) {
    indexes.push_back(*next);
    next = table_->NextFrom(*next + 1);
  }
  const std::size_t field_count = table_->fields.size();
  std::vector<Value> elements;
  elements.reserve(field_count * indexes.size());
  for (std::size_t field = 0; field < field_count; ++field) {
    for (const std::size_t index : indexes) elements.push_back(table_->At(index)[field]);
  }
  MoveTo(next, Position::Place::End);
  return Array{{{0, static_cast<std::int32_t>(field_count)}, {0, static_cast<std::int32_t>(indexes.size())}},
               std::move(elements)};
}

void Recordset::RequireOpen() const {
  if (!is_open_) throw Refusal(ado::adErrObjectClosed);
}

const Record& Recordset::Stored() const {
  if (position_.place != Position::Place::AtRecord || !table_->IsLive(position_.index)) {
    throw Refusal(ado::adErrNoCurrentRecord);
  }
  return table_->At(position_.index);
}

void Recordset::MoveTo(std::optional<std::size_t> index, Position::Place otherwise) {
  position_ = index ? Position{Position::Place::AtRecord, *index} : Position{otherwise, 0};
}

Record Recordset::WithValues(Record record, const Value& fields, const Value& values) const {
  const std::vector<Value> indexes = ListOf(fields);
  const std::vector<Value> contents = ListOf(values);
  if (!IsGiven(fields) || !IsGiven(values) || indexes.size() != contents.size()) {
    throw Refusal(ado::adErrInvalidArgument);
  }
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    const std::size_t field = FindField(indexes[i]);
    record[field] = table_->fields[field].Converted(contents[i]);
  }
  return record;
}

}  // namespace qva::recordset
