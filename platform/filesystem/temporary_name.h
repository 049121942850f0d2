// Names for files that stand beside another one until they take its place.
#pragma once

#include <cstddef>
#include <string>

namespace qva {

/// How many names are worth trying where some are taken.
inline constexpr int kTemporaryNameTries = 200;

/// A name of letters and digits, another one at each call, no longer than the name that it stands beside:
/// where that one has room, in its folder and in the system's limits, this one has.
std::string TemporaryName(std::size_t longest);

}  // namespace qva
