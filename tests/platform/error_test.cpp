#include "platform/error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/services.h"
#include "tests/raised_error.h"

namespace qva {
namespace {

TEST(AutomationError, OfATrappableNumberHasThePlatformsText) {
  for (const ErrorNumber number :
       {kInvalidProcedureCall, kOverflow,           kOutOfMemory,           kSubscriptOutOfRange,
        kTypeMismatch,         kInternalError,      kFileNotFound,          kPathNotFound,
        kObjectNotSet,         kInvalidUseOfNull,   kCannotCreateObject,    kAutomationFailed,
        kUnsupportedAction,    kUnsupportedMember,  kNamedArgumentNotFound, kArgumentNotOptional,
        kWrongArgumentCount,   kApplicationDefined, kBadFileNameOrNumber,   kBadFileMode,
        kFileAlreadyOpen,      kDeviceError,        kFileAlreadyExists,     kDiskFull,
        kInputPastEnd,         kTooManyFiles,       kPermissionDenied,      kOtherDrive,
        kPathFileAccess}) {
    const AutomationError error(number);
    EXPECT_EQ(error.number(), number);
    EXPECT_EQ(error.source(), u"QVA_Varnholt");
    EXPECT_FALSE(error.description().empty()) << number;
    EXPECT_EQ(error.description(), StandardDescription(number));
    EXPECT_EQ(error.argument(), -1);
  }
  EXPECT_EQ(StandardDescription(kTypeMismatch), u"Type mismatch");
  EXPECT_EQ(StandardDescription(kObjectErrorBase), u"");
}

TEST(AutomationError, KeepsWhatItWasMadeOf) {
  const AutomationError error(kObjectErrorBase + 5, u"CReports.Init", u"Blogas lapas – „Ž“");
  EXPECT_EQ(static_cast<std::uint32_t>(error.number()), 0x80040005u);
  EXPECT_EQ(error.source(), u"CReports.Init");
  EXPECT_EQ(error.description(), u"Blogas lapas – „Ž“");
  EXPECT_STREQ(error.what(), "error -2147221499: Blogas lapas – „Ž“");
}

TEST(AutomationError, NamesTheArgument) {
  EXPECT_EQ(AutomationError(kTypeMismatch).OfCall(2).argument(), 2);
}

TEST(IgnoreErrors, TellsWhetherTheStepWentThrough) {
  bool is_done = false;
  EXPECT_TRUE(IgnoreErrors([&] { is_done = true; }));
  EXPECT_TRUE(is_done);
  EXPECT_FALSE(IgnoreErrors([] { throw AutomationError(kOverflow); }));
}

TEST(IgnoreErrors, LetsEverythingButAutomationErrorsPass) {
  EXPECT_THROW(IgnoreErrors([] { throw std::runtime_error("other"); }), std::runtime_error);
}

TEST(Services, RaiseAnInternalErrorUntilTheyAreInstalled) {
  InstallServices({});
  EXPECT_EQ(RaisedBy(GetServices), kInternalError);
}

}  // namespace
}  // namespace qva
