// The cells of grids and calendars, each a control of the toolkit: assistive technology finds there what
// stands in them.
#pragma once

#include <deque>
#include <string>
#include <utility>

#include "platform/calc/Uno.h"
#include "platform/calc/forms/InnerWindow.h"
#include "platform/forms/grid_state.h"

namespace qva::calc {

class CellWindow;

/// What happens to cells.
class CellOwner {
 public:
  virtual void CellFocused(CellWindow& cell, bool gained) = 0;
  virtual void CellPressed(CellWindow& cell, int clicks) = 0;
  /// The user has changed the text, or turned the mark.
  virtual void CellChanged(CellWindow& cell) = 0;
  /// Who is told of failures.
  virtual EventTarget& target() = 0;

 protected:
  ~CellOwner() = default;
};

/// A text that is only read, and no label: to assistive technology that would be the name of all fields after
/// it.
class Caption : public InnerWindow {
 public:
  Caption(EventTarget& owner, const Reference<css::awt::XWindowPeer>& parent, std::u16string_view text);
};

/// One cell in sight: a line of text, or a mark.
class CellWindow final : public EventTarget {
 public:
  CellWindow(CellOwner& owner, const Reference<css::awt::XWindowPeer>& parent, const ui::GridColumn& column);

  const Window& window() const { return window_; }
  /// What assistive technology calls the cell.
  void SetName(std::u16string_view name);
  std::u16string Text() const;
  /// Shows a text; for a mark that of a Boolean.
  void SetText(std::u16string_view text);
  void SetColors(sal_Int32 background, sal_Int32 text);
  void SelectAll() const;
  void MoveCaretToEnd() const;

  GridCell cell;  ///< which it shows now

 private:
  bool IsOn() const;
  void OnTextChanged() override;
  void OnItemChanged() override;
  void OnFocus(bool gained) override { owner_.CellFocused(*this, gained); }
  void OnMousePressed(const MousePress& press) override { owner_.CellPressed(*this, press.clicks); }
  void OnFailure(std::exception_ptr failure) noexcept override {
    owner_.target().OnFailure(std::move(failure));
  }

  CellOwner& owner_;
  const bool is_mark_;
  const Window window_;
  std::u16string name_;
  std::u16string text_;                             ///< of which the owner knows
  std::pair<sal_Int32, sal_Int32> colors_{-1, -1};  ///< none yet
};

/// A column's caption, and its cells in sight.
class CellColumn {
 public:
  CellColumn(CellOwner& owner, const Reference<css::awt::XWindowPeer>& parent, const ui::GridColumn& column,
             std::size_t lines);
  const Window& caption() const { return caption_.window; }
  /// The cell in which a line is shown while it is in sight. A line next to it is shown in another one, so
  /// that the focus goes from cell to cell also where they are scrolled.
  CellWindow& CellOf(std::size_t line) { return cells_[line % cells_.size()]; }

 private:
  Caption caption_;
  std::deque<CellWindow> cells_;
};

}  // namespace qva::calc
