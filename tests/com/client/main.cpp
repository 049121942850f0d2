// The test program of the COM server: an early- and late-bound client in an apartment of its own, as Excel
// is.
#include <gmock/gmock.h>

#include "platform/windows/services/WindowsPlatform.h"
#include "tests/temporary_environment.h"

#include <initguid.h>

#include "QVA_Varnholt_idl.h"

int main(int count, char** arguments) {
  testing::InitGoogleMock(&count, arguments);
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
  // Nobody sits in front of the forms that the library shows here, display or not.
  qva::TemporaryEnvironment environment;
  environment.Set("QVA_VARNHOLT_FORM_ANSWERS", "nobody.answers");
  qva::windows::InstallPlatform();
  const int result = RUN_ALL_TESTS();
  CoUninitialize();
  return result;
}
