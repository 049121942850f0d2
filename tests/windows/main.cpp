// The test program of the Windows adapters: runs in an apartment of its own, as the library does in Excel's.
#include <gmock/gmock.h>

#include "platform/windows/WindowsApi.h"
#include "platform/windows/WindowsPlatform.h"
#include "platform/windows/forms/UiScale.h"

int main(int count, char** arguments) {
  testing::InitGoogleMock(&count, arguments);
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
  qva::windows::InstallPlatform();
  // Tests measure and click real pixels, as the windows place themselves.
  const qva::windows::PerDisplayPixels pixels;
  const int result = RUN_ALL_TESTS();
  CoUninitialize();
  return result;
}
