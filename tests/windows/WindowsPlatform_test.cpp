#include "platform/windows/services/WindowsPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/missing_services.h"
#include "tests/temporary_environment.h"

namespace qva::windows {
namespace {

TEST(WindowsPlatform, GivesEveryService) {
  EXPECT_THAT(MissingServices(WindowsPlatform().services()), testing::IsEmpty());
}

TEST(WindowsPlatform, ShowsFormsAndListsInWindowsUnlessAFileAnswersThem) {
  TemporaryEnvironment environment;
  environment.Set("QVA_VARNHOLT_FORM_ANSWERS", "answers.txt");
  const WindowsPlatform answered;
  environment.Set("QVA_VARNHOLT_FORM_ANSWERS", std::nullopt);
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
