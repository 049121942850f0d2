#include "platform/forms/memory_form.h"

#include <algorithm>

#include "platform/date.h"
#include "platform/forms/code_list.h"
#include "platform/forms/date_entry.h"
#include "platform/forms/form_description.h"
#include "platform/forms/grid_state.h"
#include "platform/forms/picker_dates.h"
#include "platform/text.h"

namespace qva {

namespace {

[[noreturn]] void Refuse(std::u16string_view name, std::u16string_view why) {
  throw ImpossibleStep(u"The control " + std::u16string(name) + u" " + std::u16string(why));
}

void Raise(const std::function<void()>& event) {
  if (event) event();
}

}  // namespace

/// What all controls share.
class MemoryControl : public virtual ui::Control {
 public:
  MemoryControl(MemoryForm& form, const ui::ControlDescription& description)
      : form_(form), description_(description) {}
  std::u16string Name() const override { return description_.name; }
  bool Enabled() const override { return enabled_; }
  void SetEnabled(bool enabled) override { enabled_ = enabled; }
  void SetFocus() override { form_.focused_ = description_.name; }

  /// What the control shows.
  virtual std::u16string Shown() const { return description_.caption; }

 protected:
  MemoryForm& form() const { return form_; }
  const ui::ControlDescription& description() const { return description_; }

 private:
  MemoryForm& form_;
  const ui::ControlDescription& description_;
  bool enabled_ = true;
};

namespace {

class MemoryLabel : public MemoryControl, public ui::Label {
 public:
  MemoryLabel(MemoryForm& form, const ui::ControlDescription& description)
      : MemoryControl(form, description), caption_(description.caption) {}
  std::u16string Caption() const override { return caption_; }
  void SetCaption(std::u16string_view caption) override { caption_ = caption; }
  std::u16string Shown() const override { return caption_; }

 private:
  std::u16string caption_;
};

class MemoryFrame : public MemoryControl {
 public:
  using MemoryControl::MemoryControl;
};

class MemoryTextBox : public MemoryControl, public ui::TextBox {
 public:
  MemoryTextBox(MemoryForm& form, const ui::ControlDescription& description)
      : MemoryControl(form, description), text_(description.caption) {}
  std::u16string Text() const override { return text_; }
  void SetText(std::u16string_view text) override {
    if (max_length_ > 0) text = text.substr(0, max_length_);
    if (text == text_) return;
    text_ = text;
    Raise(on_change);
  }
  void SetMaxLength(int length) override { max_length_ = static_cast<std::size_t>(std::max(length, 0)); }
  bool read_only() const { return description().read_only; }
  std::u16string Shown() const override { return text_; }

 private:
  std::u16string text_;
  std::size_t max_length_ = 0;
};

class MemoryOptionButton : public MemoryControl, public ui::OptionButton {
 public:
  using MemoryControl::MemoryControl;
  bool Selected() const override { return selected_; }
  void Select() override {
    if (selected_) return;
    for (const ui::ControlDescription& other : form().description().controls) {
      if (!AreOneGroup(other, description())) continue;
      dynamic_cast<MemoryOptionButton&>(*form().Find(other.name)).selected_ = false;
    }
    selected_ = true;
    Raise(on_click);
  }
  std::u16string Shown() const override { return selected_ ? u"1" : u"0"; }

 private:
  bool selected_ = false;
};

class MemoryComboBox : public MemoryControl, public ui::ComboBox {
 public:
  using MemoryControl::MemoryControl;
  void SetItems(std::vector<Item> items) override {
    const std::u16string code = Value();
    list_.SetItems(std::move(items));
    SetValue(code);
  }
  std::u16string Value() const override { return list_.CodeOf(text_); }
  void SetValue(std::u16string_view code) override { text_ = list_.Shown(code); }
  std::u16string Shown() const override { return Value(); }
  const std::vector<Item>& items() const { return list_.items(); }

 private:
  CodeList list_;
  std::u16string text_;
};

class MemoryDatePicker : public MemoryControl, public DateEntry {
 public:
  using MemoryControl::MemoryControl;
  std::u16string Shown() const override { return Text().text; }

 private:
  void Show() override {}
};

class MemoryMonthView : public MemoryControl, public ui::MonthView {
 public:
  using MemoryControl::MemoryControl;
  Date Value() const override { return date_; }
  void SetValue(Date value) override { date_ = PickerDay(value); }
  std::u16string Shown() const override { return FormatByWindowsPattern(date_, u"yyyy-MM-dd"); }

 private:
  Date date_ = kFirstShownDay;
};

class MemoryTabControl : public MemoryControl, public ui::TabControl {
 public:
  using MemoryControl::MemoryControl;
  int Page() const override { return page_; }
  void SetPage(int page) override { page_ = page; }
  std::u16string Shown() const override { return NumberText(page_); }

