#include "platform/calc/forms/FormWindow.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XGraphics.hpp>
#include <com/sun/star/awt/XLayoutConstrains.hpp>
#include <cppuhelper/implbase1.hxx>

#include <algorithm>

#include "platform/calc/EventLoop.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/forms/Modality.h"
#include "platform/calc/forms/Painter.h"
#include "platform/calc/forms/TabStrip.h"
#include "platform/forms/Guarded.h"
#include "platform/forms/form_description.h"

namespace qva::calc {

using css::awt::Rectangle;

namespace {

/// The forms that are shown, the last one on top.
std::vector<FormWindow*>& Shown() {
  static auto& shown = *new std::vector<FormWindow*>;
  return shown;
}

AutomationError FormError(ErrorNumber number, std::u16string description) {
  return AutomationError(number, std::move(description));
}

std::unique_ptr<Window> MakeWindow(const ui::FormDescription& description, EventTarget& target) {
  namespace attribute = css::awt::WindowAttribute;
  auto window = std::make_unique<Window>("dialog", FormWindow::TopMost(),
                                         attribute::BORDER | attribute::MOVEABLE | attribute::CLOSEABLE |
                                             (description.resizable ? attribute::SIZEABLE : 0),
                                         target);
  window->SetProperty("Text", Any(ToUno(description.caption)));
  return window;
}

/// Keeps a form among those that are shown.
class OnTop {
 public:
  explicit OnTop(FormWindow& form) : form_(form) { Shown().push_back(&form_); }
  ~OnTop() { std::erase(Shown(), &form_); }
  OnTop(const OnTop&) = delete;
  OnTop& operator=(const OnTop&) = delete;

 private:
  FormWindow& form_;
};

}  // namespace

// "Deprecated" is how the header marks what is not promised for ever; there is no other way to take Tab and
// Escape from a dialog.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

/// Hears of keys before the windows do, while a form is shown.
class FormWindow::KeyLink : public cppu::WeakImplHelper1<css::awt::XKeyHandler> {
 public:
  explicit KeyLink(FormWindow& form) : form_(&form), toolkit_(Toolkit(), UNO_QUERY_THROW) {}
  void Listen() { toolkit_->addKeyHandler(this); }
  void Cut() {
    form_ = nullptr;
    toolkit_->removeKeyHandler(this);
  }
  sal_Bool SAL_CALL keyPressed(const css::awt::KeyEvent& event) override {
    const rtl::Reference<KeyLink> alive(this);
    if (!form_) return false;
    bool is_taken = true;  // also where it fails
    Guarded([&] { is_taken = form_->HandleKey(event); },
            [this](std::exception_ptr failure) {
              if (form_) form_->Fail(std::move(failure));
            });
    return is_taken;
  }
  sal_Bool SAL_CALL keyReleased(const css::awt::KeyEvent&) override { return false; }
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  FormWindow* form_;
  Reference<css::awt::XExtendedToolkit> toolkit_;
};

#pragma GCC diagnostic pop

/// Gives a form the keys while this object lives.
class FormWindow::Keys {
 public:
  explicit Keys(FormWindow& form) : link_(new KeyLink(form)) { link_->Listen(); }
  ~Keys() {
    IgnoreFailures([&] { link_->Cut(); });  // the toolkit may be gone, with all who listened
  }
  Keys(const Keys&) = delete;
  Keys& operator=(const Keys&) = delete;

