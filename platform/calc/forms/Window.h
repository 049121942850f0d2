// One window of LibreOffice's toolkit, and what happens to it.
#pragma once

#include <com/sun/star/awt/KeyEvent.hpp>
#include <com/sun/star/awt/Rectangle.hpp>
#include <com/sun/star/awt/VclWindowPeerAttribute.hpp>
#include <com/sun/star/awt/WindowAttribute.hpp>
#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/awt/XWindowPeer.hpp>
#include <exception>
#include <rtl/ref.hxx>
#include <string_view>

#include "platform/calc/Uno.h"

namespace qva::calc {

/// A press of the left mouse button, in the window's pixels.
struct MousePress {
  int x = 0;
  int y = 0;
  int clicks = 1;  ///< 2 for the second press of a double-click
};

/// What a window reports. What a handler raises goes to OnFailure.
class EventTarget {
 public:
  virtual void OnTextChanged() {}
  virtual void OnItemChanged() {}
  virtual void OnAction() {}
  virtual void OnFocus(bool /*gained*/) {}
  virtual void OnMousePressed(const MousePress&) {}
  virtual void OnPaint() {}
  virtual void OnOpened() {}
  virtual void OnClosing() {}
  virtual void OnResized() {}
  virtual void OnScrolled() {}
  virtual void OnTabActivated() {}
  virtual void OnFailure(std::exception_ptr failure) noexcept = 0;

 protected:
  ~EventTarget() = default;
};

class EventLink;

/// Owns a window, which is hidden at first and goes with its object. Nothing is reported afterwards.
class Window {
 public:
  /// A control of the toolkit ("edit", "pushbutton", "dialog", …) on its parent. `target` is borrowed.
  Window(const char* service, const Reference<css::awt::XWindowPeer>& parent, sal_Int32 attributes,
         EventTarget& target);
  ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  const Reference<css::awt::XWindowPeer>& peer() const { return peer_; }
  /// The window by one of its other interfaces. Raises when it has none of that kind.
  template <class Interface>
  Reference<Interface> As() const {
    return Reference<Interface>(peer_, UNO_QUERY_THROW);
  }
  Reference<css::awt::XWindow2> window() const { return As<css::awt::XWindow2>(); }

  void SetProperty(const char* name, const Any& value) const;
  /// Of a control. No sign in it stands for anything but itself.
  void SetCaption(std::u16string_view caption) const;
  void Place(const css::awt::Rectangle& pixels) const;
  css::awt::Size Size() const;
  /// Has the window painted anew.
  void Invalidate() const;

 private:
  /// No window yet.
  explicit Window(EventTarget& target);

  Reference<css::awt::XWindowPeer> peer_;
  rtl::Reference<EventLink> link_;
};

}  // namespace qva::calc
