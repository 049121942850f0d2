#include "platform/error.h"

#include "platform/text.h"

namespace qva {

std::u16string StandardDescription(std::int32_t number) {
  switch (number) {
    case kInvalidProcedureCall:
      return u"Invalid procedure call or argument";
    case kOverflow:
      return u"Overflow";
    case kOutOfMemory:
      return u"Out of memory";
    case kSubscriptOutOfRange:
      return u"Subscript out of range";
    case kTypeMismatch:
      return u"Type mismatch";
    case kInternalError:
      return u"Internal error";
    case kBadFileNameOrNumber:
      return u"Bad file name or number";
    case kFileNotFound:
      return u"File not found";
    case kBadFileMode:
      return u"Bad file mode";
    case kFileAlreadyOpen:
      return u"File already open";
    case kDeviceError:
      return u"Device I/O error";
    case kFileAlreadyExists:
      return u"File already exists";
    case kDiskFull:
      return u"Disk full";
    case kInputPastEnd:
      return u"Input past end of file";
    case kTooManyFiles:
      return u"Too many files";
    case kPermissionDenied:
      return u"Permission denied";
    case kOtherDrive:
      return u"Can't rename with different drive";
    case kPathFileAccess:
      return u"Path/File access error";
    case kPathNotFound:
      return u"Path not found";
    case kObjectNotSet:
      return u"Object variable or With block variable not set";
    case kInvalidUseOfNull:
      return u"Invalid use of Null";
    case kInvalidPropertyValue:
      return u"Invalid property value";
    case kFormAlreadyDisplayed:
      return u"Form already displayed; can't show modally";
    case kCannotCreateObject:
      return u"ActiveX component can't create object";
    case kUnsupportedMember:
      return u"Object doesn't support this property or method";
    case kAutomationFailed:
      return u"Automation error";
    case kUnsupportedAction:
      return u"Object doesn't support this action";
    case kNamedArgumentNotFound:
      return u"Named argument not found";
    case kArgumentNotOptional:
      return u"Argument not optional";
    case kWrongArgumentCount:
      return u"Wrong number of arguments or invalid property assignment";
    case kApplicationDefined:
      return u"Application-defined or object-defined error";
    default:
      return {};
  }
}

AutomationError::AutomationError(std::int32_t number, std::u16string description)
    : AutomationError(number, std::u16string(kLibraryName), std::move(description)) {
}

AutomationError::AutomationError(ErrorNumber number) : AutomationError(number, StandardDescription(number)) {
}

const char* AutomationError::what() const noexcept {
  try {
    what_ = "error " + std::to_string(number_) + ": " + ToUtf8(description_);
    return what_.c_str();
  } catch (...) {
    return "automation error";
  }
}

}  // namespace qva
