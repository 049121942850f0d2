// What the bench's objects share: the in-memory Excel and host, behind an interceptor that writes down every
// call.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "platform/memory/CallFailure.h"
#include "platform/memory/CallTrace.h"
#include "platform/memory/Interceptor.h"
#include "platform/memory/MemoryHost.h"
#include "platform/memory/MemoryPlatform.h"
#include "platform/windows/WindowsFiles.h"

namespace qva::bench {

struct Bench {
  Bench();

  /// A new first state of host, message boxes and trace. Objects that are alive stay in use.
  void Reset();
  /// An Excel with one open workbook.
  ObjectPtr NewExcel();
  /// A component of the host. Raises 429 for an identifier that the host does not have.
  ObjectPtr NewHostObject(std::u16string_view programmatic_identifier);

  MemoryPlatform platform;
  /// Excel saves into the folders that the library makes.
  windows::WindowsFiles files{platform.object_factory, platform.locale};
  MemoryHost host;
  CallTrace trace;
  CallFailure failure{0, AutomationError(kApplicationDefined, u"Microsoft Excel", u"Refused")};
  bool is_busy = false;          ///< every call is turned away
  std::int32_t turned_away = 0;  ///< calls
  Interceptor interceptor{&trace, &failure};
  InterceptedFactory factory{interceptor, platform.object_factory};
  /// How often callers asked for the id of each "Type.member", arguments' names included, in lower case.
  std::map<std::u16string, std::int32_t> lookups;
};

/// The bench of this module, never destroyed.
Bench& TheBench();

}  // namespace qva::bench
