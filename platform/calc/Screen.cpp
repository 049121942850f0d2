#include "platform/calc/Screen.h"

#include <algorithm>
#include <chrono>
#include <com/sun/star/frame/XFrameActionListener.hpp>
#include <com/sun/star/frame/XTitle.hpp>
#include <cppuhelper/implbase1.hxx>
#include <memory>
#include <rtl/ref.hxx>
#include <vector>

#include "platform/calc/EventLoop.h"
#include "platform/calc/SheetDocument.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoText.h"

namespace qva::calc {
namespace {

void TurnOn() {
  for (const auto& document : WorkbookDocuments()) {
    while (document->hasControllersLocked()) document->unlockControllers();
  }
}

/// LibreOffice itself handles the events that wait once, which is too early for GTK: that paints with the
/// next beat of its own clock, and a macro that goes on lets none come.
void LetPaint() {
  constexpr std::chrono::milliseconds kBeats{50};
  if (!IsOnScreen()) return;
  const auto end = std::chrono::steady_clock::now() + kBeats;
  do HandleEvents();
  while (std::chrono::steady_clock::now() < end);
}

/// A screen that is off. Kept by the Applications that turned it off.
class Darkness {
 public:
  Darkness() = default;
  ~Darkness() {
    if (!is_over_) IgnoreFailures(TurnOn);  // LibreOffice may be ending
  }
  Darkness(const Darkness&) = delete;
  Darkness& operator=(const Darkness&) = delete;

  void End() { is_over_ = true; }

 private:
  bool is_over_ = false;
};

/// The one of now; none while the screen is on.
std::weak_ptr<Darkness>& TheDarkness() {
  static auto& darkness = *new std::weak_ptr<Darkness>;
  return darkness;
}

/// Gives the window of a workbook its title again when it has shown something else, such as the print
/// preview.
class TitleKeeper : public cppu::WeakImplHelper1<css::frame::XFrameActionListener> {
 public:
  TitleKeeper(const Reference<css::frame::XModel>& document, const Reference<css::frame::XFrame>& frame)
      : document_(document), frame_(frame) {}

  bool Keeps(const Reference<css::frame::XController>& controller) const {
    return controller.is() && controller->getModel() == document_ && controller->getFrame() == frame_;
  }
  void Set(const OUString& title) {
    title_ = title;
    Reference<css::frame::XTitle>(frame_->getController(), UNO_QUERY_THROW)->setTitle(title_);
  }

  void SAL_CALL frameAction(const css::frame::FrameActionEvent& event) override {
    if (event.Action != css::frame::FrameAction_COMPONENT_ATTACHED &&
        event.Action != css::frame::FrameAction_COMPONENT_REATTACHED) {
      return;
    }
    // Later, when the window knows what it shows.
    IgnoreFailures([&] { Post([self = rtl::Reference<TitleKeeper>(this)] { self->Look(); }); });
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {
    IgnoreFailures([&] { Leave(); });
  }

  /// All that there are. Never destroyed: at the end of the process LibreOffice's objects are gone before us.
  static std::vector<rtl::Reference<TitleKeeper>>& All() {
    static auto& all = *new std::vector<rtl::Reference<TitleKeeper>>;
    return all;
  }

 private:
  void Look() { Keeps(frame_->getController()) ? Set(title_) : Leave(); }
  void Leave() {
    const rtl::Reference<TitleKeeper> alive(this);
    std::erase(All(), alive);
    frame_->removeFrameActionListener(this);
  }

  Reference<css::frame::XModel> document_;
  Reference<css::frame::XFrame> frame_;
  OUString title_;
};

}  // namespace

Value SetScreenUpdating(const ObjectPtr& application, const Arguments& arguments) {
  if (arguments.positional.size() != 1) throw AutomationError(kWrongArgumentCount);
  auto darkness = TheDarkness().lock();
  if (arguments.positional[0].ToBoolean()) {
    TurnOn();
    if (darkness) darkness->End();
    TheDarkness().reset();
    return {};
  }
  if (!darkness) TheDarkness() = darkness = std::make_shared<Darkness>();
  static_cast<UnoObject&>(*application).Keep(darkness);
  for (const auto& document : WorkbookDocuments()) {
    if (!document->hasControllersLocked()) document->lockControllers();
  }
  return {};
}

Value StatusBar(const ObjectPtr&, const Arguments&) {
  return false;
}

Value SetStatusBar(const ObjectPtr& application, const Arguments& arguments) {
  if (arguments.positional.size() != 1) throw AutomationError(kWrongArgumentCount);
  if (!Get(application, u"DisplayStatusBar").ToBoolean()) return {};
  static_cast<UnoObject&>(*application).InvokeOwn(Access::Put, u"StatusBar", arguments);
  if (arguments.positional[0].Is(Value::Type::Text)) IgnoreFailures([] { LetPaint(); });
  return {};
}

Value SetCaption(const ObjectPtr& window, const Arguments& arguments) {
  if (arguments.positional.size() != 1) throw AutomationError(kWrongArgumentCount);
  const OUString title = ToUno(arguments.positional[0].ToText());
  const Reference<css::frame::XModel> document = DocumentOf(window);
  const Reference<css::frame::XController> controller(document->getCurrentController(), UNO_SET_THROW);
  auto& all = TitleKeeper::All();
  auto keeper = std::ranges::find_if(all, [&](const auto& one) { return one->Keeps(controller); });
  if (keeper == all.end()) {
    const Reference<css::frame::XFrame> frame(controller->getFrame(), UNO_SET_THROW);
    keeper = all.insert(all.end(), new TitleKeeper(document, frame));
    frame->addFrameActionListener(keeper->get());
  }
  (*keeper)->Set(title);
  return {};
}

}  // namespace qva::calc
