// The field in which a cell of a grid is edited.
#pragma once

#include <functional>
#include <string>

#include "platform/calc/forms/Window.h"

namespace qva::calc {

class FormControl;

/// A line of text within a control's window, hidden at first.
class GridEditor : public EventTarget {
 public:
  explicit GridEditor(FormControl& owner);

  /// Shows a text, all of it marked, or with the caret at its end.
  void Open(const css::awt::Rectangle& place, std::u16string_view text, bool marked);
  /// Hides the field; who wants the focus takes it before.
  void Close();
  bool is_open() const { return is_open_; }
  std::u16string Text() const;
  /// Whether the user has changed the text.
  bool changed() const { return changed_; }
  bool HasFocus() const { return window_.window()->hasFocus(); }

  std::function<void()> on_left;  ///< the focus went elsewhere while the field was open

 private:
  void OnTextChanged() override;
  void OnFocus(bool gained) override;
  void OnFailure(std::exception_ptr failure) noexcept override;

  FormControl& owner_;
  Window window_;
  bool is_open_ = false;
  bool changed_ = false;
};

}  // namespace qva::calc
