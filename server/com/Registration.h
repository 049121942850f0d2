// What a COM server writes into the registry: the data, and writing, removing and printing it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/windows/WindowsApi.h"

namespace qva::com {

/// Where either hive has COM's classes, without and with the end before a name.
inline constexpr wchar_t kClasses[] = L"Software\\Classes";
inline constexpr wchar_t kBelowClasses[] = L"Software\\Classes\\";
/// The library's own key of either hive.
inline constexpr wchar_t kOwnKey[] = L"Software\\QVA_Varnholt";

/// The hive that a registration stands in.
enum class Scope { Machine, User };

/// One value below Software\Classes. The empty name is the key's default value; a value without text stands
/// for its key alone.
struct RegistrationValue {
  std::wstring key;
  std::wstring name;
  std::optional<std::wstring> text;
};

/// Everything that one bitness of a server registers, as plain data.
struct Registration {
  /// The key, below kOwnKey, in which a hive remembers that this is registered there.
  std::wstring record;
  std::vector<RegistrationValue> values;
  /// Keys that go, with all below them, when this bitness is unregistered.
  std::vector<std::wstring> own_trees;
  /// Keys that both bitnesses use: they go with the one that is unregistered last.
  std::vector<std::wstring> shared_trees;
  /// The other bitness's mark: as long as this key exists, the shared trees stay.
  std::wstring other_bitness;
};

/// An identifier in braces.
std::wstring GuidText(const GUID& guid);

/// A step that the registry refused: the Windows code, and the hive and the full name of the key that it was
/// about.
struct RegistrationFailure {
  LSTATUS code = ERROR_SUCCESS;
  Scope scope = Scope::Machine;
  std::wstring key;

  /// One sentence for the user.
  std::wstring Message() const;
};

/// Machine when this process may write there, otherwise User. Tried with the rights that writing needs, but
/// nothing is written.
Scope ProbeScope();

/// Writes all values into one hive and remembers that in its record there. A per-user registration that an
/// earlier call left is removed when the machine's takes over. On a failure, which is returned, the hive is
/// as it was before: new keys are removed again, replaced values put back.
std::optional<RegistrationFailure> Register(const Registration& registration, Scope scope);

/// Registers for the machine, or for the user when the machine's hive denies access as a whole or on the way.
std::optional<RegistrationFailure> RegisterWherePermitted(const Registration& registration);

/// Removes the registration of this bitness from one hive, if that remembers one, leaving no key behind. No
/// registration is no failure. Goes on after a failure; the first one is returned, and the hive stays
/// remembered, so that a later call finds what is left.
std::optional<RegistrationFailure> Unregister(const Registration& registration, Scope scope);

/// The same from every hive.
std::optional<RegistrationFailure> Unregister(const Registration& registration);

/// The same in one hive, whether it remembers a registration or not.
std::optional<RegistrationFailure> Remove(const Registration& registration, Scope scope);

/// What Register would write, as the text of a registry script (.reg).
std::wstring RegistryScript(const Registration& registration, Scope scope);

}  // namespace qva::com
