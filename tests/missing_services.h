// Whether a platform gives every service, those included that the seam gains one day.
#pragma once

#include <cstring>
#include <type_traits>
#include <vector>

#include "platform/services.h"

namespace qva {

/// The numbers of the members, in the order of their declaration from 0, that are not set.
inline std::vector<std::size_t> MissingServices(const Services& services) {
  static_assert(std::is_trivially_copyable_v<Services> && sizeof(Services) % sizeof(void*) == 0);
  const void* members[sizeof(Services) / sizeof(void*)];
  std::memcpy(members, &services, sizeof services);
  std::vector<std::size_t> missing;
  for (std::size_t i = 0; i < std::size(members); ++i) {
    if (!members[i]) missing.push_back(i);
  }
  return missing;
}

}  // namespace qva
