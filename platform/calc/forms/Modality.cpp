#include "platform/calc/forms/Modality.h"

#include <com/sun/star/awt/XTopWindowListener.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <cppuhelper/implbase1.hxx>

#include <chrono>

#include "platform/calc/EventLoop.h"
#include "platform/calc/Uno.h"
#include "platform/calc/UnoValue.h"

namespace qva::calc {
namespace {

using Clock = std::chrono::steady_clock;

/// How long the focus must have stayed, and how long we wait for that.
constexpr std::chrono::milliseconds kRest{120};
constexpr std::chrono::milliseconds kPatience{800};

bool IsDocumentWindow(const Reference<css::awt::XWindow2>& window) {
  const Reference<css::container::XIndexAccess> frames(css::frame::Desktop::create(Context())->getFrames(),
                                                       UNO_QUERY_THROW);
  for (sal_Int32 i = 0; i < frames->getCount(); ++i) {
    const Reference<css::frame::XFrame> frame(frames->getByIndex(i), UNO_QUERY_THROW);
    if (frame->getContainerWindow() == window) return true;
  }
  return false;
}

}  // namespace

// "Deprecated" is how the header marks what is not promised for ever; there is no other way to LibreOffice's
// windows.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

/// Disables the windows of documents that open.
class OthersDisabled::NewWindows : public cppu::WeakImplHelper1<css::awt::XTopWindowListener> {
 public:
  explicit NewWindows(OthersDisabled& owner) : owner_(&owner) {}
  void Cut() { owner_ = nullptr; }

  void SAL_CALL windowOpened(const css::lang::EventObject& event) override {
    IgnoreFailures([&] {
      const Reference<css::awt::XWindow2> window(event.Source, UNO_QUERY);
      if (owner_ && window.is() && IsDocumentWindow(window)) owner_->Disable(window);
    });
  }
  void SAL_CALL windowClosing(const css::lang::EventObject&) override {}
  void SAL_CALL windowClosed(const css::lang::EventObject&) override {}
  void SAL_CALL windowMinimized(const css::lang::EventObject&) override {}
  void SAL_CALL windowNormalized(const css::lang::EventObject&) override {}
  void SAL_CALL windowActivated(const css::lang::EventObject&) override {}
  void SAL_CALL windowDeactivated(const css::lang::EventObject&) override {}
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  OthersDisabled* owner_;
};

OthersDisabled::OthersDisabled(const Reference<css::frame::XFrame>& frame)
    : frame_(frame), toolkit_(Toolkit(), UNO_QUERY_THROW) {
  if (!frame_.is()) return;
  new_windows_ = new NewWindows(*this);
  window_.set(frame_->getContainerWindow(), UNO_QUERY_THROW);
}

OthersDisabled::OthersDisabled() : OthersDisabled(CurrentFrame()) {
  if (!frame_.is()) return;
  // What this raises - a window may go meanwhile - enables those again that are disabled by then.
  for (sal_Int32 i = 0; i < toolkit_->getTopWindowCount(); ++i) {
    const Reference<css::awt::XWindow2> window(toolkit_->getTopWindow(i), UNO_QUERY);
    if (window.is()) Disable(window);
  }
  toolkit_->addTopWindowListener(new_windows_.get());
}

OthersDisabled::~OthersDisabled() {
  if (!frame_.is()) return;
  // The document may be gone, as may each of the windows.
  IgnoreFailures([&] {
    new_windows_->Cut();
    toolkit_->removeTopWindowListener(new_windows_.get());
    ActivateDocument();
    // The others are still disabled: a focus that comes to one of them activates nothing.
    if (!disabled_.empty()) Settle();
  });
  for (const Reference<css::awt::XWindow2>& window : disabled_) {
    IgnoreFailures([&] { window->setEnable(true); });
  }
}

void OthersDisabled::Disable(const Reference<css::awt::XWindow2>& window) {
  // It may be gone, or stays as it is.
  IgnoreFailures([&] {
    if (window == window_ || !window->isVisible() || !window->isEnabled()) return;
    disabled_.push_back(window);
    window->setEnable(false);
  });
}

void OthersDisabled::ActivateDocument() const {
  frame_->activate();
  // Otherwise the focus, which is given later, would activate another document after all. The cells get it:
  // in GTK's look the window around them would keep every key to itself.
  const Reference<css::awt::XWindow> cells(frame_->getComponentWindow());
  if (cells.is()) return cells->setFocus();
  window_->setFocus();
}

void OthersDisabled::Settle() const {
  const Clock::time_point start = Clock::now();
  Clock::time_point at_rest = start;
  while (Clock::now() - at_rest < kRest && Clock::now() - start < kPatience) {
    HandleEvents();
    if (window_->isActive()) continue;
    at_rest = Clock::now();
    ActivateDocument();
  }
}

#pragma GCC diagnostic pop

}  // namespace qva::calc
