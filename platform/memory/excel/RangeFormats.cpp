// Range: the formats of its cells, and cells that are merged.
#include <algorithm>

#include "platform/memory/excel/Range.h"
#include "platform/memory/excel/RangeColor.h"

namespace qva::memory {

Value Range::Format(FormatProperty property) const {
  const FormatLayer& formats = Open().formats[property];
  const auto common = formats.Common(area());
  const bool is_common = common && std::ranges::all_of(reference_.areas, [&](const Area& area) {
                           return formats.Common(area) == common;
                         });
  return is_common ? *common : qva::Value(Null());
}

void Range::RequireFormattable(const std::u16string& refusal) const {
  const Protection& protection = Open().protection;
  if (protection.is_on && !protection.user_interface_only) throw Refusal(refusal);
}

void Range::SetFormat(FormatProperty property, const qva::Value& value, const std::u16string& refusal) {
  RequireFormattable(refusal);
  for (const Area& area : reference_.areas) Open().formats[property].Set(area, value);
  OpenWorkbook(reference_.sheet->workbook)->saved = false;
}

ObjectPtr Range::Font() {
  return MakeRef<RangeColor>(Ref<Range>(this), FormatProperty::FontColorIndex, xlColorIndexAutomatic);
}

ObjectPtr Range::Interior() {
  return MakeRef<RangeColor>(Ref<Range>(this), FormatProperty::InteriorColorIndex, xlColorIndexNone);
}

Value Range::Locked() {
  return Format(FormatProperty::Locked);
}

void Range::SetLocked(bool locked) {
  for (const Area& area : reference_.areas) {
    Open().RequireWholeMergedCells(area, u"Unable to set the Locked property of the Range class");
  }
  SetFormat(FormatProperty::Locked, locked, u"Unable to set the Locked property of the Range class");
}

Value Range::NumberFormat() {
  return Format(FormatProperty::NumberFormat);
}

void Range::SetNumberFormat(const std::u16string& format) {
  SetFormat(FormatProperty::NumberFormat, format,
            u"Unable to set the NumberFormat property of the Range class");
}

void Range::Merge(bool across) {
  RequireFormattable(u"Merge method of Range class failed");
  for (const Area& area : reference_.areas) {
    Open().ForEachCell(area, [](std::int32_t, std::int32_t, const Cell& cell) {
      if (cell.array) throw Refusal(u"Cannot merge cells that contain array formulas.");
    });
  }
  for (const Area& area : reference_.areas) {
    if (!across) {
      Open().Merge(area);
      continue;
    }
    for (std::int32_t row = area.row; row <= area.last_row(); ++row) {
      Open().Merge({row, area.column, 1, area.columns});
    }
  }
}

void Range::UnMerge() {
  RequireFormattable(u"UnMerge method of Range class failed");
  for (const Area& area : reference_.areas) Open().Unmerge(area);
}

Value Range::MergeCells() {
  std::int64_t count = 0;
  for (const Area& area : reference_.areas) {
    for (const Area& cell : Open().merged) {
      if (!cell.Meets(area)) continue;
      const std::int64_t rows = std::min(cell.last_row(), area.last_row()) - std::max(cell.row, area.row) + 1;
      count +=
          rows * (std::min(cell.last_column(), area.last_column()) - std::max(cell.column, area.column) + 1);
    }
  }
  if (count == 0) return false;
  return count == CellCount() ? qva::Value(true) : qva::Value(Null());
}

void Range::SetMergeCells(bool merge) {
  if (merge) {
    Merge(false);
  } else {
    UnMerge();
  }
}

ObjectPtr Range::MergeArea() {
  if (CellCount() > 1) throw Refusal();
  return Part(Open().WithWholeMergedCells(area()));
}

}  // namespace qva::memory
