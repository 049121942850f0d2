// A window within a control.
#pragma once

#include <functional>

#include "platform/calc/Uno.h"
#include "platform/calc/forms/Window.h"

namespace qva::calc {

/// What happens in it is told to the control, and goes there when it fails.
class InnerWindow : public EventTarget {
 public:
  InnerWindow(EventTarget& owner, const Reference<css::awt::XWindowPeer>& parent, const char* service,
              sal_Int32 attributes = 0)
      : owner_(owner), window(service, parent, attributes, *this) {}

 private:
  void OnAction() override { Tell(on_action); }
  void OnScrolled() override { Tell(on_scrolled); }
  void OnPaint() override { Tell(on_paint); }
  void OnMousePressed(const MousePress& press) override { Tell(on_press, press); }
  void OnFailure(std::exception_ptr failure) noexcept override { owner_.OnFailure(std::move(failure)); }
  template <class... Arguments>
  static void Tell(const std::function<void(Arguments...)>& event, const Arguments&... arguments) {
    if (event) event(arguments...);
  }

  EventTarget& owner_;

 public:
  const Window window;
  std::function<void()> on_action;
  std::function<void()> on_scrolled;
  std::function<void()> on_paint;
  std::function<void(MousePress)> on_press;
};

}  // namespace qva::calc
