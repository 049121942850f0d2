#include "platform/memory/excel/CellFormats.h"

#include "platform/excel_constants.h"

namespace qva::memory {
namespace {

std::int32_t CellKey(std::int32_t row, std::int32_t column) {
  return (row - 1) * kColumnCount + column - 1;
}

}  // namespace

const Value& FormatLayer::At(std::int32_t row, std::int32_t column) const {
  const Setting* latest = nullptr;
  const auto consider = [&](const Settings& settings, std::int32_t key) {
    const auto found = settings.find(key);
    if (found != settings.end() && (!latest || found->second.order > latest->order)) latest = &found->second;
  };
  consider(columns_, column);
  consider(rows_, row);
  consider(cells_, CellKey(row, column));
  return latest ? latest->value : initial_;
}

std::optional<Value> FormatLayer::Common(const Area& area) const {
  // Where nothing is set for single cells, all rows without a setting of their own are alike, and so are all
  // columns.
  const bool rows_alike = cells_.empty() && rows_.empty();
  const bool columns_alike = cells_.empty() && columns_.empty();
  const std::int32_t last_row = rows_alike ? area.row : area.last_row();
  const std::int32_t last_column = columns_alike ? area.column : area.last_column();
  const Value& first = At(area.row, area.column);
  for (std::int32_t row = area.row; row <= last_row; ++row) {
    for (std::int32_t column = area.column; column <= last_column; ++column) {
      if (At(row, column) != first) return std::nullopt;
    }
  }
  return first;
}

void FormatLayer::Set(const Area& area, const Value& value) {
  const Setting setting{value, ++last_order_};
  if (area == kWholeSheet) {
    cells_.clear();
    rows_.clear();
    columns_.clear();
    cells_set_.reset();
    initial_ = value;
  } else if (area.IsWholeColumns()) {
    for (std::int32_t column = area.column; column <= area.last_column(); ++column)
      columns_[column] = setting;
  } else if (area.IsWholeRows()) {
    for (std::int32_t row = area.row; row <= area.last_row(); ++row) rows_[row] = setting;
  } else {
    cells_set_ = cells_set_ ? Around(*cells_set_, area) : area;
    for (std::int32_t row = area.row; row <= area.last_row(); ++row) {
      for (std::int32_t column = area.column; column <= area.last_column(); ++column) {
        cells_[CellKey(row, column)] = setting;
      }
    }
  }
}

CellFormats::CellFormats()
    : layers_{FormatLayer(true), FormatLayer(std::int32_t{xlColorIndexAutomatic}),
              FormatLayer(std::int32_t{xlColorIndexNone}), FormatLayer(u"General")} {
}

std::optional<Area> CellFormats::CellsSet() const {
  std::optional<Area> all;
  for (const FormatLayer& layer : layers_) {
    if (!layer.CellsSet()) continue;
    all = all ? Around(*all, *layer.CellsSet()) : *layer.CellsSet();
  }
  return all;
}

}  // namespace qva::memory
