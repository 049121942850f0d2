// Rows of which the user picks one.
#pragma once

#include "platform/forms/grid_state.h"
#include "platform/windows/forms/NativeControl.h"

#include <commctrl.h>

namespace qva::windows {

/// A grid that is only read, over Windows' own list: it has the texts of the rows in sight alone, and its
/// last column takes what the others leave.
class NativeList : public NativeControl, public ui::Grid {
 public:
  NativeList(FormWindow& form, const ui::ControlDescription& description);
  void SetColumns(std::vector<ui::GridColumn> columns) override;
  void SetModel(ui::GridModel* model) override;
  void Refresh() override;
  std::optional<std::size_t> CurrentRow() const override { return state_.CurrentRow(); }
  /// The row comes into sight.
  void SetCurrentRow(std::size_t row) override;

  LRESULT Answer(NMHDR& notice) override;
  void Dress(HFONT font, UiScale scale) override;
  void Place(const RECT& place) override;

 private:
  void Tell(LVITEMW& item) const;
  LRESULT Draw(NMLVCUSTOMDRAW& draw) const;
  void Mark(WPARAM line, UINT state);
  void FitLastColumn();

  GridState state_;
  UiScale scale_;
};

}  // namespace qva::windows
