// Windows of the library's own and the controls on them. The library describes a form; the platform builds it
// from its own controls, or answers it from a file where no user sits.
//
// Events are raised exactly when a desktop control raises them: also when the program changes the value, and
// not when the new value is the old one.
//
// A handler may raise, and so may the model of a grid. That ends the showing: the form is hidden, and
// ShowModal raises what was raised; where several were, the first of it. While the program sets a value, the
// setter may raise it instead.
//
// Forms and controls are of one thread. What an operation takes by value or as a view is its own afterwards;
// what is borrowed says so. Apart from what handlers and models raise, no operation raises but those that say
// so.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/error.h"
#include "platform/value.h"

namespace qva::ui {

enum class ControlKind {
  Label,
  TextBox,
  OptionButton,
  Frame,
  ComboBox,
  DatePicker,
  MonthView,
  TabControl,
  Grid,
  Button
};

/// A place in pixels of a display at 100 % scale; the platform scales it.
struct Bounds {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

/// One control of a form.
struct ControlDescription {
  ControlKind kind = ControlKind::Label;
  std::u16string name;
  std::u16string caption;  ///< of a Label, OptionButton, Frame or Button; a TextBox's first text
  Bounds bounds;           ///< within the parent
  std::u16string parent;   ///< the Frame or TabControl that it stands in; empty for the form itself
  int page = 0;            ///< of a TabControl, from 0
  /// A TextBox that shows its text like a label: without a frame, and no place for the focus. A Grid of whole
  /// rows, one of which is picked; its columns are read_only, too.
  bool read_only = false;
  std::u16string keys_for;  ///< the Grid to which Up, Down and the page keys go that are pressed here
};

/// A form. The order of the controls is the tab order; a parent stands before what stands in it.
struct FormDescription {
  std::u16string name;
  std::u16string caption;
  int width = 0;  ///< of the inner area, in pixels at 100 % scale; also the smallest size
  int height = 0;
  int first_width = 0;  ///< what it has at first, where that is more
  int first_height = 0;
  bool resizable = false;
  std::vector<std::u16string> pages;  ///< captions of the TabControl's pages
  std::u16string default_button;      ///< pressed by Enter
  std::u16string cancel_button;       ///< pressed by Escape and by closing the window
  std::vector<ControlDescription> controls;
};

/// What becomes of a control when its form is resized, by the numbers that the host's resizer knows.
enum class ResizeMode : std::int32_t {
  MoveWithWidth = 4,     ///< keeps its size and its distance from the right edge
  StretchWithWidth = 5,  ///< keeps its distances from both sides
};

/// Base of all controls. They belong to their form and live as long as it does.
class Control {
 public:
  virtual ~Control() = default;
  /// By the description; never changes.
  virtual std::u16string Name() const = 0;
  /// Whether the user can work it; at first he can.
  virtual bool Enabled() const = 0;
  /// Lets the user work it or keeps him from it. The program can set its value all the same.
  virtual void SetEnabled(bool enabled) = 0;
  /// Moves the keyboard's focus here, to another page, too: at once or, while the form is hidden, when it is
  /// shown. The control is one that the user can work.
  virtual void SetFocus() = 0;
};

/// Text that the user only reads.
class Label : public virtual Control {
 public:
  /// What it shows; at first the description's caption.
  virtual std::u16string Caption() const = 0;
  /// Shows another text, as it is.
  virtual void SetCaption(std::u16string_view caption) = 0;
};

/// One line of text.
class TextBox : public virtual Control {
 public:
  /// What stands in it, by whomever; at first the description's caption.
  virtual std::u16string Text() const = 0;
  /// Replaces the text. One that is too long is cut.
  virtual void SetText(std::u16string_view text) = 0;
  /// In UTF-16 units; 0 means no limit, as at first. Concerns what is set or typed from now on.
  virtual void SetMaxLength(int length) = 0;

  std::function<void()> on_change;  ///< the text has changed
};

/// One of a group of options: those of one frame. Selecting one clears the others.
class OptionButton : public virtual Control {
 public:
  /// At first none of a group is.
  virtual bool Selected() const = 0;
  /// Selects it, as a click does. Nothing happens when it is selected already.
  virtual void Select() = 0;

  std::function<void()> on_click;  ///< it has become the selected one
};

/// A list that drops down, of codes with a text each.
class ComboBox : public virtual Control {
 public:
  struct Item {
    std::u16string code;
    std::u16string text;
  };
  /// Replaces the list. The code in the field stays, whether it is in the new list or not.
  virtual void SetItems(std::vector<Item> items) = 0;
  /// The code that is selected or typed; empty when none is.
  virtual std::u16string Value() const = 0;
  /// Puts a code into the field. One that is no item's stands there all the same.
  virtual void SetValue(std::u16string_view code) = 0;
};

/// A field for a date, without time.
class DatePicker : public virtual Control {
 public:
  /// The day that it shows, without time.
  virtual Date Value() const = 0;
  /// Shows a day; its time is cut off. Raises 380 (Invalid property value) outside 1 January 1753 … 31
  /// December 9999, which no picker can show; the day before stays.
  virtual void SetValue(Date value) = 0;
  /// The custom format of what is shown: "yyyy", "MM" and "dd", other characters as they stand.
  virtual void SetFormat(std::u16string_view format) = 0;

