// What the controls of a form have in common.
#pragma once

#include <optional>
#include <string>

#include "platform/calc/forms/Window.h"
#include "platform/controls.h"

namespace qva::calc {

class FormWindow;

/// A control that is a window of the toolkit on the form's own window: also the controls of frames and pages
/// stand there, so that the tab order is the order of creation.
class FormControl : public virtual ui::Control, public EventTarget {
 public:
  /// `service` and `attributes` as for Window.
  FormControl(FormWindow& form, const ui::ControlDescription& description, const char* service,
              sal_Int32 attributes);

  std::u16string Name() const override { return description_.name; }
  bool Enabled() const override { return enabled_; }
  void SetEnabled(bool enabled) override;
  void SetFocus() override;

  /// Has LibreOffice show the caption exactly as it was given: it underlines a letter of each caption when it
  /// first shows a dialog.
  void ShowCaption();

  const ui::ControlDescription& description() const { return description_; }
  const Window& window() const { return window_; }
  /// In the form's pixels.
  virtual void Place(const css::awt::Rectangle& pixels) { window_.Place(pixels); }
  /// Whether the control's page is in front.
  virtual void SetShown(bool shown);
  bool shown() const { return shown_; }
  /// Whether the user can move the focus here by the Tab key.
  virtual bool TakesFocus() const { return true; }
  /// Takes the keyboard's focus; the control is enabled and on the page in front.
  virtual void TakeFocus() { window_.window()->setFocus(); }
  /// Whether keys go to the control, or to a window within it.
  virtual bool HasFocus() const { return window_.window()->hasFocus(); }
  /// A key was pressed in one of the control's windows, before it goes there. True keeps it from going there.
  virtual bool OnKey(const css::awt::KeyEvent&) { return false; }

  void OnFailure(std::exception_ptr failure) noexcept override;

 protected:
  /// The caption of a control that has one.
  void SetWindowCaption(std::u16string_view caption);
  const std::optional<std::u16string>& caption() const { return caption_; }
  FormWindow& form() const { return form_; }

 private:
  FormWindow& form_;
  const ui::ControlDescription& description_;
  Window window_;
  std::optional<std::u16string> caption_;
  bool enabled_ = true;
  bool shown_ = false;
};

/// The control of a description, by its kind. Raises 51 for an unknown kind.
std::unique_ptr<FormControl> MakeControl(FormWindow& form, const ui::ControlDescription& description);

}  // namespace qva::calc
