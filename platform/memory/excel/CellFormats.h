// The formats of a sheet's cells, whole rows and columns included, without storing each of 16 million cells.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <unordered_map>

#include "platform/memory/excel/Area.h"
#include "platform/value.h"

namespace qva::memory {

/// One property of all cells of a sheet. Setting it for whole rows or columns is stored once for each of
/// them; of the settings that meet in a cell the latest one holds.
class FormatLayer {
 public:
  explicit FormatLayer(Value initial) : initial_(std::move(initial)) {}

  const Value& At(std::int32_t row, std::int32_t column) const;
  /// The value that all cells of the area have; nothing when they differ.
  std::optional<Value> Common(const Area& area) const;
  void Set(const Area& area, const Value& value);
  /// The area around all cells that were set, but for whole rows and columns; nothing when there are none.
  const std::optional<Area>& CellsSet() const { return cells_set_; }

 private:
  struct Setting {
    Value value;
    std::uint64_t order = 0;
  };
  using Settings = std::unordered_map<std::int32_t, Setting>;

  Value initial_;
  std::uint64_t last_order_ = 0;
  Settings cells_;  // by (row − 1) · 256 + column − 1
  Settings rows_;
  Settings columns_;
  std::optional<Area> cells_set_;
};

enum class FormatProperty { Locked, FontColorIndex, InteriorColorIndex, NumberFormat };

/// One layer for each property. A new property gets its entry in FormatProperty and its first value here.
class CellFormats {
 public:
  CellFormats();
  FormatLayer& operator[](FormatProperty property) { return layers_[static_cast<std::size_t>(property)]; }
  const FormatLayer& operator[](FormatProperty property) const {
    return layers_[static_cast<std::size_t>(property)];
  }
  /// FormatLayer::CellsSet of all properties together.
  std::optional<Area> CellsSet() const;

 private:
  std::array<FormatLayer, 4> layers_;  // in the order of FormatProperty
};

}  // namespace qva::memory
