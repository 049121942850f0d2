#include "platform/memory/excel/Window.h"

namespace qva::memory {
namespace {

constexpr std::int32_t kSmallestZoom = 10;
constexpr std::int32_t kLargestZoom = 400;

std::int32_t InBounds(std::int32_t value, std::int32_t first, std::int32_t last) {
  if (value < first || value > last) throw Refusal();
  return value;
}

}  // namespace

ClassBuilder Window::Describe() {
  ClassBuilder builder(u"Window", "The window of a workbook");
  builder.Property<&Window::Caption, &Window::SetCaption>(u"Caption");
  builder.Property<&Window::Zoom, &Window::SetZoom>(u"Zoom");
  builder.Property<&Window::ScrollRow, &Window::SetScrollRow>(u"ScrollRow");
  builder.Property<&Window::ScrollColumn, &Window::SetScrollColumn>(u"ScrollColumn");
  AddProperty<&WindowData::display_gridlines>(builder, u"DisplayGridlines");
  AddProperty<&WindowData::display_headings>(builder, u"DisplayHeadings");
  AddProperty<&WindowData::display_zeros>(builder, u"DisplayZeros");
  AddProperty<&WindowData::display_formulas>(builder, u"DisplayFormulas");
  AddProperty<&WindowData::display_outline>(builder, u"DisplayOutline");
  AddProperty<&WindowData::display_workbook_tabs>(builder, u"DisplayWorkbookTabs");
  AddProperty<&WindowData::display_horizontal_scroll_bar>(builder, u"DisplayHorizontalScrollBar");
  AddProperty<&WindowData::display_vertical_scroll_bar>(builder, u"DisplayVerticalScrollBar");
  AddProperty<&WindowData::freeze_panes>(builder, u"FreezePanes");
  AddProperty<&WindowData::window_state, xlMaximized, xlMinimized, xlNormal>(builder, u"WindowState");
  return std::move(builder).Default(u"Caption");
}

std::u16string Window::Caption() {
  const auto workbook = OpenWorkbook(data()->workbook);
  return data()->caption.Is(Value::Type::Empty) ? workbook->name : data()->caption.ToText();
}

void Window::SetCaption(const Value& caption) {
  RequireAlive(*data());
  data()->caption = caption.Is(Value::Type::Empty) ? Value() : Value(caption.ToText());
}

std::int32_t Window::Zoom() {
  RequireAlive(*data());
  return data()->zoom;
}

void Window::SetZoom(std::int32_t percent) {
  RequireAlive(*data());
  data()->zoom = InBounds(percent, kSmallestZoom, kLargestZoom);
}

std::int32_t Window::ScrollRow() {
  RequireAlive(*data());
  return data()->scroll_row;
}

void Window::SetScrollRow(std::int32_t row) {
  RequireAlive(*data());
  data()->scroll_row = InBounds(row, 1, kRowCount);
}

std::int32_t Window::ScrollColumn() {
  RequireAlive(*data());
  return data()->scroll_column;
}

void Window::SetScrollColumn(std::int32_t column) {
  RequireAlive(*data());
  data()->scroll_column = InBounds(column, 1, kColumnCount);
}

}  // namespace qva::memory