  std::function<void()> on_change;  ///< the date has changed
};

/// A month of days, of which one is selected. A platform that draws its own months has them in their own
/// size, not in that of the bounds; the form is wider and higher by the difference.
class MonthView : public virtual Control {
 public:
  /// The day that is selected, without time.
  virtual Date Value() const = 0;
  /// Selects a day and shows its month. Fails as DatePicker::SetValue does.
  virtual void SetValue(Date value) = 0;

  std::function<void()> on_day_double_click;        ///< a day was picked; it is the value already
  std::function<void(int character)> on_key_press;  ///< a key with a character, Enter is 13, Escape 27
};

/// Pages, one of which is in front.
class TabControl : public virtual Control {
 public:
  /// The page in front, from 0.
  virtual int Page() const = 0;
  /// Brings a page that there is to the front.
  virtual void SetPage(int page) = 0;
};

/// Pressed by the user.
class Button : public virtual Control {
 public:
  std::function<void()> on_click;
};

struct GridColumn {
  std::u16string name;
  std::u16string caption;
  int width = 0;  ///< in pixels at 100 % scale
  bool read_only = false;
  bool cell_button = false;  ///< the current cell shows a button
  bool check_box = false;    ///< a Boolean, shown as a mark
};

/// What a grid shows, and what happens to what the user does in it: the program's side of a grid. Rows and
/// columns count from 0; the grid asks for those alone that there are. After each change of a row or a text,
/// on the grid's behalf too, the model asks for a Refresh.
class GridModel {
 public:
  virtual ~GridModel() = default;
  /// How many rows there are now.
  virtual std::size_t RowCount() const = 0;
  /// What a cell shows; of a Boolean "True" or "False".
  virtual std::u16string CellText(std::size_t row, std::size_t column) const = 0;

  // Nobody calls these of a grid that is only read.

  /// Stores what was typed; false refuses it, and the cell keeps its value.
  virtual bool SetCellText(std::size_t /*row*/, std::size_t /*column*/, std::u16string_view /*text*/) {
    return false;
  }
  /// Adds a row at the end, for the grid's empty last line. A model that takes none leaves RowCount as it is.
  virtual void AppendRow() {}
  /// Deletes a row. A model that gives none leaves RowCount as it is.
  virtual void DeleteRow(std::size_t /*row*/) {}
  /// The button of a cell was pressed.
  virtual void PressCellButton(std::size_t /*row*/, std::size_t /*column*/) {}
};

/// A table of cells, to be edited or, as its description says, only read. One row is the current one, if
/// there is any.
class Grid : public virtual Control {
 public:
  /// Shows the model anew, in these columns; at first there are none.
  virtual void SetColumns(std::vector<GridColumn> columns) = 0;
  /// Shows a model, which is borrowed until another one is set or the form goes. Null shows nothing, as at
  /// first.
  virtual void SetModel(GridModel* model) = 0;
  /// Shows the model anew. A current row that is gone becomes the last one.
  virtual void Refresh() = 0;
  /// Nothing when there are no rows, and on the empty last line.
  virtual std::optional<std::size_t> CurrentRow() const = 0;
  /// Does nothing for a row that there is not.
  virtual void SetCurrentRow(std::size_t row) = 0;

  /// The current row was double-clicked, of a grid whose description is read_only.
  std::function<void()> on_pick;
};

/// A window with controls. It is hidden at first; its owner destroys it, though not from a handler of its
/// own.
class Form {
 public:
  virtual ~Form() = default;

  /// The control of a name, which stays the form's; null when there is none.
  virtual Control* Find(std::u16string_view name) = 0;

  /// Shows the form, with the focus in the first field that the user can work unless a control asked for it,
  /// above Excel's window, which is disabled meanwhile, until Hide is called or the user closes the window. A
  /// form can be shown again. Raises 400 (Form already displayed) when it is shown, 7 (Out of memory) or 51
  /// (Internal error) when the platform cannot show it, what a handler raised, and where no user sits what
  /// platform/forms/unattended_forms.h says. But for the first of these the form is hidden afterwards.
  virtual void ShowModal() = 0;
  /// Ends ShowModal. Does nothing when the form is not shown.
  virtual void Hide() = 0;
  /// Whether ShowModal runs and was not told to end.
  virtual bool Visible() const = 0;

  /// Inner width and height in pixels at 100 % scale.
  virtual int Width() const = 0;
  virtual int Height() const = 0;
  /// From now on the controls follow the form's size, starting from the given one. `mode` gives a control's
  /// mode by name; nothing is its kind's default: tab controls and grids stretch both ways, the form's
  /// buttons keep to the lower right corner. What stands below a grid moves down with it; everything else
  /// stays. `mode` is asked once for each control, before this returns; what it raises passes on.
  virtual void StartResizer(int width, int height,
                            std::function<std::optional<ResizeMode>(std::u16string_view name)> mode) = 0;
};

/// The control of a form that a program knows to be there. Raises 51 (Internal error) when it is not.
template <class T>
T& Get(Form& form, std::u16string_view name) {
  auto* control = dynamic_cast<T*>(form.Find(name));
  if (!control) {
    throw AutomationError(kInternalError, u"The form has no control " + std::u16string(name));
  }
  return *control;
}

/// Builds forms.
class FormFactory {
 public:
  virtual ~FormFactory() = default;
  /// A form as described, hidden. The form is the caller's; the description may go. Raises 51 for a
  /// description that contradicts itself (platform/forms/form_description.h), 7 when the platform has no
  /// windows left to give; nothing is left behind then.
  virtual std::unique_ptr<Form> Create(const FormDescription& description) = 0;
};

}  // namespace qva::ui
