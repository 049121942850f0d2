#include "platform/calc/EventLoop.h"

#include <chrono>
#include <com/sun/star/awt/SystemDependentXWindow.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <com/sun/star/awt/XRequestCallback.hpp>
#include <com/sun/star/awt/XReschedule.hpp>
#include <com/sun/star/awt/XSystemDependentWindowPeer.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/SystemDependent.hpp>
#include <cppuhelper/implbase1.hxx>
#include <thread>

#include "platform/calc/Uno.h"

namespace qva::calc {
namespace {

class Action : public cppu::WeakImplHelper1<css::awt::XCallback> {
 public:
  explicit Action(std::function<void()> action) : action_(std::move(action)) {}
  void SAL_CALL notify(const Any&) override { IgnoreFailures(action_); }

 private:
  std::function<void()> action_;
};

}  // namespace

Reference<css::awt::XToolkit> Toolkit() {
  return Reference<css::awt::XToolkit>(css::awt::Toolkit::create(Context()), UNO_QUERY_THROW);
}

void Post(std::function<void()> action, const Reference<css::uno::XComponentContext>& context) {
  const Reference<css::awt::XRequestCallback> loop(
      context->getServiceManager()->createInstanceWithContext("com.sun.star.awt.AsyncCallback", context),
      UNO_QUERY_THROW);
  loop->addCallback(new Action(std::move(action)), Any());
}

void HandleEvents() {
  constexpr std::chrono::milliseconds kPause{10};
  std::this_thread::sleep_for(kPause);
  const Reference<css::awt::XReschedule> events(Toolkit(), UNO_QUERY_THROW);
// "Deprecated" is how the header marks what is not promised for ever; there is no other way.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  events->reschedule();
#pragma GCC diagnostic pop
}

Reference<css::frame::XFrame> CurrentFrame() {
  const auto desktop = css::frame::Desktop::create(Context());
  const Reference<css::frame::XFrame> current = desktop->getCurrentFrame();
  if (current.is()) return current;
  // No window has been active yet.
  const Reference<css::container::XIndexAccess> frames(desktop->getFrames(), UNO_QUERY);
  if (!frames.is() || frames->getCount() == 0) return {};
  return Reference<css::frame::XFrame>(frames->getByIndex(frames->getCount() - 1), UNO_QUERY);
}

Reference<css::awt::XWindowPeer> DocumentWindow() {
  const Reference<css::frame::XFrame> frame = CurrentFrame();
  return frame.is() ? Reference<css::awt::XWindowPeer>(frame->getContainerWindow(), UNO_QUERY)
                    : Reference<css::awt::XWindowPeer>();
}

bool IsOnScreen() {
  try {
    // Without a screen LibreOffice has windows all the same, drawn into memory: those know no display.
    const Reference<css::awt::XSystemDependentWindowPeer> window(DocumentWindow(), UNO_QUERY);
    css::awt::SystemDependentXWindow handle;
    return window.is() &&
           (window->getWindowHandle({}, css::lang::SystemDependent::SYSTEM_XWINDOW) >>= handle) &&
           handle.DisplayPointer != 0;
  } catch (const css::uno::Exception&) {
    return false;
  }
}

}  // namespace qva::calc
