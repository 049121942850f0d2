// The library's own window classes. They belong to the library's file, not to the process: they must be gone
// before it is unloaded.
#pragma once

#include "platform/windows/OwnFile.h"

namespace qva::windows {

/// One class of windows. Make it a constant of the source file that creates them.
struct WindowClass {
  const wchar_t* name;  ///< begins with the library's name
  WNDPROC procedure;
  UINT style;    ///< CS_ values
  int uses = 0;  ///< how many WindowClassUse objects there are
};

/// Registers the class while at least one of these lives. Keep one beside each window, and let it go after
/// the window. The class has the arrow as its pointer and no background.
class WindowClassUse {
 public:
  /// Raises 7 (Out of memory) when Windows refuses the class.
  explicit WindowClassUse(WindowClass& window_class);
  WindowClassUse(const WindowClassUse&) = delete;
  WindowClassUse& operator=(const WindowClassUse&) = delete;
  ~WindowClassUse();

 private:
  WindowClass& class_;
};

}  // namespace qva::windows
