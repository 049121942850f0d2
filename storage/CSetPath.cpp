#include "storage/CSetPath.h"

#include <array>

#include "global/Helpers.h"
#include "platform/host.h"
#include "platform/message_box.h"
#include "platform/services.h"
#include "platform/settings.h"
#include "platform/text.h"
#include "storage/CWinRegistry.h"

namespace qva {
namespace {

constexpr std::u16string_view kFolder = u"Varnholt";
constexpr std::u16string_view kVariable = u"PATH";
constexpr std::u16string_view kKeptVariable = u"PATH_before_QVA_Varnholt";
constexpr std::u16string_view kEnvironmentKey = u"Environment";  ///< where the user's variables are kept
constexpr std::size_t kBufferSize = 1024;   ///< of the process's PATH, its terminating zero included
constexpr std::int32_t kPathChanged = 800;  ///< host message: folder %0 was added

/// The library's folder below the path of a host setting.
std::u16string FolderOf(std::u16string_view path_key) {
  const Services& services = GetServices();
  const std::u16string setting = GetSetting(*services.registry, *services.locale, host::kSettingsApplication,
                                            host::kGeneralSection, path_key, u"");
  std::u16string folder(Trim(setting));
  if (!folder.ends_with(u'\\')) folder += u'\\';
  return folder.append(kFolder);
}

bool IsOnProcessPath(std::u16string_view folder) {
  std::array<char, kBufferSize> buffer{};
  const std::uint32_t length = GetServices().environment->GetVariable(kVariable, buffer);
  // A path that is too long leaves the buffer empty and gives the size that it needs.
  if (length > buffer.size()) return false;
  return ContainsIgnoringCase(GetServices().locale->FromAnsi({buffer.data(), length}), folder);
}

/// Keeps the user's PATH beside itself, under the first of our names that does not hold another one. False
/// when that is refused.
bool Keep(Registry& registry, RegistryKey environment, const RegistryValue& path) {
  for (long long number = 1;; ++number) {
    std::u16string name(kKeptVariable);
    if (number > 1) name += u"_" + NumberText(number);
    RegistryValue kept;
    const std::int32_t status = registry.QueryStored(environment, name, kept);
    if (status == kRegistryFileNotFound) {
      return registry.SetStored(environment, name, path) == kRegistrySuccess;
    }
    if (status != kRegistrySuccess) return false;
    if (kept == path) return true;
  }
}

/// Whether the user's PATH may be replaced by what was made of `read`: it is that text, letter by letter, or
/// there is none, or it is kept.
bool IsSaved(std::u16string_view read) {
  Registry& registry = *GetServices().registry;
  OpenedKey environment(registry);
  const std::int32_t opened =
      environment.Open(HKEY_CURRENT_USER_VALUE, kEnvironmentKey, kKeyQueryValue | kKeySetValue);
  if (opened != kRegistrySuccess) return opened == kRegistryFileNotFound;
  RegistryValue path;
  const std::int32_t status = registry.QueryStored(environment.get(), kVariable, path);
  if (status != kRegistrySuccess) return status == kRegistryFileNotFound;
  const RegistryValue whole{kRegSz, ToUtf16Bytes(std::u16string(read) + u'\0')};
  return path == whole || Keep(registry, environment.get(), path);
}

}  // namespace

ClassBuilder CSetPath::Describe() {
  return ClassBuilder(u"CSetPath", "Puts the library's folder on the user's search path")
      .Method<&CSetPath::RegPath>(u"RegPath", {{u"PathKey"}},
                                  "Adds the folder of a path setting; true when the path was changed");
}

bool CSetPath::RegPath(std::u16string& PathKey) {
  const std::u16string folder = FolderOf(PathKey);
  if (IsOnProcessPath(folder)) return false;

  const CWinRegistry registry;
  const std::u16string key(kEnvironmentKey);
  const std::u16string variable(kVariable);
  std::int32_t type = kRegSz;
  std::u16string path = registry.GetRegSetting(HKEY_CURRENT_USER_VALUE, key, variable, type);
  if (ContainsIgnoringCase(path, folder)) return false;
  if (!IsSaved(path)) return false;
  if (!path.empty()) path += u';';
  path += folder;
  if (!registry.SaveRegSetting(HKEY_CURRENT_USER_VALUE, key, variable, path, kRegSz)) return false;

  host::Message::Create(*GetServices().object_factory).Show(HostMessage(kPathChanged, folder), u"", {kOk});
  return true;
}

}  // namespace qva
