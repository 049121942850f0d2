#include "platform/calc/CellErrors.h"

#include "platform/calc/UnoObject.h"
#include "platform/excel_constants.h"

namespace qva::calc {
namespace {

struct CellError {
  std::int32_t code;  ///< LibreOffice's
  XlCVError error;
  std::u16string_view text;
};
constexpr CellError kCellErrors[] = {
    {32767, xlErrNA, u"#N/A"},   {532, xlErrDiv0, u"#DIV/0!"}, {519, xlErrValue, u"#VALUE!"},
    {524, xlErrRef, u"#REF!"},   {525, xlErrName, u"#NAME?"},  {503, xlErrNum, u"#NUM!"},
    {521, xlErrNull, u"#NULL!"},
};

}  // namespace

Value WithCellError(const ObjectPtr& range, Value value) {
  if (value != Value(0.0)) return value;
  const ObjectPtr cell = GetObject(GetObject(range, u"CellRange"), u"getCellByPosition", {0, 0});
  const std::int32_t code = Call(cell, u"getError").ToInt32();
  return code == 0 ? value : CellErrorOf(code);
}

Value CellErrorOf(std::int32_t code) {
  for (const CellError& known : kCellErrors) {
    if (known.code == code) return ErrorValue{known.error};
  }
  return ErrorValue{xlErrValue};
}

Value SetCellValue(const ObjectPtr& range, const Arguments& arguments) {
  Arguments changed = arguments;
  Value& value = changed.positional.back();
  if (value.Is(Value::Type::Error)) {
    const std::int32_t error = value.As<ErrorValue>().code;
    for (const CellError& known : kCellErrors) {
      if (known.error == error) value = known.text;
    }
  }
  return Own(range, Access::Put, u"Value", changed);
}

}  // namespace qva::calc
