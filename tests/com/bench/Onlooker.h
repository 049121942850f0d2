// Looks at the windows of this thread, on behalf of whoever works them from outside the process.
#pragma once

#include <string>

#include "platform/object.h"
#include "platform/windows/WindowsApi.h"

namespace qva::bench {

/// Looks whenever the thread has nothing else to do; what it tells is thus true after all keys and clicks so
/// far. While the user moves or sizes a window it tells nothing.
class Onlooker {
 public:
  /// Writes what is in front into a file, anew after each change: "scene <scene>"; when a window is active,
  /// "window <title>", its places on the screen as "frame x=<n> y=<n> width=<n> height=<n>" and "inside …",
  /// "focus <class> <text>" with its place as "field …" and, in the windows' order, "<class> <text>" of each
  /// control that is in sight. UTF-8. The scene alone stands there at once. An empty file name ends it.
  void Watch(std::u16string file, std::u16string scene);
  /// Presses Escape in every window.
  void CloseWindows(bool on);
  /// Asks an object for a dialog by its member "Edit" as soon as a window is in front; once.
  void EditMeanwhile(ObjectPtr object);
  /// The number of the error that it met then; 0 for none, −1 before.
  std::int32_t error_meanwhile() const { return error_meanwhile_; }

 private:
  static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD);
  void SetClock();
  void EditNow();
  void Tell(const std::u16string& seen);

  std::u16string file_;
  std::u16string scene_;
  std::u16string told_;
  bool closes_ = false;
  ObjectPtr edited_meanwhile_;
  std::int32_t error_meanwhile_ = -1;
  UINT_PTR clock_ = 0;
};

Onlooker& TheOnlooker();

}  // namespace qva::bench
