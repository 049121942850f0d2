// Owners of what Windows draws with.
#pragma once

#include <memory>

#include "platform/windows/Handle.h"

namespace qva::windows {

/// A window's context, or with null the screen's, to measure in or draw on.
class WindowContext {
 public:
  explicit WindowContext(HWND window) : window_(window), context_(GetDC(window)) {}
  WindowContext(const WindowContext&) = delete;
  WindowContext& operator=(const WindowContext&) = delete;
  ~WindowContext() {
    if (context_) ReleaseDC(window_, context_);
  }

  HDC get() const { return context_; }

 private:
  HWND window_;
  HDC context_;
};

using MemoryContext = std::unique_ptr<HDC__, GivenBackBy<DeleteDC>>;
using Bitmap = std::unique_ptr<HBITMAP__, GivenBackBy<DeleteObject>>;

/// Selects an object, or none, into a context for as long as it lives. The object outlives it.
class Selected {
 public:
  Selected(HDC context, HGDIOBJ object)
      : context_(context), before_(object ? SelectObject(context, object) : nullptr) {}
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;
  ~Selected() {
    if (before_) SelectObject(context_, before_);
  }

  /// False when the context did not take the object.
  explicit operator bool() const { return before_ != nullptr; }

 private:
  HDC context_;
  HGDIOBJ before_;
};

}  // namespace qva::windows