 private:
  rtl::Reference<KeyLink> link_;
};

FormWindow::FormWindow(const ui::FormDescription& description) try
    : description_(description),
      window_(MakeWindow(description, *this)),
      theme_(std::make_unique<Theme>(*window_)) {
  for (const ui::ControlDescription& control : description_.controls) {
    controls_.push_back(MakeControl(*this, control));
  }
  StretchForFields();
  window_->window()->setOutputSize(
      {Scaled(std::max(description_.width, description_.first_width)),
       theme_->ScaledDown(std::max(description_.height, description_.first_height))});
  Layout();
  SetPage(0);
} catch (const css::uno::Exception&) {
  // LibreOffice's own text names interfaces and source files.
  throw FormError(kOutOfMemory, u"LibreOffice gives no window");
}

/// Some desktops draw a field higher than the place that it is given; it would cover its neighbour.
void FormWindow::StretchForFields() {
  constexpr int kRow = 30;  // from field to field in our forms
  constexpr int kGap = 3;
  for (const auto& control : controls_) {
    if (control->description().kind != ui::ControlKind::TextBox || control->description().read_only) continue;
    const int height = control->window().As<css::awt::XLayoutConstrains>()->getMinimumSize().Height;
    theme_->stretch = std::max(theme_->stretch, (height + Scaled(kGap)) / (kRow * theme_->scale));
  }
}

FormWindow::~FormWindow() {
  controls_.clear();
}

ui::Control* FormWindow::Find(std::u16string_view name) {
  const auto found = std::ranges::find_if(
      controls_, [&](const auto& control) { return control->description().name == name; });
  return found == controls_.end() ? nullptr : found->get();
}

Reference<css::awt::XWindowPeer> FormWindow::TopMost() {
  return Shown().empty() ? DocumentWindow() : Shown().back()->window().peer();
}

void FormWindow::ShowModal() {
  if (visible_) throw AutomationError(kFormAlreadyDisplayed);
  visible_ = true;
  failure_ = nullptr;
  // Above another form all is disabled already.
  std::optional<OthersDisabled> others_disabled;
  try {
    if (Shown().empty()) others_disabled.emplace();
    const OnTop on_top(*this);
    const Keys keys(*this);
    // LibreOffice gives the focus to the first control when it shows the dialog.
    if (to_focus_) Later([this] { Focus(*std::exchange(to_focus_, nullptr)); });
    const auto dialog = window_->As<css::awt::XDialog2>();
    while (visible_) {
      closed_ = false;
      dialog->execute();
      if (visible_ && !closed_) {
        throw FormError(kInternalError, u"LibreOffice does not show the form " + description_.name);
      }
    }
  } catch (const css::uno::Exception&) {
    Fail(std::make_exception_ptr(
        FormError(kInternalError, u"LibreOffice cannot show the form " + description_.name)));
  } catch (...) {
    Fail(std::current_exception());
  }
  others_disabled.reset();
  if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

void FormWindow::Hide() {
  if (!visible_) return;
  visible_ = false;
  window_->As<css::awt::XDialog2>()->endExecute();
}

void FormWindow::Later(std::function<void()> action) {
  Post([form = this, life = std::weak_ptr(life_), action = std::move(action)] {
    if (life.expired() || Shown().empty() || Shown().back() != form) return;
    Guarded(action, [form](std::exception_ptr failure) { form->Fail(std::move(failure)); });
  });
}

void FormWindow::Fail(std::exception_ptr failure) noexcept {
  if (!failure_) failure_ = std::move(failure);
  IgnoreFailures([this] { Hide(); });  // the dialog may be gone already
}

int FormWindow::Width() const {
  return theme_->Unscaled(window_->Size().Width);
}

int FormWindow::Height() const {
  return theme_->UnscaledDown(window_->Size().Height);
}

// --- Focus and buttons -------------------------------------------------------------------------------------

void FormWindow::Focus(FormControl& control) {
  if (const auto page = PageOf(description_, control.description())) SetPage(*page);
  if (visible_ && !to_focus_) {
    control.TakeFocus();
  } else {
    to_focus_ = &control;
  }
}

void FormWindow::FocusNext(const FormControl& from, bool forward) {
  const auto start =
      std::ranges::find_if(controls_, [&](const auto& control) { return control.get() == &from; });
  const auto count = static_cast<std::ptrdiff_t>(controls_.size());
  for (std::ptrdiff_t step = 1; step < count; ++step) {
    const std::ptrdiff_t index = (start - controls_.begin() + (forward ? step : count - step)) % count;
    FormControl& control = *controls_[static_cast<std::size_t>(index)];
    if (control.shown() && control.Enabled() && control.TakesFocus()) {
      control.TakeFocus();
      return;
    }
  }
}

void FormWindow::PressCancel() {
  if (description_.cancel_button.empty()) return Hide();
  const auto* button = dynamic_cast<const ui::Button*>(Find(description_.cancel_button));
  if (button && button->Enabled() && button->on_click) button->on_click();
}

void FormWindow::OnOpened() {
  for (const auto& control : controls_) {
    control->ShowCaption();
    if (auto* tabs = dynamic_cast<TabStrip*>(control.get())) tabs->TakeTab();
  }
}

void FormWindow::OnClosing() {
  closed_ = true;
  // A form that another one covers cannot be closed.
  if (visible_ && Shown().back() == this) PressCancel();
}

bool FormWindow::HandleKey(const css::awt::KeyEvent& event) {
  if (Shown().back() != this) return false;
  namespace key = css::awt::Key;
  const bool backward = event.KeyCode == key::PAGEUP || (event.Modifiers & css::awt::KeyModifier::SHIFT);
  if ((event.Modifiers & css::awt::KeyModifier::MOD1) && description_.pages.size() > 1 &&
      (event.KeyCode == key::TAB || event.KeyCode == key::PAGEUP || event.KeyCode == key::PAGEDOWN)) {
    const int count = static_cast<int>(description_.pages.size());
    const auto tabs = std::ranges::find_if(controls_, [](const auto& control) {
      return control->description().kind == ui::ControlKind::TabControl;
    });
    if (tabs == controls_.end()) return false;
    (*tabs)->TakeFocus();
    SetPage((page_ + (backward ? count - 1 : 1)) % count);
    return true;
  }
  const bool moves = !(event.Modifiers & css::awt::KeyModifier::MOD1) &&
                     (event.KeyCode == key::UP || event.KeyCode == key::DOWN ||
                      event.KeyCode == key::PAGEUP || event.KeyCode == key::PAGEDOWN);
  for (const auto& control : controls_) {
    if (!control->HasFocus()) continue;
    auto* other = moves ? dynamic_cast<FormControl*>(Find(control->description().keys_for)) : nullptr;
    return control->Enabled() && (other ? other : control.get())->OnKey(event);
  }
  return false;
}

// --- Pages and places --------------------------------------------------------------------------------------

void FormWindow::SetPage(int page) {
  page_ = std::clamp(page, 0, std::max(0, static_cast<int>(description_.pages.size()) - 1));
  for (const auto& control : controls_) {
    control->SetShown(PageOf(description_, control->description()).value_or(page_) == page_);
    if (auto* tabs = dynamic_cast<TabStrip*>(control.get())) tabs->ShowPage();
  }
}

void FormWindow::StartResizer(int width, int height,
                              std::function<std::optional<ui::ResizeMode>(std::u16string_view name)> mode) {
  layout_.StartResizer(width, height, mode);
  Layout();
}

std::vector<ui::Bounds> FormWindow::Places() const {
  // What becomes smaller than it started moves nothing.
  return layout_.Places(std::max(Width(), layout_.start_width()), std::max(Height(), layout_.start_height()));
}

void FormWindow::Layout() {
  const std::vector<ui::Bounds> places = Places();
  for (std::size_t i = 0; i < places.size(); ++i) controls_[i]->Place(theme_->Scaled(places[i]));
}

void FormWindow::OnResized() {
  if (controls_.size() != description_.controls.size()) return;
  const css::awt::Size size = window_->Size();
  const css::awt::Size least(Scaled(description_.width), theme_->ScaledDown(description_.height));
  if (size.Width < least.Width || size.Height < least.Height) {
    window_->window()->setOutputSize(
        {std::max(size.Width, least.Width), std::max(size.Height, least.Height)});
  }
  Layout();
  window_->Invalidate();
}

void FormWindow::OnPaint() {
  // The edge of the pages, whose controls stand on the form itself.
  const std::vector<ui::Bounds> places = Places();
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    if (controls_[i]->description().kind != ui::ControlKind::TabControl) continue;
    Painter painter(*window_, *theme_);
    Rectangle edge = theme_->Scaled(places[i]);
    const int strip = theme_->ScaledDown(kTabStripHeight) - 1;
    edge.Y += strip;
    edge.Height -= strip;
    painter.Frame(edge, theme_->shadow);
  }
}

}  // namespace qva::calc
