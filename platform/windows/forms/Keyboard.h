// The keyboard as it was when the message that is being handled was sent.
#pragma once

#include "platform/windows/WindowsApi.h"

namespace qva::windows {

inline bool IsDown(int key) {
  return GetKeyState(key) < 0;
}

}  // namespace qva::windows
