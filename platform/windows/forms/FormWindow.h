// A form as a window of Windows.
#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/controls.h"
#include "platform/forms/Guarded.h"
#include "platform/forms/form_layout.h"
#include "platform/windows/forms/Font.h"
#include "platform/windows/forms/Modality.h"
#include "platform/windows/forms/NativeControl.h"
#include "platform/windows/forms/OwnedWindow.h"

namespace qva::windows {

/// Its keys are those of Windows' dialogs: Tab goes from control to control in the order of the description,
/// arrows choose among the options of a group and go from button to button, Ctrl+Tab and Ctrl with the page
/// keys turn pages, Enter presses the button that has the focus or the default one, Escape the cancel button.
/// The window is of the class of Windows' dialogs, by which screen readers know one and read it aloud.
class FormWindow : public ui::Form {
 public:
  /// Made where the user is working, at the scale of that display.
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

  // For its controls.

  const ui::FormDescription& description() const { return description_; }
  HWND window() const { return window_.handle; }
  UiScale scale() const { return scale_; }
  const std::vector<std::unique_ptr<NativeControl>>& controls() const { return controls_; }
  /// The page in front.
  int page() const { return page_; }
  void ShowPage(int page);
  /// Null when the focus is nowhere on the form.
  NativeControl* Focused() const;
  /// Brings the control's page to the front and gives it the focus, at once or as soon as the form is shown.
  void Focus(NativeControl& control);
  /// Whether the control that is to have the focus can have it.
  bool HasField() const;
  /// Gives the focus to the first control that is not the row of tabs.
  void FocusFirstField();
  /// To the next (1) or the previous (-1) control.
  void MoveFocus(int step);
  /// Shows which button Enter presses: this one while it has the focus, the default one for null.
  void MarkDefault(const NativeControl* button);

  /// Ends the showing; ShowModal raises what made it fail.
  void Fail(std::exception_ptr failure) noexcept {
    if (!failure_) failure_ = std::move(failure);
    Hide();
  }
  /// Runs what Windows called; what it raises ends the showing.
  template <class Body>
  LRESULT Guard(Body&& body) {
    return Guarded(body, [this](std::exception_ptr failure) { Fail(std::move(failure)); });
  }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);

  LRESULT Handle(UINT message, WPARAM first, LPARAM second);
  void CreateControls();
  void DressControls();
  void Rescale(UiScale scale, const RECT& place);
  SIZE Inner() const;
  SIZE SmallestInner() const;
  /// The window's size around its smallest inside, or one of more pixels at 100 %.
  SIZE Outer(int width = 0, int height = 0) const;
  void PlaceControls();
  void PaintBackground(HDC context) const;
  LRESULT PageBrush(HDC context) const;
  void FindPageColor();
  NativeControl* ControlOf(HWND window) const;

  void RunLoop();
  bool TakeKey(const MSG& message);
  bool PassKey(const MSG& message, const NativeControl& from);
  bool TurnPage(int step);
  bool ChooseInGroup(NativeControl& from, int step);
  bool PressButton(std::u16string_view name);
  void Close();

  ui::FormDescription description_;
  FormLayout layout_{description_};
  UiScale scale_;
  MessageFont font_;
  std::vector<std::unique_ptr<NativeControl>> controls_;
  NativeControl* tabs_ = nullptr;
  int page_ = 0;
  COLORREF page_color_ = 0;
  NativeControl* focus_ = nullptr;  ///< the one to have the focus when the form is in front
  bool visible_ = false;
  std::optional<OthersDisabled> others_;
  std::exception_ptr failure_;
  OwnedWindow window_;
};

/// Gives native forms.
class NativeForms : public ui::FormFactory {
 public:
  std::unique_ptr<ui::Form> Create(const ui::FormDescription& description) override {
    return std::make_unique<FormWindow>(description);
  }
};

}  // namespace qva::windows
