// The host's classes as COM knows them, and who has registered them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "server/com/Registration.h"

namespace qva::demo {

struct HostClass {
  std::u16string_view programmatic_identifier;
  CLSID class_id;  ///< of the demo host's class; other hosts have identifiers of their own
};

/// Null when no class of the demo host has the identifier.
const HostClass* FindHostClass(REFCLSID class_id);

/// Null when the host has no class of the identifier.
const HostClass* FindHostClass(std::u16string_view programmatic_identifier);

/// Whether the user has the demo host's class under the identifier.
bool IsUsers(const HostClass& host_class);

/// The class that a hive has under the programmatic identifier, unless it is the demo host's own.
std::optional<CLSID> ForeignClass(const HostClass& host_class, com::Scope scope);

/// The full name of the key of a programmatic identifier of the host's that someone else than the demo host
/// has in the machine's or the user's hive, whatever it says; nothing when there is none.
std::optional<std::wstring> ForeignKey();

/// What the demo host at `library_path` registers. Of what both bitnesses share, that which another host has
/// taken over for the user is not among what goes when the demo host is unregistered.
com::Registration DescribeRegistration(const std::wstring& library_path);

}  // namespace qva::demo
