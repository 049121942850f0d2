// What the library writes into the registry: the data, and writing, removing and printing it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/windows/WindowsApi.h"

namespace qva::com {

/// The hive that a registration stands in.
enum class Scope { Machine, User };

/// One value below Software\Classes. The empty name is the key's default value; a value without text stands
/// for its key alone.
struct RegistrationValue {
  std::wstring key;
  std::wstring name;
  std::optional<std::wstring> text;
};

/// Everything that one bitness of the library registers, as plain data.
struct Registration {
  std::vector<RegistrationValue> values;
  /// Keys that go, with all below them, when this bitness is unregistered.
  std::vector<std::wstring> own_trees;
  /// Keys that both bitnesses use: they go with the one that is unregistered last.
  std::vector<std::wstring> shared_trees;
  /// The other bitness's mark: as long as this key exists, the shared trees stay.
  std::wstring other_bitness;
};

/// The registration of the library at `library_path`: programmatic identifiers, classes, interfaces and the
/// type library.
Registration DescribeRegistration(const std::wstring& library_path);

/// A step that the registry refused: the Windows code, and the full name of the key that it was about.
struct RegistrationFailure {
  LSTATUS code = ERROR_SUCCESS;
  std::wstring key;

  /// One sentence for the user.
  std::wstring Message() const;
};

/// Machine when this process may write there, otherwise User. Tried with the rights that writing needs, but
/// nothing is written.
Scope ProbeScope();

/// Writes all values into one hive and remembers the hive under Software\QVA_Varnholt\Registration there. On
/// a failure every key that was made is removed again, and the failure is returned. A per-user registration
/// that an earlier call left is removed when the machine's takes over.
std::optional<RegistrationFailure> Register(const Registration& registration, Scope scope);

/// Removes the registration of this bitness from every hive that remembers one, leaving no key behind. No
/// registration is no failure. Goes on after a failure; the first one is returned.
std::optional<RegistrationFailure> Unregister(const Registration& registration);

/// What Register would write, as the text of a registry script (.reg).
std::wstring RegistryScript(const Registration& registration, Scope scope);

}  // namespace qva::com
