// Forms that exist in memory alone: for tests, and for reports that are made where no user sits.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/controls.h"

namespace qva {

/// What no user could do with a form: 5 (Invalid procedure call), with a description that names the control.
class ImpossibleStep : public AutomationError {
 public:
  explicit ImpossibleStep(std::u16string description)
      : AutomationError(kInvalidProcedureCall, std::move(description)) {}
};

/// A form whose controls behave as desktop controls do, without a window. While it is shown, a function takes
/// the user's place. It works the form through the operations below, which do what mouse and keyboard would
/// do and so reach only controls that are there, enabled and of a kind that takes the gesture; otherwise they
/// raise an ImpossibleStep. What a handler raises passes on.
class MemoryForm : public ui::Form {
 public:
  using User = std::function<void(MemoryForm& form)>;

  /// Raises 51 for a description that contradicts itself.
  MemoryForm(const ui::FormDescription& description, User user);
  ~MemoryForm() override;

  const ui::FormDescription& description() const { return description_; }

  ui::Control* Find(std::u16string_view name) override;
  /// Lets the user act; one who leaves the form open closes its window in the end. What the user raises
  /// passes on; the form is hidden then.
  void ShowModal() override;
  void Hide() override { visible_ = false; }
  bool Visible() const override { return visible_; }
  int Width() const override { return std::max(description_.width, description_.first_width); }
  int Height() const override { return std::max(description_.height, description_.first_height); }
  void StartResizer(int width, int height,
                    std::function<std::optional<ui::ResizeMode>(std::u16string_view name)> mode) override;

  /// Clicks an option or a button.
  void Click(std::u16string_view name);
  /// Replaces the content of a text box or combo box, character by character.
  void Type(std::u16string_view name, std::u16string_view text);
  /// Chooses a date in a date picker or clicks a day of a month.
  void PickDate(std::u16string_view name, Date date);
  /// Double-clicks a day of a month.
  void DoubleClickDay(std::u16string_view name, Date day);
  /// Presses a key with a character in a month.
  void PressKey(std::u16string_view name, int character);
  /// Types into a cell of a grid and leaves it; the row behind the last one makes a new row, which goes again
  /// when its first text is refused. False when the text was refused.
  bool TypeCell(std::u16string_view grid, std::size_t row, std::u16string_view column,
                std::u16string_view text);
  /// Presses the button in a cell of a grid.
  void PressCellButton(std::u16string_view grid, std::size_t row, std::u16string_view column);
  /// Makes a row of a grid the current one.
  void SelectRow(std::u16string_view grid, std::size_t row);
  /// Double-clicks a row of a grid that is only read.
  void DoubleClickRow(std::u16string_view grid, std::size_t row);
  /// Closes the window: presses the cancel button, or hides a form that has none.
  void CloseWindow();

  /// What a control shows: caption, text, code, date, or "1" and "0" of an option.
  std::u16string Text(std::u16string_view name);
  /// What a combo box offers.
  const std::vector<ui::ComboBox::Item>& Items(std::u16string_view combo_box);
  /// What a cell of a grid shows.
  std::u16string CellText(std::u16string_view grid, std::size_t row, std::u16string_view column);
  std::size_t RowCount(std::u16string_view grid);
  std::vector<ui::GridColumn> Columns(std::u16string_view grid);

  /// The control that has the focus; empty when none was given it.
  const std::u16string& focused() const { return focused_; }
  /// What the program said of the controls' resize modes; those left at their default are not in it.
  const std::map<std::u16string, ui::ResizeMode>& resize_modes() const { return resize_modes_; }
  /// The width and height that the resizer was started from; nothing where it was not.
  const std::optional<std::pair<int, int>>& resizer_start() const { return resizer_start_; }

 private:
  friend class MemoryControl;
  struct Entry {
    const ui::ControlDescription* description;
    std::unique_ptr<ui::Control> control;
  };

  template <class T>
  T& Usable(std::u16string_view name, const char16_t* gesture);
  template <class T>
  T* As(std::u16string_view name);

  ui::FormDescription description_;
  User user_;
  std::vector<Entry> controls_;
  bool visible_ = false;
  std::u16string focused_;
  std::map<std::u16string, ui::ResizeMode> resize_modes_;
  std::optional<std::pair<int, int>> resizer_start_;
};

}  // namespace qva
