#include "platform/calc/toolbars/DocumentBars.h"

#include <algorithm>
#include <com/sun/star/container/NoSuchElementException.hpp>
#include <com/sun/star/document/XDocumentEventBroadcaster.hpp>
#include <com/sun/star/frame/DispatchHelper.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XFrameActionListener.hpp>
#include <com/sun/star/frame/XModel2.hpp>
#include <com/sun/star/ui/XAcceleratorConfiguration.hpp>
#include <com/sun/star/ui/XUIConfigurationManagerSupplier.hpp>
#include <cppuhelper/implbase1.hxx>

#include "platform/calc/EventLoop.h"
#include "platform/calc/SheetDocument.h"
#include "platform/calc/UnoError.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/calc/toolbars/DocumentMacro.h"
#include "platform/calc/toolbars/Faces.h"
#include "platform/calc/toolbars/KeyNotation.h"
#include "platform/excel.h"
#include "platform/services.h"

namespace qva::calc {
namespace {

/// Of the open documents. Never destroyed: LibreOffice may be gone by then.
std::vector<std::shared_ptr<DocumentBars>>& OpenDocuments() {
  static auto& documents = *new std::vector<std::shared_ptr<DocumentBars>>;
  return documents;
}

using Applications = std::vector<css::uno::WeakReference<css::uno::XInterface>>;

/// Of the workbooks that were closed: LibreOffice crashes when they are asked for their workbook.
Applications& ClosedApplications() {
  static auto& applications = *new Applications;
  return applications;
}

bool Contains(const Applications& applications, const Reference<css::uno::XInterface>& application) {
  return std::ranges::any_of(
      applications, [&](const auto& known) { return Reference<css::uno::XInterface>(known) == application; });
}

/// The windows of a document.
std::vector<Reference<css::frame::XFrame>> FramesOf(const Reference<css::frame::XModel>& document) {
  std::vector<Reference<css::frame::XFrame>> frames;
  const auto controllers = Reference<css::frame::XModel2>(document, UNO_QUERY_THROW)->getControllers();
  while (controllers->hasMoreElements()) {
    const Reference<css::frame::XController> controller(controllers->nextElement(), UNO_QUERY_THROW);
    const Reference<css::frame::XFrame> frame = controller->getFrame();
    if (frame.is() && std::ranges::find(frames, frame) == frames.end()) frames.push_back(frame);
  }
  return frames;
}

/// Learns of a document's further windows and of its end.
class DocumentWatcher : public cppu::WeakImplHelper1<css::document::XDocumentEventListener> {
 public:
  explicit DocumentWatcher(std::weak_ptr<DocumentBars> bars) : bars_(std::move(bars)) {}
  void SAL_CALL documentEventOccured(const css::document::DocumentEvent& event) override {
    const auto bars = bars_.lock();
    if (bars && event.EventName == "OnViewCreated") IgnoreFailures([&] { bars->CommandBarsChanged(); });
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {
    if (const auto bars = bars_.lock()) IgnoreFailures([&] { bars->Close(); });
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
    if (is_attached && bars) IgnoreFailures([&] { bars->CommandBarsChanged(); });
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
  if (!key) throw Refused(u"There is no key '" + std::u16string(notation) + u"'");
  return *key;
}

}  // namespace

std::shared_ptr<DocumentBars> DocumentBars::Of(const ObjectPtr& application) {
  const Reference<css::uno::XInterface> identity(ToAny(application), UNO_QUERY_THROW);
  for (const auto& bars : OpenDocuments()) {
    if (Contains(bars->applications_, identity)) return bars;
  }
  if (Contains(ClosedApplications(), identity)) throw Refused(u"The workbook is closed");
  const excel::Workbook workbook = excel::Application(application).ThisWorkbook();
  const auto document = DocumentOf(workbook.object());
  const auto known = std::ranges::find(OpenDocuments(), document, &DocumentBars::document);
  if (known != OpenDocuments().end()) {
    (*known)->applications_.emplace_back(identity);
    return *known;
  }
  const auto bars = std::make_shared<DocumentBars>(document);
  bars->applications_.emplace_back(identity);
  bars->Watch();
  OpenDocuments().push_back(bars);
  return bars;
}

void DocumentBars::Notice(const ObjectPtr& object) {
  // An object of ours, or of a module, may have a class of that name, but no document.
  if (!dynamic_cast<const UnoObject*>(object.get()) || object->TypeName() != u"Application") return;
  IgnoreErrors([&] {
    try {
      Of(object);
    } catch (const css::uno::Exception&) {
      // The macros of no workbook: there is none that could be closed.
    }
  });
}

DocumentBars::DocumentBars(const Reference<css::frame::XModel>& document)
    : document_(document), names_{FileNameOf(document)}, display_(document) {
}

void DocumentBars::Watch() {
  watcher_ = new FrameWatcher(weak_from_this());
  const rtl::Reference<DocumentWatcher> watcher = new DocumentWatcher(weak_from_this());
  document_->addEventListener(watcher.get());
  Reference<css::document::XDocumentEventBroadcaster>(document_, UNO_QUERY_THROW)
      ->addDocumentEventListener(watcher.get());
}

void DocumentBars::RunMacro(const std::u16string& name) {
  if (document_.is()) RunDocumentMacro(document_, names_, name);
}

void DocumentBars::CommandBarsChanged() {
  if (is_waiting_ || !document_.is()) return;
  try {
    Post([self = weak_from_this()] {
      if (const auto bars = self.lock()) bars->Show();
    });
    is_waiting_ = true;
  } catch (...) {
    // LibreOffice is ending, or there is no memory; the next change shows them.
  }
}

void DocumentBars::Show() {
  is_waiting_ = false;
  if (!document_.is()) return;
  try {
    names_.insert(FileNameOf(document_));
    EnterFrames();
    display_.Show(*this, FramesOf(document_));
    for (const auto& commands : std::vector(commands_)) commands->Broadcast();
  } catch (const css::uno::Exception&) {
    // The bars are what they are even where they cannot be seen.
  }
}

void DocumentBars::EnterFrames() {
  const auto frames = FramesOf(document_);
  std::erase_if(commands_, [&](const rtl::Reference<BarCommands>& commands) {
    const Reference<css::frame::XFrame> frame = commands->frame();
    if (std::ranges::find(frames, frame) != frames.end()) return false;
    commands->Leave();
    frame->removeFrameActionListener(watcher_);
    return true;
  });
  for (const Reference<css::frame::XFrame>& frame : frames) {
    if (std::ranges::find(commands_, frame, &BarCommands::frame) != commands_.end()) continue;
    commands_.push_back(new BarCommands(weak_from_this()));
    commands_.back()->Enter(frame);
    frame->addFrameActionListener(watcher_);
  }
}

void DocumentBars::Execute(const OUString& command, const Reference<css::frame::XFrame>& frame) {
  const auto alive = shared_from_this();
  std::u16string macro;  // a copy: what it does may change the button or the key
  try {
    if (const auto control = BarDisplay::ControlOf(*this, command)) {
      if (!control->visible || !control->enabled) return;
      macro = control->on_action;
      if (const OUString own = BuiltInCommand(control->id); macro.empty() && !own.isEmpty()) {
        const Reference<css::frame::XDispatchProvider> provider(frame, UNO_QUERY_THROW);
        css::frame::DispatchHelper::create(Context())->executeDispatch(provider, own, "", 0, {});
      }
    }
    for (const auto& [key, binding] : keys_) {
      if (CommandOf(key) == command) macro = binding.macro;
    }
    if (!macro.empty()) RunMacro(macro);
  } catch (const AutomationError&) {
    GetServices().message_box->Show(u"Nerasta makrokomanda „" + macro + u"“.", vbCritical, u"");
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
  return OUString(BarCommands::kProtocol) + "key-" + OUString::number(key.first) + "-" +
         OUString::number(key.second);
}

void DocumentBars::BindKey(std::u16string_view key, const std::u16string& macro) {
  const css::awt::KeyEvent event = RequireKey(key);
  const Key pressed{event.KeyCode, event.Modifiers};
  if (!document_.is() || event.KeyCode == 0) return;
  EnterFrames();
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
  for (const auto& commands : commands_) commands->Leave();
  commands_.clear();
  display_ = BarDisplay({});
  auto& closed = ClosedApplications();
  std::erase_if(closed,
                [](const auto& application) { return !Reference<css::uno::XInterface>(application).is(); });
  closed.insert(closed.end(), applications_.begin(), applications_.end());
  applications_.clear();
}

}  // namespace qva::calc
