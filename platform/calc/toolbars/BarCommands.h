// The commands behind the buttons and keys of a document's command bars.
#pragma once

#include <com/sun/star/frame/XDispatch.hpp>
#include <com/sun/star/frame/XDispatchProviderInterceptor.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <cppuhelper/implbase2.hxx>
#include <memory>
#include <vector>

#include "platform/calc/Uno.h"

namespace qva::calc {

/// How a button shows itself.
struct CommandState {
  bool enabled = true;
  bool pressed = false;
};

/// What carries the commands out.
class CommandTarget {
 public:
  virtual ~CommandTarget() = default;
  /// Does what the command stands for in the window of `frame`, where it was given; errors end here.
  virtual void Execute(const OUString& command, const Reference<css::frame::XFrame>& frame) = 0;
  virtual CommandState StateOf(const OUString& command) = 0;
};

/// Answers a frame's questions for commands of our own, so that LibreOffice's toolbars, menus and shortcuts
/// can carry them as any other command; no setting of LibreOffice names us.
class BarCommands
    : public cppu::WeakImplHelper2<css::frame::XDispatchProviderInterceptor, css::frame::XDispatch> {
 public:
  /// What our commands begin with.
  static constexpr char kProtocol[] = "qva_varnholt:";

  explicit BarCommands(std::weak_ptr<CommandTarget> target) : target_(std::move(target)) {}

  /// Takes part in the frame's dispatching until Leave.
  void Enter(const Reference<css::frame::XFrame>& frame);
  void Leave();
  const Reference<css::frame::XFrame>& frame() const { return frame_; }
  /// Tells whoever shows one of the commands what it looks like now.
  void Broadcast();

  Reference<css::frame::XDispatch> SAL_CALL queryDispatch(const css::util::URL& url, const OUString& target,
                                                          sal_Int32 flags) override;
  Sequence<Reference<css::frame::XDispatch>> SAL_CALL
  queryDispatches(const Sequence<css::frame::DispatchDescriptor>& requests) override;
  Reference<css::frame::XDispatchProvider> SAL_CALL getSlaveDispatchProvider() override;
  void SAL_CALL setSlaveDispatchProvider(const Reference<css::frame::XDispatchProvider>& slave) override;
  Reference<css::frame::XDispatchProvider> SAL_CALL getMasterDispatchProvider() override;
  void SAL_CALL setMasterDispatchProvider(const Reference<css::frame::XDispatchProvider>& master) override;

  void SAL_CALL dispatch(const css::util::URL& url,
                         const Sequence<css::beans::PropertyValue>& arguments) override;
  void SAL_CALL addStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                  const css::util::URL& url) override;
  void SAL_CALL removeStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                     const css::util::URL& url) override;

 private:
  struct Listener {
    css::util::URL url;
    Reference<css::frame::XStatusListener> listener;
  };
  void Tell(const Listener& listener);

  std::weak_ptr<CommandTarget> target_;
  Reference<css::frame::XFrame> frame_;
  Reference<css::frame::XDispatchProvider> slave_;
  Reference<css::frame::XDispatchProvider> master_;
  std::vector<Listener> listeners_;
};

}  // namespace qva::calc
