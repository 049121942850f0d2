// What the controls of a form share.
#pragma once

#include <optional>
#include <string>

#include "platform/controls.h"
#include "platform/windows/WindowsApi.h"
#include "platform/windows/forms/UiScale.h"

namespace qva::windows {

class FormWindow;

/// A control over one of Windows' own. All controls are children of the form itself, those in frames and on
/// pages, too. The window goes with the form's.
class NativeControl : public virtual ui::Control {
 public:
  NativeControl(FormWindow& form, const ui::ControlDescription& description);
  NativeControl(const NativeControl&) = delete;
  NativeControl& operator=(const NativeControl&) = delete;

  std::u16string Name() const override { return description_.name; }
  bool Enabled() const override { return IsWindowEnabled(window_) != FALSE; }
  void SetEnabled(bool enabled) override;
  void SetFocus() override;

  const ui::ControlDescription& description() const { return description_; }
  HWND window() const { return window_; }
  /// The page that it stands on, in a frame or not; nothing for those that always show.
  std::optional<int> page() const { return page_; }
  /// Whether its page is in front.
  bool IsShown() const;
  /// Whether Tab may stop here.
  virtual bool IsTabStop() const;

  /// A notice of the window to its parent: WM_COMMAND's code, WM_NOTIFY's header.
  virtual void OnCommand(WORD code);
  virtual void OnNotify(const NMHDR& notice);
  /// The same for those by which Windows asks for something, with what it is to get.
  virtual LRESULT Answer(NMHDR& notice);

  /// Writes in a font, which is borrowed, on a display of this scale.
  virtual void Dress(HFONT font, UiScale scale);
  /// The size that it must have whatever the description says, in pixels of the display.
  virtual std::optional<SIZE> NaturalSize() const;
  virtual void Place(const RECT& place);

 protected:
  FormWindow& form() const { return form_; }
  /// Makes the window, hidden and without a size. Raises 7 when Windows has none to give.
  void Create(const wchar_t* window_class, const std::wstring& text, DWORD style, DWORD extended_style = 0);
  /// Where a field stands in its place: in the middle, and as high as its text needs, since Windows writes at
  /// the upper edge of one that is higher.
  RECT FieldIn(RECT place) const;
  void Adopt(HWND window) { window_ = window; }
  int Id() const;

  /// From now on Handle sees the window's messages first.
  void Observe();
  virtual LRESULT Handle(UINT message, WPARAM first, LPARAM second);
  LRESULT Send(UINT message, WPARAM first = 0, LPARAM second = 0) const {
    return SendMessageW(window_, message, first, second);
  }
  static void Raise(const std::function<void()>& event) {
    if (event) event();
  }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                    DWORD_PTR control);

  FormWindow& form_;
  const ui::ControlDescription& description_;
  std::optional<int> page_;
  HWND window_ = nullptr;
};

/// A new control of the form as described.
std::unique_ptr<NativeControl> MakeControl(FormWindow& form, const ui::ControlDescription& description);

}  // namespace qva::windows
