#include "server/com/CallLog.h"

#include <string>

#include "platform/variables.h"
#include "platform/windows/WindowsApi.h"
#include "server/PublicClasses.h"
#include "server/call_log.h"
#include "server/com/Registration.h"

namespace qva::com {
namespace {

std::wstring TextValue(const wchar_t* name) {
  DWORD size = 0;
  if (RegGetValueW(HKEY_CURRENT_USER, kOwnKey, name, RRF_RT_REG_SZ, nullptr, nullptr, &size) != ERROR_SUCCESS)
    return {};
  std::wstring value(size / sizeof(wchar_t) + 1, L'\0');
  size = static_cast<DWORD>(value.size() * sizeof(wchar_t));
  if (RegGetValueW(HKEY_CURRENT_USER, kOwnKey, name, RRF_RT_REG_SZ, nullptr, value.data(), &size) !=
      ERROR_SUCCESS)
    return {};
  return value.c_str();
}

bool IsOne(const wchar_t* name) {
  DWORD number = 0;
  DWORD size = sizeof number;
  const bool is_number = RegGetValueW(HKEY_CURRENT_USER, kOwnKey, name, RRF_RT_REG_DWORD, nullptr, &number,
                                      &size) == ERROR_SUCCESS;
  return is_number ? number == 1 : TextValue(name) == L"1";
}

std::wstring VariableOr(const char* variable, const wchar_t* value) {
  std::wstring text = EnvironmentVariable(variable);
  return text.empty() ? TextValue(value) : text;
}

CallLogSettings ReadSettings() {
  const bool with_content =
      EnvironmentVariable(variables::kCallLogContent) == L"1" || IsOne(L"CallLogContent");
  return {VariableOr(variables::kCallLog, kCallLogValue), with_content, &IsPublicObject};
}

}  // namespace

void StartCallLog() {
  static bool is_read = false;
  if (is_read) return;
  is_read = true;
  SetCallLog(ReadSettings());
}

}  // namespace qva::com
