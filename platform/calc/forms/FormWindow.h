// A form in a window of LibreOffice.
#pragma once

#include <com/sun/star/awt/XDialog2.hpp>
#include <com/sun/star/awt/XKeyHandler.hpp>
#include <memory>
#include <vector>

#include "platform/calc/Uno.h"
#include "platform/calc/forms/FormControl.h"
#include "platform/calc/forms/Theme.h"
#include "platform/forms/form_layout.h"

namespace qva::calc {

/// A modal dialog above the document's window, or above the form that is shown already. LibreOffice's own
/// dialog does Tab, Enter and Escape.
class FormWindow : public ui::Form, public EventTarget {
 public:
  /// Raises 51 for a description that contradicts itself, 7 when LibreOffice gives no window.
  explicit FormWindow(const ui::FormDescription& description);
  ~FormWindow() override;

  ui::Control* Find(std::u16string_view name) override;
  void ShowModal() override;
  void Hide() override;
  bool Visible() const override { return visible_; }
  int Width() const override;
  int Height() const override;
  void StartResizer(int width, int height,
                    std::function<std::optional<ui::ResizeMode>(std::u16string_view name)> mode) override;

  /// The window above which the next one appears; null when there is none.
  static Reference<css::awt::XWindowPeer> TopMost();

  // For the controls.
  const ui::FormDescription& description() const { return description_; }
  const Window& window() const { return *window_; }
  const Theme& theme() const { return *theme_; }
  /// Pixels of the screen for pixels at 100 % scale.
  int Scaled(int length) const { return theme_->Scaled(length); }
  /// Brings the control's page to the front and moves the focus there, once the form is shown.
  void Focus(FormControl& control);
  /// Moves the focus on from a control, as the Tab key does.
  void FocusNext(const FormControl& from, bool forward);
  /// Brings a page of the tab control to the front.
  void SetPage(int page);
  int page() const { return page_; }
  const std::vector<std::unique_ptr<FormControl>>& controls() const { return controls_; }
  /// Does something as the next event, unless the form is no longer the one on top then: what opens another
  /// window must not happen in the middle of an event, nor twice for a double-click.
  void Later(std::function<void()> action);
  /// Takes a key before the window that has the focus; true keeps it from going there.
  bool HandleKey(const css::awt::KeyEvent& event);
  /// Ends the form; ShowModal raises what made it fail.
  void Fail(std::exception_ptr failure) noexcept;

 private:
  class KeyLink;
  class Keys;
  void StretchForFields();

  /// What Escape and closing the window do.
  void PressCancel();
  void Layout();
  /// The controls' places in pixels at 100 % scale.
  std::vector<ui::Bounds> Places() const;

  void OnPaint() override;
  void OnOpened() override;
  void OnClosing() override;
  void OnResized() override;
  void OnFailure(std::exception_ptr failure) noexcept override { Fail(std::move(failure)); }

  ui::FormDescription description_;
  FormLayout layout_{description_};
  std::unique_ptr<Window> window_;
  std::unique_ptr<Theme> theme_;
  std::vector<std::unique_ptr<FormControl>> controls_;
  /// Gone with the form, at whose place in memory another one may stand by the next event.
  std::shared_ptr<bool> life_ = std::make_shared<bool>();
  FormControl* to_focus_ = nullptr;  ///< once the form is shown
  int page_ = 0;
  bool visible_ = false;
  bool closed_ = false;  ///< LibreOffice has ended the dialog, since the user closed its window
  std::exception_ptr failure_;
};

}  // namespace qva::calc
