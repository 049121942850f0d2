#include "platform/error.h"

#include "platform/text.h"

namespace qva {

namespace {

constexpr std::pair<ErrorNumber, std::u16string_view> kDescriptions[] = {
    {kInvalidProcedureCall, u"Invalid procedure call or argument"},
    {kOverflow, u"Overflow"},
    {kOutOfMemory, u"Out of memory"},
    {kSubscriptOutOfRange, u"Subscript out of range"},
    {kArrayLocked, u"This array is fixed or temporarily locked"},
    {kTypeMismatch, u"Type mismatch"},
    {kInternalError, u"Internal error"},
    {kBadFileNameOrNumber, u"Bad file name or number"},
    {kFileNotFound, u"File not found"},
    {kBadFileMode, u"Bad file mode"},
    {kFileAlreadyOpen, u"File already open"},
    {kDeviceError, u"Device I/O error"},
    {kFileAlreadyExists, u"File already exists"},
    {kDiskFull, u"Disk full"},
    {kInputPastEnd, u"Input past end of file"},
    {kTooManyFiles, u"Too many files"},
    {kPermissionDenied, u"Permission denied"},
    {kOtherDrive, u"Can't rename with different drive"},
    {kPathFileAccess, u"Path/File access error"},
    {kPathNotFound, u"Path not found"},
    {kObjectNotSet, u"Object variable or With block variable not set"},
    {kInvalidUseOfNull, u"Invalid use of Null"},
    {kInvalidPropertyValue, u"Invalid property value"},
    {kFormAlreadyDisplayed, u"Form already displayed; can't show modally"},
    {kCannotCreateObject, u"ActiveX component can't create object"},
    {kUnsupportedMember, u"Object doesn't support this property or method"},
    {kAutomationFailed, u"Automation error"},
    {kUnsupportedAction, u"Object doesn't support this action"},
    {kNoNamedArguments, u"Object doesn't support named arguments"},
    {kNamedArgumentNotFound, u"Named argument not found"},
    {kArgumentNotOptional, u"Argument not optional"},
    {kWrongArgumentCount, u"Wrong number of arguments or invalid property assignment"},
    {kKeyIsTaken, u"This key is already associated with an element of this collection"},
    {kApplicationDefined, u"Application-defined or object-defined error"},
};

}  // namespace

std::u16string StandardDescription(std::int32_t number) {
  for (const auto& [known, description] : kDescriptions) {
    if (known == number) return std::u16string(description);
  }
  return {};
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
