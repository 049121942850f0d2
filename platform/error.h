// The one exception of the house, automation's own error numbers, and the helper for ignored errors.
#pragma once

#include <cstdint>
#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace qva {

/// The numbers that a macro meets in Err.Number. Those below 1000 are the platform's trappable errors.
enum ErrorNumber : std::int32_t {
  kInvalidProcedureCall = 5,
  kOverflow = 6,
  kOutOfMemory = 7,
  kSubscriptOutOfRange = 9,
  kArrayLocked = 10,
  kTypeMismatch = 13,
  kInternalError = 51,
  kBadFileNameOrNumber = 52,
  kFileNotFound = 53,
  kBadFileMode = 54,
  kFileAlreadyOpen = 55,
  kDeviceError = 57,
  kFileAlreadyExists = 58,
  kDiskFull = 61,
  kInputPastEnd = 62,
  kTooManyFiles = 67,
  kPermissionDenied = 70,
  kOtherDrive = 74,
  kPathFileAccess = 75,
  kPathNotFound = 76,
  kObjectNotSet = 91,
  kInvalidUseOfNull = 94,
  kInvalidPropertyValue = 380,
  kFormAlreadyDisplayed = 400,
  kCannotCreateObject = 429,
  kAutomationFailed = 440,
  kUnsupportedAction = 445,
  kUnsupportedMember = 438,
  kNoNamedArguments = 446,
  kNamedArgumentNotFound = 448,
  kArgumentNotOptional = 449,
  kWrongArgumentCount = 450,
  kKeyIsTaken = 457,
  kApplicationDefined = 1004,  ///< Excel's own number for whatever it refuses
  /// Hexadecimal 80040000 (vbObjectError), the base of automation object errors.
  kObjectErrorBase = -2147221504,
};

/// The library's name, the source of its own errors and the title of its windows.
inline constexpr std::u16string_view kLibraryName = u"QVA_Varnholt";

/// The platform's own text for a trappable error, empty for any other number.
std::u16string StandardDescription(std::int32_t number);

/// A failure on its way to the macro: what Err.Number, Err.Source and Err.Description will be.
class AutomationError : public std::exception {
 public:
  AutomationError(std::int32_t number, std::u16string source, std::u16string description)
      : number_(number), source_(std::move(source)), description_(std::move(description)) {}
  /// An error of the library itself.
  AutomationError(std::int32_t number, std::u16string description);
  /// A trappable error of the library with the platform's own description.
  explicit AutomationError(ErrorNumber number);

  std::int32_t number() const { return number_; }
  const std::u16string& source() const { return source_; }
  const std::u16string& description() const { return description_; }

  /// Whether the call itself was refused, before any code of the member ran: there is no such member, or the
  /// arguments do not fit.
  bool is_of_call() const { return is_of_call_; }
  /// Position (from 0) of the argument that could not be converted, −1 when the error is not about one.
  int argument() const { return argument_; }
  /// Marks an error of the call, which may be about an argument.
  AutomationError& OfCall(int argument = -1) {
    is_of_call_ = true;
    argument_ = argument;
    return *this;
  }
  /// Marks an error that comes out of the code of a member: what it says of a call is about one that the
  /// member made, and means nothing to the member's own caller.
  AutomationError& OfMember() {
    is_of_call_ = false;
    argument_ = -1;
    return *this;
  }

  /// Number and description in UTF-8, for test output and logs.
  const char* what() const noexcept override;

 private:
  std::int32_t number_;
  std::u16string source_;
  std::u16string description_;
  bool is_of_call_ = false;
  int argument_ = -1;
  mutable std::string what_;
};

/// What the exception that is being handled tells a macro. Views, since nothing may need memory then.
struct Caught {
  std::int32_t number = kInternalError;
  std::u16string_view source = kLibraryName;
  std::u16string_view description = u"Internal error";
  const AutomationError* error = nullptr;  ///< null when it is another exception
};

/// Hands it on and returns what `use` makes of it; what that raises passes on. To be called in a catch block.
/// A lack of memory is error 7 (Out of memory), whatever else is no AutomationError is 51 (Internal error).
template <class Use>
auto UseCaught(Use&& use) {
  try {
    throw;
  } catch (const AutomationError& error) {
    return use(Caught{error.number(), error.source(), error.description(), &error});
  } catch (const std::bad_alloc&) {
    return use(Caught{.number = kOutOfMemory, .description = u"Out of memory"});
  } catch (...) {
    return use(Caught{});
  }
}

/// Tries one step and forgets an automation error that it raises: one statement under "resume with the next
/// statement". Wrap each statement that is covered, so that the reader sees which ones are.
/// Returns true when the step went through. Anything but an automation error passes on.
template <class Step>
bool IgnoreErrors(Step&& step) {
  try {
    std::forward<Step>(step)();
    return true;
  } catch (const AutomationError&) {
    return false;
  }
}

/// The same where nothing may be raised at all, as in a destructor: a lack of memory is forgotten, too.
template <class Step>
bool IgnoreFailures(Step&& step) noexcept {
  try {
    std::forward<Step>(step)();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace qva
