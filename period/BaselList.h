// What the host's list framework does for a grid: fields, columns, rows, lookups and the events around them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"
#include "platform/host.h"

namespace qva {

/// The rows of a grid, each with a value for every field. One of them is the current one, if there is any;
/// events about a cell concern the current row. Handlers may raise, as all of a form's.
class BaselList : public ui::GridModel {
 public:
  /// A calculated column.
  struct Field {
    std::u16string name;
    Value starting_value;  ///< of a new row
  };

  /// How a column of the grid behaves. The handler of on_add_column completes it.
  struct Column {
    std::u16string name;     ///< of its field
    std::u16string caption;  ///< empty for fields that users do not know
    std::u16string lookup_table;
    bool cell_button = false;
    bool read_only = false;
    bool hidden = false;
  };

  /// The list of codes that a column offers. It lives as long as the list, bound to a book's table.
  class Lookup {
   public:
    void Init(host::Book book, std::u16string_view table);
    /// Reads the codes and names anew. Raises what the host raises, and 91 without a book.
    void Reload();

   private:
    friend class BaselList;
    host::Book book_;
    std::u16string table_;
    /// Nothing until they are read, each time that the list opens.
    std::optional<std::vector<std::vector<std::u16string>>> rows_;
  };

  /// What the user may do; nothing until it is turned on.
  struct Options {
    bool edit = false;
    bool add_rows = false;
    bool delete_rows = false;
    bool lookups = false;
  };

  std::function<void()> on_add_fields;
  std::function<void(Column& column)> on_add_column;
  std::function<void()> after_fill_list;
  /// A lookup list is about to open; it opens when the handler has loaded it.
  std::function<void(std::u16string_view column, Lookup& lookup)> on_show_look_up;
  std::function<void(std::u16string_view column)> after_change_col_value;
  std::function<void(std::u16string_view column)> button_click;
  /// A typed value is about to be stored; `cancel` refuses it.
  std::function<void(std::u16string_view column, const Value& value, bool& cancel)> before_column_update;

  /// Binds the list to a grid and to the host's table that lends it its structure, asks for fields and
  /// columns, and shows the grid's columns. The grid must outlive the list's use. Raises 91 without a table.
  void Init(ui::Grid& grid, const host::Table& carrier);
  void SetOptions(const Options& options) { options_ = options; }
  /// The condition for the carrier's rows. "1=0" reads none; a list that reads rows raises 445 in Fill.
  void SetCondition(std::u16string_view condition) { condition_ = condition; }
  /// Fills the list, raises after_fill_list and shows the rows.
  void Fill();

  /// For on_add_fields.
  void AppendField(std::u16string_view name, Value starting_value);
  bool HasField(std::u16string_view name) const;

  std::optional<std::size_t> CurrentRow() const { return current_; }
  void MoveTo(std::size_t row);
  /// Adds a row with the fields' starting values and makes it the current one.
  void AddRow();
  /// Deletes the row that is marked in the grid, or the current one without a grid. Raises 9 when there is
  /// none.
  void DeleteCurrentRow();
  /// A field of the current row. Raise 9 for an unknown field and when there is no row.
  const Value& Get(std::u16string_view field) const { return rows_[Row()][FieldNumber(field)]; }
  void Set(std::u16string_view field, Value value) { rows_[Row()][FieldNumber(field)] = std::move(value); }
  /// Puts the starting value back.
  void Clear(std::u16string_view field);

  // What the grid asks for.
  std::size_t RowCount() const override { return rows_.size(); }
  std::u16string CellText(std::size_t row, std::size_t column) const override;
  bool SetCellText(std::size_t row, std::size_t column, std::u16string_view text) override;
  void AppendRow() override;
  void DeleteRow(std::size_t row) override;
  void PressCellButton(std::size_t row, std::size_t column) override;

 private:
  struct ShownColumn {
    Column column;
    Lookup lookup;
  };

  std::vector<Field>::const_iterator FindField(std::u16string_view name) const;
  std::size_t FieldNumber(std::u16string_view name) const;
  std::size_t Row() const;
  void RemoveRow(std::size_t row);
  void OpenLookup(std::size_t row, std::size_t column);
  void ShowRows();

  ui::Grid* grid_ = nullptr;
  std::u16string condition_;
  Options options_;
  std::vector<Field> fields_;
  std::vector<ShownColumn> columns_;  ///< those that are not hidden
  std::vector<std::vector<Value>> rows_;
  std::optional<std::size_t> current_;
};

}  // namespace qva
