// The errors that the embedded host's components raise of their own, beside automation's.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/error.h"
#include "platform/host.h"

namespace qva::embedded {

/// The components by the library that they belong to: the source of every error that they raise.
using host::kCommonLibrary;
inline constexpr std::u16string_view kMessageLibrary = host::LibraryOf(host::kMessage);

/// What went wrong. The error's number is kObjectErrorBase plus this; docs/host-interface.md lists them.
enum class Failure : std::int32_t {
  UnknownBook = 1,         ///< no book has the code
  DatabaseUnusable = 2,    ///< the database cannot be opened or read, or is not one of the host's
  DatabaseNotCreated = 3,  ///< the database of the first use cannot be created from the sample
  NotInitialised = 4,      ///< a member was used before the one that gives the object its data
  WrongParameters = 5,     ///< an argument that the member cannot work with
  UnknownLookup = 6,       ///< no lookup has the name
  NoResourceLibrary = 7,   ///< no resource library has the name, or it cannot be read
  MalformedResource = 8,   ///< the resource library's file breaks its format
  UnknownTable = 9,        ///< a book has no table of the name
  WrongCondition = 10,     ///< a condition that is not one expression of the database's SQL
  NoListChooser = 11,      ///< nothing can show a list to the user
};

inline AutomationError HostError(Failure failure, std::u16string_view source, std::u16string description) {
  return AutomationError(kObjectErrorBase + static_cast<std::int32_t>(failure), std::u16string(source),
                         std::move(description));
}

/// Error 6 for a number of the database beyond the range of its type.
inline AutomationError NumberOverflow() {
  return AutomationError(kOverflow, std::u16string(kCommonLibrary), StandardDescription(kOverflow));
}

}  // namespace qva::embedded
