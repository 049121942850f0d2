// The table of cells on a form, as a window of its own.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/forms/Guarded.h"
#include "platform/forms/grid_state.h"
#include "platform/windows/forms/GridAccessible.h"
#include "platform/windows/forms/GridEditor.h"
#include "platform/windows/forms/GridLayout.h"
#include "platform/windows/forms/GridPainter.h"
#include "platform/windows/forms/OwnedWindow.h"
#include "platform/windows/forms/UiScale.h"
#include "platform/windows/forms/WindowClass.h"

namespace qva::windows {

/// A grid that is worked with keys and mouse:
///   arrows, Home, End, page keys   move the current cell; Ctrl with Home and End goes to the corners
///   Tab, Shift+Tab                 go cell by cell, and at the ends on to the form's next control
///   F2, double click               edit the cell's text; typing edits, too, and replaces it
///   Enter; Escape                  end editing: stored; as it was before. Otherwise they are the form's
///   F4, Alt+Down, the button "…"   press the current cell's button
///   Space, click                   turn a mark over that can be changed
///   Delete                         deletes the row
/// Moving, clicking elsewhere and losing the focus store the text, if it was changed at all. A text that the
/// model refuses is gone, and a key that would have moved does not. Below the rows stands an empty line; what
/// is done there first makes a row, which goes again when nothing came of it.
/// Columns without width are not shown. Screen readers see the cells (GridAccessible).
///
/// What the model raises where Windows or a screen reader called goes to the grid's sink.
class GridControl : public ui::Grid, private GridEditor::Owner, private AccessibleGrid {
 public:
  /// Makes the window, a child of `parent` without a size. It lives until the control or the parent goes.
  /// Raises 7 when Windows has no window to give.
  GridControl(HWND parent, int id, std::u16string name, const UiScale& scale, FailureSink sink);
  GridControl(const GridControl&) = delete;
  GridControl& operator=(const GridControl&) = delete;
  ~GridControl() override;

  /// Null when the parent took it along.
  HWND window() const override { return window_.handle; }
  /// The font is borrowed. Null is Windows' oldest one.
  void SetFont(HFONT font);
  /// Shows the columns in the same proportions on a display of another scale. The font comes apart.
  void Rescale(const UiScale& scale);

  std::u16string Name() const override { return name_; }
  bool Enabled() const override { return IsWindowEnabled(window()) != FALSE; }
  void SetEnabled(bool enabled) override { EnableWindow(window(), enabled); }
  void SetFocus() override { ::SetFocus(window()); }

  void SetColumns(std::vector<ui::GridColumn> columns) override;
  void SetModel(ui::GridModel* model) override;
  /// What is being edited is given up.
  void Refresh() override;
  std::optional<std::size_t> CurrentRow() const override { return state_.CurrentRow(); }
  /// A row that is not there is passed over. The row comes into sight.
  void SetCurrentRow(std::size_t row) override;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  static WindowClass class_;

  LRESULT Handle(UINT message, WPARAM first, LPARAM second);
  void Fail(std::exception_ptr failure) noexcept override { sink_(std::move(failure)); }
  const GridState& state() const override { return state_; }
  const GridLayout& layout() const override { return layout_; }
  void GoTo(GridCell cell) override;
  void Activate() override;
  bool Enter(std::u16string_view text) override;
  LRESULT HandleHeader(const NMHDR& notice);
  void Paint();
  bool EditorKey(UINT key, bool alt) override;
  void EditorLeft() override;
  /// False for a key that does nothing here.
  bool PressKey(UINT key);
  void TypeCharacter(WPARAM character);
  void PressMouse(POINT place, bool is_double);
  void TrackMouse(POINT place);
  void ReleaseMouse();
  void TurnWheel(int delta);

  RECT CurrentButton() const;
  std::optional<GridCell> Target(UINT key) const;
  void MoveTo(GridCell cell);
  /// What the state has become, in sight.
  void Show();
  void BeginEdit(bool keep_text);
  /// False when the model refused the text.
  bool EndEdit(bool store);
  void PressCellButton();
  void Invalidate() { InvalidateRect(window(), nullptr, FALSE); }

  std::u16string name_;
  UiScale scale_;
  FailureSink sink_;
  WindowClassUse class_use_{class_};
  HWND header_ = nullptr;
  HFONT font_ = nullptr;
  GridLayout layout_;
  GridEditor editor_;
  GridState state_;
  bool is_tracking_ = false;  ///< the mouse went down on the cell's button
  bool is_button_pressed_ = false;
  ComPtr<GridAccessible> accessible_{new GridAccessible(*this)};
  int wheel_ = 0;  ///< what is left of a turn that was no whole line
  OwnedWindow window_;
};

}  // namespace qva::windows
