#include "platform/calc/Screen.h"

#include <com/sun/star/frame/XTitle.hpp>
#include <memory>

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
  return static_cast<UnoObject&>(*application).InvokeOwn(Access::Put, u"StatusBar", arguments);
}

Value SetCaption(const ObjectPtr& window, const Arguments& arguments) {
  if (arguments.positional.size() != 1) throw AutomationError(kWrongArgumentCount);
  const css::uno::Reference<css::frame::XTitle> title(DocumentOf(window)->getCurrentController(),
                                                      css::uno::UNO_QUERY_THROW);
  title->setTitle(ToUno(arguments.positional[0].ToText()));
  return {};
}

}  // namespace qva::calc
