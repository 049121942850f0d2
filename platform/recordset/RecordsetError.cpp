#include "platform/recordset/RecordsetError.h"

namespace qva::recordset {
namespace {

std::u16string_view TextOf(ado::ErrorValueEnum number) {
  switch (number) {
    case ado::adErrInvalidArgument:
      return u"Arguments are of the wrong type, are out of acceptable range, or are in conflict with one "
             u"another.";
    case ado::adErrNoCurrentRecord:
      return u"Either BOF or EOF is True, or the current record has been deleted. Requested operation "
             u"requires a current record.";
    case ado::adErrIllegalOperation:
      return u"Operation is not allowed in this context.";
    case ado::adErrItemNotFound:
      return u"Item cannot be found in the collection corresponding to the requested name or ordinal.";
    case ado::adErrObjectInCollection:
      return u"Object is already in collection. Cannot append.";
    case ado::adErrObjectClosed:
      return u"Operation is not allowed when the object is closed.";
    case ado::adErrObjectOpen:
      return u"Operation is not allowed when the object is open.";
    case ado::adErrInvalidConnection:
      return u"The connection cannot be used to perform this operation. It is either closed or invalid in "
             u"this context.";
    case ado::adErrMultipleStep:
      return u"Multiple-step operation generated errors. Check each status value.";
  }
  return {};
}

}  // namespace

AutomationError Refusal(ado::ErrorValueEnum number, std::u16string_view source) {
  return {number, std::u16string(source), std::u16string(TextOf(number))};
}

}  // namespace qva::recordset
