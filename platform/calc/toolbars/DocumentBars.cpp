#include "platform/calc/toolbars/DocumentBars.h"

#include <com/sun/star/awt/XRequestCallback.hpp>
#include <com/sun/star/container/NoSuchElementException.hpp>
#include <com/sun/star/frame/DispatchHelper.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XFrameActionListener.hpp>
#include <com/sun/star/ui/XAcceleratorConfiguration.hpp>
#include <com/sun/star/ui/XUIConfigurationManagerSupplier.hpp>
#include <cppuhelper/implbase1.hxx>

#include "platform/calc/SheetDocument.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/calc/toolbars/DocumentMacro.h"
#include "platform/calc/toolbars/Faces.h"
#include "platform/calc/toolbars/KeyNotation.h"
#include "platform/excel.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
using rtl::OUString;

/// Of the open documents. Never destroyed: LibreOffice may be gone by then.
std::vector<std::shared_ptr<DocumentBars>>& OpenDocuments() {
  static auto& documents = *new std::vector<std::shared_ptr<DocumentBars>>;
  return documents;
}

/// Shows the bars from LibreOffice's event loop.
class ShowLater : public cppu::WeakImplHelper1<css::awt::XCallback> {
 public:
  explicit ShowLater(std::weak_ptr<DocumentBars> bars) : bars_(std::move(bars)) {}
  void SAL_CALL notify(const Any&) override {
    if (const auto bars = bars_.lock()) bars->Show();
  }

 private:
  std::weak_ptr<DocumentBars> bars_;
};

/// Learns of the end of a document.
class CloseListener : public cppu::WeakImplHelper1<css::lang::XEventListener> {
 public:
  explicit CloseListener(std::weak_ptr<DocumentBars> bars) : bars_(std::move(bars)) {}
  void SAL_CALL disposing(const css::lang::EventObject&) override {
    if (const auto bars = bars_.lock()) bars->Close();
  }

 private:
  std::weak_ptr<DocumentBars> bars_;
};

/// Shows the bars again when something else was shown in their window, such as the print preview.
class FrameWatcher : public cppu::WeakImplHelper1<css::frame::XFrameActionListener> {
 public:
  explicit FrameWatcher(std::weak_ptr<DocumentBars> bars) : bars_(std::move(bars)) {}
  void SAL_CALL frameAction(const css::frame::FrameActionEvent& event) override {
    const bool is_attached = event.Action == css::frame::FrameAction_COMPONENT_ATTACHED ||
                             event.Action == css::frame::FrameAction_COMPONENT_REATTACHED;
    const auto bars = bars_.lock();
    if (is_attached && bars) bars->CommandBarsChanged();
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  std::weak_ptr<DocumentBars> bars_;
};

/// The shortcuts of the document alone.
Reference<css::ui::XAcceleratorConfiguration> Shortcuts(const Reference<css::frame::XModel>& document) {
  return Reference<css::ui::XAcceleratorConfiguration>(
      Reference<css::ui::XUIConfigurationManagerSupplier>(document, UNO_QUERY_THROW)
          ->getUIConfigurationManager()
          ->getShortCutManager(),
      UNO_QUERY_THROW);
}

css::awt::KeyEvent RequireKey(std::u16string_view notation) {
  const auto key = ParseKey(notation);
  if (!key) {
    throw AutomationError(kApplicationDefined, u"LibreOffice",
                          u"There is no key '" + std::u16string(notation) + u"'");
  }
  return *key;
}

}  // namespace

std::shared_ptr<DocumentBars> DocumentBars::Of(const ObjectPtr& application) {
  const excel::Workbook workbook = excel::Application(application).ThisWorkbook();
  const auto document = DocumentOfSheet(GetObject(workbook.object(), u"Sheets", {1}));
  for (const auto& bars : OpenDocuments()) {
    if (bars->document() == document) return bars;
  }
  const auto bars = std::make_shared<DocumentBars>(document);
  bars->commands_ = new BarCommands(bars);
  bars->watcher_ = new FrameWatcher(bars);
  document->addEventListener(new CloseListener(bars));
  OpenDocuments().push_back(bars);
  return bars;
}

DocumentBars::DocumentBars(const Reference<css::frame::XModel>& document)
    : document_(document), display_(document) {
}

void DocumentBars::RunMacro(const std::u16string& name) {
  if (document_.is()) RunDocumentMacro(document_, name);
}