 private:
  int page_ = 0;
};

class MemoryGrid : public MemoryControl, public ui::Grid {
 public:
  using MemoryControl::MemoryControl;
  void SetColumns(std::vector<ui::GridColumn> columns) override {
    for (ui::GridColumn& column : columns) column.width = std::max(column.width, 1);  // all are shown
    state_.SetColumns(std::move(columns));
    Refresh();
  }
  void SetModel(ui::GridModel* model) override {
    state_.SetModel(model);
    Refresh();
  }
  void Refresh() override {
    state_.Refresh();
    shown_.assign(state_.RowCount(), std::vector<std::u16string>(state_.columns().size()));
    for (std::size_t row = 0; row < shown_.size(); ++row) {
      for (std::size_t column = 0; column < shown_[row].size(); ++column) {
        shown_[row][column] = state_.TextOf({row, column});
      }
    }
  }
  std::optional<std::size_t> CurrentRow() const override {
    const auto row = state_.CurrentRow();
    return row && *row < RowCount() ? row : std::nullopt;
  }
  void SetCurrentRow(std::size_t row) override {
    if (row < RowCount()) state_.MoveTo({row, state_.current().column});
  }

  // What is shown, which is not what the model has until it asks for a Refresh.
  std::size_t RowCount() const { return shown_.size(); }
  const std::u16string& CellText(std::size_t row, std::size_t column) const { return shown_[row][column]; }

  GridState& state() { return state_; }
  bool IsReadOnly() const { return description().read_only; }
  std::vector<ui::GridColumn> columns() const {
    std::vector<ui::GridColumn> columns;
    for (const ShownColumn& column : state_.columns()) columns.push_back(column.description);
    return columns;
  }
  std::size_t ColumnNumber(std::u16string_view name) const {
    const auto is_it = [&](const ShownColumn& column) { return column.description.name == name; };
    const auto column = std::ranges::find_if(state_.columns(), is_it);
    if (column == state_.columns().end()) Refuse(Name(), u"has no column " + std::u16string(name));
    return static_cast<std::size_t>(column - state_.columns().begin());
  }
  /// Makes a cell the current one, also of the empty line.
  void Enter(std::size_t row, std::u16string_view column) {
    const std::size_t number = ColumnNumber(column);
    if (row >= state_.lines()) RefuseRow(row);
    state_.MoveTo({row, number});
  }
  [[noreturn]] void RefuseRow(std::size_t row) const {
    Refuse(Name(), u"has no row " + NumberText(static_cast<long long>(row) + 1));
  }

