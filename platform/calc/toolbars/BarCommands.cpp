#include "platform/calc/toolbars/BarCommands.h"

#include <com/sun/star/frame/XDispatchProviderInterception.hpp>

#include "platform/calc/Uno.h"
#include "platform/error.h"

namespace qva::calc {

void BarCommands::Enter(const Reference<css::frame::XFrame>& frame) {
  frame_ = frame;
  Reference<css::frame::XDispatchProviderInterception>(frame, UNO_QUERY_THROW)
      ->registerDispatchProviderInterceptor(this);
}

void BarCommands::Leave() {
  const Reference<css::frame::XDispatchProviderInterception> frame(frame_, UNO_QUERY);
  frame_.clear();
  listeners_.clear();
  try {
    if (frame.is()) frame->releaseDispatchProviderInterceptor(this);
  } catch (const css::uno::Exception&) {
    // The frame is going, and we with it.
  }
}

void BarCommands::Broadcast() {
  const std::vector<Listener> listeners = listeners_;  // being told, they may come and go
  for (const Listener& listener : listeners) Tell(listener);
}

void BarCommands::Tell(const Listener& listener) {
  const std::shared_ptr<CommandTarget> target = target_.lock();
  const CommandState state = target ? target->StateOf(listener.url.Complete) : CommandState{false, false};
  css::frame::FeatureStateEvent event;
  event.Source = static_cast<cppu::OWeakObject*>(this);
  event.FeatureURL = listener.url;
  event.IsEnabled = state.enabled;
  event.State = Any(state.pressed);
  try {
    listener.listener->statusChanged(event);
  } catch (const css::uno::Exception&) {
    // It went meanwhile.
  }
}

Reference<css::frame::XDispatch> BarCommands::queryDispatch(const css::util::URL& url, const OUString& target,
                                                            sal_Int32 flags) {
  if (url.Complete.startsWith(kProtocol)) return this;
  Reference<css::frame::XDispatch> found;
  IgnoreFailures([&] {
    if (slave_.is()) found = slave_->queryDispatch(url, target, flags);
  });
  return found;
}

Sequence<Reference<css::frame::XDispatch>> BarCommands::queryDispatches(
    const Sequence<css::frame::DispatchDescriptor>& requests) {
  Sequence<Reference<css::frame::XDispatch>> found;
  IgnoreFailures([&] {
    found.realloc(requests.getLength());
    Reference<css::frame::XDispatch>* dispatch = found.getArray();
    for (const css::frame::DispatchDescriptor& request : requests) {
      *dispatch++ = queryDispatch(request.FeatureURL, request.FrameName, request.SearchFlags);
    }
  });
  return found;
}

Reference<css::frame::XDispatchProvider> BarCommands::getSlaveDispatchProvider() {
  return slave_;
}

void BarCommands::setSlaveDispatchProvider(const Reference<css::frame::XDispatchProvider>& slave) {
  slave_ = slave;
}

Reference<css::frame::XDispatchProvider> BarCommands::getMasterDispatchProvider() {
  return master_;
}

void BarCommands::setMasterDispatchProvider(const Reference<css::frame::XDispatchProvider>& master) {
  master_ = master;
}

void BarCommands::dispatch(const css::util::URL& url, const Sequence<css::beans::PropertyValue>&) {
  const Reference<css::frame::XDispatch> alive(this);  // the macro may close the workbook
  if (const std::shared_ptr<CommandTarget> target = target_.lock())
    IgnoreFailures([&] { target->Execute(url.Complete, frame_); });
}

void BarCommands::addStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                    const css::util::URL& url) {
  IgnoreFailures([&] {
    const Listener added{url, listener};
    listeners_.push_back(added);
    Tell(added);  // it may leave again while it is told
  });
}

void BarCommands::removeStatusListener(const Reference<css::frame::XStatusListener>& listener,
                                       const css::util::URL& url) {
  IgnoreFailures([&] {
    std::erase_if(listeners_, [&](const Listener& known) {
      return known.listener == listener && known.url.Complete == url.Complete;
    });
  });
}

}  // namespace qva::calc
