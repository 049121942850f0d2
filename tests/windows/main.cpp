// The test program of the Windows adapters: runs in an apartment of its own, as the library does in Excel's.
#include <gmock/gmock.h>

#include "platform/services.h"
#include "platform/windows/WindowsApi.h"
#include "platform/windows/forms/UiScale.h"
#include "platform/windows/services/WindowsPlatform.h"

namespace {

// Some tests put services of their own in the place of Windows' and leave none.
class WindowsServicesForEachTest : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override { qva::InstallServices(services_); }

  const qva::Services services_ = qva::GetServices();
};

}  // namespace

int main(int count, char** arguments) {
  testing::InitGoogleMock(&count, arguments);
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
  qva::windows::InstallPlatform();
  testing::UnitTest::GetInstance()->listeners().Append(new WindowsServicesForEachTest);
  // Tests measure and click real pixels, as the windows place themselves.
  const qva::windows::PerDisplayPixels pixels;
  const int result = RUN_ALL_TESTS();
  CoUninitialize();
  return result;
}
