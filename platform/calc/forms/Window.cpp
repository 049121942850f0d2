#include "platform/calc/forms/Window.h"

#include <com/sun/star/awt/InvalidateStyle.hpp>
#include <com/sun/star/awt/MouseButton.hpp>
#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/WindowDescriptor.hpp>
#include <com/sun/star/awt/XButton.hpp>
#include <com/sun/star/awt/XCheckBox.hpp>
#include <com/sun/star/awt/XRadioButton.hpp>
#include <com/sun/star/awt/XScrollBar.hpp>
#include <com/sun/star/awt/XSimpleTabController.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/awt/XVclWindowPeer.hpp>
#include <cppuhelper/implbase10.hxx>

#include "platform/calc/EventLoop.h"
#include "platform/calc/UnoText.h"
#include "platform/forms/Guarded.h"
#include "platform/text.h"

namespace qva::calc {

/// The listener of a window. It may outlive the window's owner in LibreOffice's hands; it tells nobody then.
class EventLink : public cppu::WeakImplHelper10<css::awt::XTextListener, css::awt::XItemListener,
                                                css::awt::XActionListener, css::awt::XFocusListener,
                                                css::awt::XMouseListener, css::awt::XPaintListener,
                                                css::awt::XTopWindowListener, css::awt::XWindowListener,
                                                css::awt::XAdjustmentListener, css::awt::XTabListener> {
 public:
  explicit EventLink(EventTarget& target) : target_(&target) {}
  void Cut() { target_ = nullptr; }

  void SAL_CALL textChanged(const css::awt::TextEvent&) override { Tell(&EventTarget::OnTextChanged); }
  void SAL_CALL itemStateChanged(const css::awt::ItemEvent&) override { Tell(&EventTarget::OnItemChanged); }
  void SAL_CALL actionPerformed(const css::awt::ActionEvent&) override {
    TellLater([](EventTarget& target) { target.OnAction(); });
  }
  void SAL_CALL focusGained(const css::awt::FocusEvent&) override { Tell(&EventTarget::OnFocus, true); }
  void SAL_CALL focusLost(const css::awt::FocusEvent&) override { Tell(&EventTarget::OnFocus, false); }
  void SAL_CALL mousePressed(const css::awt::MouseEvent& event) override {
    if (event.Buttons != css::awt::MouseButton::LEFT) return;
    const MousePress press{event.X, event.Y, event.ClickCount};
    TellLater([press](EventTarget& target) { target.OnMousePressed(press); });
  }
  void SAL_CALL mouseReleased(const css::awt::MouseEvent&) override {}
  void SAL_CALL mouseEntered(const css::awt::MouseEvent&) override {}
  void SAL_CALL mouseExited(const css::awt::MouseEvent&) override {}
  void SAL_CALL windowPaint(const css::awt::PaintEvent&) override { Tell(&EventTarget::OnPaint); }
  void SAL_CALL windowOpened(const css::lang::EventObject&) override { Tell(&EventTarget::OnOpened); }
  void SAL_CALL windowClosing(const css::lang::EventObject&) override { Tell(&EventTarget::OnClosing); }
  void SAL_CALL windowClosed(const css::lang::EventObject&) override {}
  void SAL_CALL windowMinimized(const css::lang::EventObject&) override {}
  void SAL_CALL windowNormalized(const css::lang::EventObject&) override {}
  void SAL_CALL windowActivated(const css::lang::EventObject&) override {}
  void SAL_CALL windowDeactivated(const css::lang::EventObject&) override {}
  void SAL_CALL windowResized(const css::awt::WindowEvent&) override { Tell(&EventTarget::OnResized); }
  void SAL_CALL windowMoved(const css::awt::WindowEvent&) override {}
  void SAL_CALL windowShown(const css::lang::EventObject&) override {}
  void SAL_CALL windowHidden(const css::lang::EventObject&) override {}
  void SAL_CALL adjustmentValueChanged(const css::awt::AdjustmentEvent&) override {
    TellLater([](EventTarget& target) { target.OnScrolled(); });
  }
  void SAL_CALL inserted(sal_Int32) override {}
  void SAL_CALL removed(sal_Int32) override {}
  void SAL_CALL changed(sal_Int32, const Sequence<css::beans::NamedValue>&) override {}
  void SAL_CALL activated(sal_Int32) override { Tell(&EventTarget::OnTabActivated); }
  void SAL_CALL deactivated(sal_Int32) override {}
  void SAL_CALL disposing(const css::lang::EventObject&) override {}

 private:
  template <class Event, class... Arguments>
  void Tell(Event event, Arguments... arguments) {
    const rtl::Reference<EventLink> alive(this);
    if (target_) TellingFailures([&] { (target_->*event)(arguments...); });
  }

  // The toolkit reports these without LibreOffice's lock, which whoever handles them needs.
  template <class Report>
  void TellLater(Report report) {
    TellingFailures([&] {
      Post([link = rtl::Reference<EventLink>(this), report] {
        if (link->target_) link->TellingFailures([&] { report(*link->target_); });
      });
    });
  }

  /// What fails is told to the target, unless it is gone by then.
  template <class Body>
  void TellingFailures(Body&& body) {
    Guarded(body, [this](std::exception_ptr failure) {
      if (target_) target_->OnFailure(std::move(failure));
    });
  }

  EventTarget* target_;
};

Window::Window(const char* service, const Reference<css::awt::XWindowPeer>& parent, sal_Int32 attributes,
               EventTarget& target)
    : Window(target) {  // so that the destructor clears up after a failure below
  css::awt::WindowDescriptor description;
  description.Type = OUString::createFromAscii(service) == "dialog" ? css::awt::WindowClass_TOP
                                                                    : css::awt::WindowClass_SIMPLE;
  description.WindowServiceName = OUString::createFromAscii(service);
  description.Parent = parent;
  description.ParentIndex = -1;
  description.WindowAttributes = attributes;
  peer_ = Toolkit()->createWindow(description);

  const Reference<css::awt::XWindow2> window = this->window();
  window->addFocusListener(link_.get());
  window->addMouseListener(link_.get());
  window->addPaintListener(link_.get());
  window->addWindowListener(link_.get());
  if (const Reference<css::awt::XTextComponent> text(peer_, UNO_QUERY); text.is())
    text->addTextListener(link_.get());
  if (const Reference<css::awt::XRadioButton> radio(peer_, UNO_QUERY); radio.is())
    radio->addItemListener(link_.get());
  if (const Reference<css::awt::XCheckBox> box(peer_, UNO_QUERY); box.is()) box->addItemListener(link_.get());
  if (const Reference<css::awt::XButton> button(peer_, UNO_QUERY); button.is())
    button->addActionListener(link_.get());
  if (const Reference<css::awt::XTopWindow> top(peer_, UNO_QUERY); top.is())
    top->addTopWindowListener(link_.get());
  if (const Reference<css::awt::XScrollBar> bar(peer_, UNO_QUERY); bar.is())
    bar->addAdjustmentListener(link_.get());
  if (const Reference<css::awt::XSimpleTabController> tabs(peer_, UNO_QUERY); tabs.is())
    tabs->addTabListener(link_.get());
}

Window::Window(EventTarget& target) : link_(new EventLink(target)) {
}

Window::~Window() {
  link_->Cut();
  // LibreOffice may have been quicker.
  IgnoreFailures([&] { Reference<css::lang::XComponent>(peer_, UNO_QUERY_THROW)->dispose(); });
}

// "Deprecated" is how the header marks what is not promised for ever; windows without a model of their own
// have no other properties.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

void Window::SetProperty(const char* name, const Any& value) const {
  As<css::awt::XVclWindowPeer>()->setProperty(OUString::createFromAscii(name), value);
}

#pragma GCC diagnostic pop

void Window::SetCaption(std::u16string_view caption) const {
  // A single tilde would underline the letter behind it.
  SetProperty("Text", Any(ToUno(ReplaceAll(caption, u"~", u"~~"))));
}

void Window::Place(const css::awt::Rectangle& pixels) const {
  window()->setPosSize(pixels.X, pixels.Y, pixels.Width, pixels.Height, css::awt::PosSize::POSSIZE);
}

css::awt::Size Window::Size() const {
  return window()->getOutputSize();
}

void Window::Invalidate() const {
  peer_->invalidate(css::awt::InvalidateStyle::NOERASE | css::awt::InvalidateStyle::NOCHILDREN);
}

}  // namespace qva::calc