 private:
  GridState state_;
  std::vector<std::vector<std::u16string>> shown_;
};

class MemoryButton : public MemoryControl, public ui::Button {
 public:
  using MemoryControl::MemoryControl;
};

std::unique_ptr<ui::Control> MakeControl(MemoryForm& form, const ui::ControlDescription& description) {
  switch (description.kind) {
    case ui::ControlKind::Label:
      return std::make_unique<MemoryLabel>(form, description);
    case ui::ControlKind::TextBox:
      return std::make_unique<MemoryTextBox>(form, description);
    case ui::ControlKind::OptionButton:
      return std::make_unique<MemoryOptionButton>(form, description);
    case ui::ControlKind::Frame:
      return std::make_unique<MemoryFrame>(form, description);
    case ui::ControlKind::ComboBox:
      return std::make_unique<MemoryComboBox>(form, description);
    case ui::ControlKind::DatePicker:
      return std::make_unique<MemoryDatePicker>(form, description);
    case ui::ControlKind::MonthView:
      return std::make_unique<MemoryMonthView>(form, description);
    case ui::ControlKind::TabControl:
      return std::make_unique<MemoryTabControl>(form, description);
    case ui::ControlKind::Grid:
      return std::make_unique<MemoryGrid>(form, description);
    case ui::ControlKind::Button:
      return std::make_unique<MemoryButton>(form, description);
  }
  throw AutomationError(kInternalError);
}

}  // namespace

MemoryForm::MemoryForm(const ui::FormDescription& description, User user)
    : description_(description), user_(std::move(user)) {
  RequireConsistent(description_);
  for (const ui::ControlDescription& control : description_.controls) {
    controls_.push_back({&control, MakeControl(*this, control)});
  }
}

MemoryForm::~MemoryForm() = default;

ui::Control* MemoryForm::Find(std::u16string_view name) {
  const auto found =
      std::ranges::find_if(controls_, [&](const Entry& entry) { return entry.description->name == name; });
  return found == controls_.end() ? nullptr : found->control.get();
}

void MemoryForm::ShowModal() {
  if (visible_) throw AutomationError(kFormAlreadyDisplayed);
  visible_ = true;
  try {
    if (user_) user_(*this);
    if (visible_) CloseWindow();
  } catch (...) {
    visible_ = false;
    throw;
  }
  visible_ = false;
}

void MemoryForm::StartResizer(int width, int height,
                              std::function<std::optional<ui::ResizeMode>(std::u16string_view name)> mode) {
  resizer_start_ = {width, height};
  for (const ui::ControlDescription& control : description_.controls) {
    if (const auto answer = mode(control.name)) resize_modes_[control.name] = *answer;
  }
}

template <class T>
T* MemoryForm::As(std::u16string_view name) {
  ui::Control* control = Find(name);
  if (!control) Refuse(name, u"is not on the form " + description_.name);
  return dynamic_cast<T*>(control);
}

template <class T>
T& MemoryForm::Usable(std::u16string_view name, const char16_t* gesture) {
  T* control = As<T>(name);
  if (!control) Refuse(name, u"cannot be " + std::u16string(gesture));
  if (!visible_) Refuse(name, u"is on a form that is not shown");
  if (!control->Enabled()) Refuse(name, u"is disabled");
  control->SetFocus();
  return *control;
}

void MemoryForm::Click(std::u16string_view name) {
  if (As<ui::OptionButton>(name)) {
    Usable<ui::OptionButton>(name, u"clicked").Select();
  } else {
    Raise(Usable<ui::Button>(name, u"clicked").on_click);
  }
}

void MemoryForm::Type(std::u16string_view name, std::u16string_view text) {
  if (As<ui::ComboBox>(name)) {
    Usable<ui::ComboBox>(name, u"typed into").SetValue(text);
    return;
  }
  auto& box = Usable<MemoryTextBox>(name, u"typed into");
  if (box.read_only()) Refuse(name, u"is read-only");
  if (text.empty()) box.SetText(u"");
  for (std::size_t length = 1; length <= text.size(); ++length) box.SetText(text.substr(0, length));
}

void MemoryForm::PickDate(std::u16string_view name, Date date) {
  if (!IsPickerDay(date)) Refuse(name, u"cannot show this date");
  if (As<ui::MonthView>(name)) {
    Usable<ui::MonthView>(name, u"given a date").SetValue(date);
  } else {
    Usable<ui::DatePicker>(name, u"given a date").SetValue(date);
  }
}

void MemoryForm::DoubleClickDay(std::u16string_view name, Date day) {
  if (!IsPickerDay(day)) Refuse(name, u"cannot show this date");
  auto& month = Usable<ui::MonthView>(name, u"given a date");
  month.SetValue(day);
  Raise(month.on_day_double_click);
}

void MemoryForm::PressKey(std::u16string_view name, int character) {
  auto& month = Usable<ui::MonthView>(name, u"given a key");
  if (month.on_key_press) month.on_key_press(character);
}

bool MemoryForm::TypeCell(std::u16string_view grid, std::size_t row, std::u16string_view column,
                          std::u16string_view text) {
  auto& control = Usable<MemoryGrid>(grid, u"typed into");
  control.Enter(row, column);
  GridState& state = control.state();
  if (state.CurrentColumn()->description.read_only) {
    Refuse(grid, u"has the read-only column " + std::u16string(column));
  }
  if (!state.BeginRow()) control.RefuseRow(row);
  return state.Store(text);
}

void MemoryForm::PressCellButton(std::u16string_view grid, std::size_t row, std::u16string_view column) {
  auto& control = Usable<MemoryGrid>(grid, u"pressed");
  control.Enter(row, column);
  if (!control.state().HasButton()) Refuse(grid, u"has no button in column " + std::u16string(column));
  control.state().PressButton();
}

void MemoryForm::SelectRow(std::u16string_view grid, std::size_t row) {
  auto& control = Usable<MemoryGrid>(grid, u"pressed");
  if (row >= control.RowCount()) control.RefuseRow(row);
  control.SetCurrentRow(row);
}

void MemoryForm::DoubleClickRow(std::u16string_view grid, std::size_t row) {
  SelectRow(grid, row);
  auto& control = *As<MemoryGrid>(grid);
  if (!control.IsReadOnly()) Refuse(grid, u"is edited by a double click");
  Raise(control.on_pick);
}

void MemoryForm::CloseWindow() {
  if (description_.cancel_button.empty()) {
    Hide();
  } else {
    Click(description_.cancel_button);
  }
}

std::u16string MemoryForm::Text(std::u16string_view name) {
  return As<MemoryControl>(name)
      ->Shown();  // As raises for a control that is not there; all are MemoryControls
}

const std::vector<ui::ComboBox::Item>& MemoryForm::Items(std::u16string_view combo_box) {
  return As<MemoryComboBox>(combo_box)->items();
}

std::u16string MemoryForm::CellText(std::u16string_view grid, std::size_t row, std::u16string_view column) {
  auto& control = *As<MemoryGrid>(grid);
  const std::size_t number = control.ColumnNumber(column);
  if (row >= control.RowCount()) control.RefuseRow(row);
  return control.CellText(row, number);
}

std::size_t MemoryForm::RowCount(std::u16string_view grid) {
  return As<MemoryGrid>(grid)->RowCount();
}

std::vector<ui::GridColumn> MemoryForm::Columns(std::u16string_view grid) {
  return As<MemoryGrid>(grid)->columns();
}

}  // namespace qva