void DocumentBars::CommandBarsChanged() {
  if (is_waiting_ || !document_.is()) return;
  try {
    const Reference<css::awt::XRequestCallback> loop(
        Context()->getServiceManager()->createInstanceWithContext("com.sun.star.awt.AsyncCallback",
                                                                  Context()),
        UNO_QUERY_THROW);
    loop->addCallback(new ShowLater(weak_from_this()), Any());
    is_waiting_ = true;
  } catch (const css::uno::Exception&) {
    // LibreOffice is ending.
  }
}

void DocumentBars::Show() {
  is_waiting_ = false;
  if (!document_.is()) return;
  try {
    EnterFrame();
    display_.Show(*this);
    commands_->Broadcast();
  } catch (const css::uno::Exception&) {
    // The bars are what they are even where they cannot be seen.
  }
}

void DocumentBars::EnterFrame() {
  const auto controller = document_->getCurrentController();
  const Reference<css::frame::XFrame> frame = controller.is() ? controller->getFrame() : nullptr;
  if (frame == frame_ || !frame.is()) return;
  if (frame_.is()) {
    commands_->Leave();
    frame_->removeFrameActionListener(watcher_);
  }
  frame_ = frame;
  commands_->Enter(frame);
  frame->addFrameActionListener(watcher_);
}

void DocumentBars::Execute(const OUString& command) {
  const auto alive = shared_from_this();
  try {
    if (const auto control = BarDisplay::ControlOf(*this, command)) {
      if (!control->visible || !control->enabled) return;
      if (!control->on_action.empty()) {
        RunMacro(control->on_action);
      } else if (const OUString own = BuiltInCommand(control->id); !own.isEmpty()) {
        const Reference<css::frame::XDispatchProvider> provider(frame_, UNO_QUERY_THROW);
        css::frame::DispatchHelper::create(Context())->executeDispatch(provider, own, "", 0, {});
      }
      return;
    }
    for (const auto& [key, binding] : keys_) {
      if (CommandOf(key) != command) continue;
      const std::u16string macro = binding.macro;  // it may bind the key anew
      if (!macro.empty()) RunMacro(macro);
      return;
    }
  } catch (const AutomationError&) {
    // There is no such macro: nothing happens.
  } catch (const css::uno::Exception&) {
    // LibreOffice tells about its own failures.
  }
}

CommandState DocumentBars::StateOf(const OUString& command) {
  const auto control = BarDisplay::ControlOf(*this, command);
  if (!control) return {};
  return {control->enabled, control->state != msoButtonUp};
}

OUString DocumentBars::CommandOf(const Key& key) {
  return BarCommands::kProtocol + "key-" + OUString::number(key.first) + "-" + OUString::number(key.second);
}

void DocumentBars::BindKey(std::u16string_view key, const std::u16string& macro) {
  const css::awt::KeyEvent event = RequireKey(key);
  const Key pressed{event.KeyCode, event.Modifiers};
  if (!document_.is()) return;
  EnterFrame();
  if (const auto known = keys_.find(pressed); known != keys_.end()) {
    known->second.macro = macro;
    return;
  }
  const auto shortcuts = Shortcuts(document_);
  Binding binding{macro, {}};
  try {
    binding.former = shortcuts->getCommandByKeyEvent(event);
  } catch (const css::container::NoSuchElementException&) {
    // The document has none of its own.
  }
  shortcuts->setKeyEvent(event, CommandOf(pressed));
  keys_[pressed] = std::move(binding);
}

void DocumentBars::ResetKey(std::u16string_view key) {
  const css::awt::KeyEvent event = RequireKey(key);
  const auto known = keys_.find({event.KeyCode, event.Modifiers});
  if (known == keys_.end()) return;
  const OUString former = known->second.former;
  keys_.erase(known);
  if (!document_.is()) return;
  if (former.isEmpty()) {
    Shortcuts(document_)->removeKeyEvent(event);
  } else {
    Shortcuts(document_)->setKeyEvent(event, former);
  }
}

void DocumentBars::CopyPicture(std::u16string_view name, const Reference<css::graphic::XGraphic>& picture) {
  clipboard_picture = display_.AddPicture(name, picture);
}

void DocumentBars::Close() {
  const auto alive = shared_from_this();
  std::erase(OpenDocuments(), alive);
  for (const auto& bar : command_bars) bar->is_deleted = true;
  command_bars.clear();
  keys_.clear();
  document_.clear();
  if (frame_.is()) commands_->Leave();
  frame_.clear();
  display_ = BarDisplay({});
}

}  // namespace qva::calc
