#include "platform/windows/services/WindowsPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/missing_services.h"

namespace qva::windows {
namespace {

TEST(WindowsPlatform, GivesEveryService) {
  EXPECT_THAT(MissingServices(WindowsPlatform().services()), testing::IsEmpty());
}

TEST(WindowsPlatform, ShowsFormsAndListsInWindowsUnlessAFileAnswersThem) {
  SetEnvironmentVariableW(L"QVA_VARNHOLT_FORM_ANSWERS", L"answers.txt");
  const WindowsPlatform answered;
  SetEnvironmentVariableW(L"QVA_VARNHOLT_FORM_ANSWERS", nullptr);
  EXPECT_TRUE(dynamic_cast<UnattendedForms*>(answered.services().forms));
  EXPECT_TRUE(dynamic_cast<UnattendedForms*>(answered.services().list_chooser));
  // Wine's desktop counts as visible without a display, too.
  ASSERT_TRUE(HasVisibleDesktop());
  const WindowsPlatform attended;
  EXPECT_TRUE(dynamic_cast<NativeForms*>(attended.services().forms));
  EXPECT_TRUE(dynamic_cast<FormListChooser*>(attended.services().list_chooser));
}

}  // namespace
}  // namespace qva::windows
