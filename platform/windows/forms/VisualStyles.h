// The current look of Windows' controls, which a program has to ask for.
#pragma once

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

/// While this lives, controls that the thread creates have the look of the user's theme, whatever the process
/// asked for. Where the library's file has no manifest of its own, they look as the process wants it.
class VisualStyles {
 public:
  VisualStyles();
  VisualStyles(const VisualStyles&) = delete;
  VisualStyles& operator=(const VisualStyles&) = delete;
  ~VisualStyles();

 private:
  HANDLE context_;
  ULONG_PTR cookie_ = 0;
};

}  // namespace qva::windows
