// CReports: formulas into fixed values.
#include <algorithm>
#include <utility>
#include <vector>

#include "global/Progress.h"
#include "platform/excel_refusals.h"
#include "platform/text.h"
#include "reports/CReports.h"

namespace qva {
namespace {

/// Formulas are read in blocks of about this many cells, so that whole columns stay within memory.
constexpr std::int64_t kBlockCells = 1 << 17;

// What the status bar says in a long one.
constexpr std::u16string_view kSearching = u"Ieškoma formulių";
constexpr std::u16string_view kReplacing = u"Formulės keičiamos reikšmėmis";

/// The format of cells that take whatever is entered as text.
constexpr std::u16string_view kTextFormat = u"@";

/// Excel 2003 and older ones refuse a block that holds a longer text.
constexpr std::size_t kLongestTextInBlock = 911;

/// Where a rectangle of cells lies on its sheet or, counted from the first cell, among others.
struct Place {
  std::int64_t row = 0;
  std::int64_t column = 0;
  std::int64_t rows = 0;
  std::int64_t columns = 0;

  std::int64_t end_row() const { return row + rows; }
  std::int64_t end_column() const { return column + columns; }
  bool Contains(const Place& other) const {
    return other.row >= row && other.column >= column && other.end_row() <= end_row() &&
           other.end_column() <= end_column();
  }
};

std::int64_t CheckedCount(const excel::Range& units) {
  const std::int32_t count = units.Count();
  if (count < 1) throw AutomationError(kTypeMismatch);  // no cells, but an object that only looks like them
  return count;
}

/// The size alone, with the place 0. Not the range's own Count, which may count whole rows or columns.
Place SizeOf(const excel::Range& range) {
  const std::int64_t rows = CheckedCount(range.Rows());
  return {.rows = rows, .columns = CheckedCount(range.Columns())};
}

Place PlaceOf(const excel::Range& range) {
  Place place = SizeOf(range);
  place.row = range.Row();
  place.column = range.Column();
  return place;
}

excel::Range Part(const excel::Range& range, const Place& part) {
  return range.Part(ColumnLetters(part.column) + NumberText(part.row) + u":" +
                    ColumnLetters(part.end_column() - 1) + NumberText(part.end_row() - 1));
}

bool HoldsFormula(const Value& formula) {
  return formula.Is(Value::Type::Text) && formula.As<std::u16string>().find(u'=') != std::u16string::npos;
}

/// The formula of an array as it is entered: LibreOffice gives it in braces.
std::u16string_view WithoutBraces(std::u16string_view formula) {
  return formula.starts_with(u'{') && formula.ends_with(u'}') ? formula.substr(1, formula.size() - 2)
                                                              : formula;
}

/// The elements of what a member gave for so many cells, along the rows.
std::vector<Value> ElementsOf(Value given, std::int64_t rows, std::int64_t columns) {
  if (rows == 1 && columns == 1 && !given.Is(Value::Type::Array)) return {std::move(given)};
  const Array& block = given.ToArray();
  const bool fits = block.dimensions.size() == 2 && block.dimensions[0].count == rows &&
                    block.dimensions[1].count == columns;
  if (!fits) throw AutomationError(kTypeMismatch);
  return block.elements;
}

bool IsTextFormat(const Value& format) {
  return format.Is(Value::Type::Text) && format.As<std::u16string>() == kTextFormat;
}

/// Whether a text stays itself however it is entered: it begins with a letter and has none of the digits
/// that are in every number, date, time and percentage.
bool IsPlain(std::u16string_view text) {
  if (text.size() > kLongestTextInBlock) return false;
  const std::u16string_view word = Trim(text);
  const auto is_letter = [](char16_t c) { return IsBasicLetter(c) || (c >= u'\u00C0' && c < u'\u0530'); };
  const auto is_allowed = [&](char16_t c) {
    const bool is_digit = IsDigit(c);
    // Quotation marks and dashes among them.
    return is_letter(c) || (c >= u' ' && c <= u'~' && !is_digit) || (c >= u'\u2010' && c <= u'\u2027') ||
           c == u'€';
  };
  return !word.empty() && is_letter(word.front()) && std::ranges::all_of(text, is_allowed) &&
         !EqualIgnoringCase(word, u"TRUE") && !EqualIgnoringCase(word, u"FALSE");
}

/// Whether a value stays what it is when it is written among others.
bool IsPlain(const Value& value) {
  switch (value.type()) {
    case Value::Type::Boolean:
    case Value::Type::Double:
      return true;
    case Value::Type::Text:
      return IsPlain(std::u16string_view(value.As<std::u16string>()));
    default:
      return false;
  }
}

/// One mark for each cell of some rows, along them.
using Marks = std::vector<bool>;

/// The marked cells as rectangles, each as wide as it can be at its first cell, and then as high. They come
/// in the order of their first cells, along the rows.
std::vector<Place> RectanglesOf(Marks marks, std::int64_t columns) {
  std::vector<Place> rectangles;
  const auto is_marked = [&](std::int64_t row, std::int64_t column) {
    return marks[static_cast<std::size_t>(row * columns + column)];
  };
  const std::int64_t rows = static_cast<std::int64_t>(marks.size()) / columns;
  for (std::int64_t row = 0; row < rows; ++row) {
    for (std::int64_t column = 0; column < columns; ++column) {
      if (!is_marked(row, column)) continue;
      std::int64_t end_column = column;
      while (end_column < columns && is_marked(row, end_column)) ++end_column;
      std::int64_t end_row = row;
      const auto is_row_marked = [&] {
        for (std::int64_t c = column; c < end_column; ++c) {
          if (!is_marked(end_row, c)) return false;
        }
        return true;
      };
      for (; end_row < rows && is_row_marked(); ++end_row) {
        for (std::int64_t c = column; c < end_column; ++c) {
          marks[static_cast<std::size_t>(end_row * columns + c)] = false;
        }
      }
      rectangles.push_back({row + 1, column + 1, end_row - row, end_column - column});
    }
  }
  return rectangles;
}

/// Calls `visit(position)` for the cells of a rectangle, along its rows.
template <class Visit>
void ForEachPosition(const Place& rectangle, std::int64_t columns, Visit visit) {
  for (std::int64_t row = rectangle.row; row < rectangle.end_row(); ++row) {
    for (std::int64_t column = rectangle.column; column < rectangle.end_column(); ++column) {
      visit(static_cast<std::size_t>((row - 1) * columns + column - 1));
    }
  }
}

/// What a rectangle gets of a list that has something for each cell, as one block.
Value BlockOf(const Place& rectangle, std::int64_t columns, const std::vector<Value>& all) {
  std::vector<Value> elements;
  elements.reserve(static_cast<std::size_t>(rectangle.rows * rectangle.columns));
  ForEachPosition(rectangle, columns, [&](std::size_t position) { elements.push_back(all[position]); });
  return Array::Block(static_cast<std::int32_t>(rectangle.rows), static_cast<std::int32_t>(rectangle.columns),
                      std::move(elements));
}

/// A formula, or a text that looks like one.
struct Found {
  std::int64_t position = 0;  ///< in its block from 0, along the rows
  std::u16string formula;
};

/// Cells that were read at once, and those of them that hold formulas.
struct Block {
  excel::Range cells;
  std::int64_t rows = 0;
  std::int64_t columns = 0;
  std::vector<Found> formulas;
  std::vector<Value> values;  ///< of all its cells, before any was changed

  excel::Range Cell(std::int64_t position) const {
    return cells.Cells(static_cast<std::int32_t>(position / columns) + 1,
                       static_cast<std::int32_t>(position % columns) + 1);
  }
  std::size_t size() const { return static_cast<std::size_t>(rows * columns); }
};

/// All cells of an array formula.
struct ArrayFormula {
  excel::Range cells;
  std::u16string formula;
  Place size;
  std::vector<Value> values;  ///< before any cell was changed
};

/// A value on its way into a cell, as it is. Excel would read a text once more, as a number, date or formula;
/// the apostrophe, which is no part of the value, keeps it a text. A cell of texts takes texts as they are -
/// what becomes of an apostrophe there is not to be relied on - and would make a text of a number.
class Entry {
 public:
  Entry(excel::Range cell, const Value& value, const Value& common_format)
      : cell_(std::move(cell)), entry_(value) {
    const bool is_text = value.Is(Value::Type::Text);
    if (is_text && value.As<std::u16string>().empty()) return;
    const Value format = common_format.Is(Value::Type::Null) ? cell_.NumberFormat() : common_format;
    const bool is_text_cell = IsTextFormat(format);
    const bool is_kept = is_text_cell && is_text && !value.As<std::u16string>().starts_with(u'\'');
    if (is_kept) return;
    if (is_text) entry_ = u"'" + value.As<std::u16string>();
    takes_texts_ = is_text_cell;
  }

  /// To be called before anything is lost: a protected sheet lets a cell's contents be changed, but no
  /// format.
  void OpenCell() const {
    if (takes_texts_) cell_.SetNumberFormat(u"General");
  }
  void Enter() const { cell_.SetValue(entry_); }
  void CloseCell() const {
    if (takes_texts_) cell_.SetNumberFormat(u"@");
  }

 private:
  excel::Range cell_;
  Value entry_;
  bool takes_texts_ = false;  ///< and is to be taken for another kind of cell meanwhile
};

/// Enters values in place of a formula, which `put_back` writes again where one of them is refused.
template <class PutBack>
void Replace(const excel::Range& cells, const std::vector<Entry>& entries, PutBack put_back) {
  bool is_cleared = false;
  try {
    for (const Entry& entry : entries) entry.OpenCell();
    cells.SetFormulaLocal(u"");
    is_cleared = true;
    for (const Entry& entry : entries) entry.Enter();
  } catch (...) {
    if (is_cleared) IgnoreFailures(put_back);
    for (const Entry& entry : entries) IgnoreFailures([&] { entry.CloseCell(); });
    throw;
  }
  for (const Entry& entry : entries) entry.CloseCell();
}

/// Finds the formulas of some areas, then puts their values in their place. Nothing is changed before all is
/// known, since an array formula that goes beyond the areas refuses the whole.
class Freezing {
 public:
  explicit Freezing(const excel::Range& range) {
    const excel::Areas areas = range.Areas();
    const std::int32_t count = areas.Count();
    if (count == 1) {
      areas_.push_back(range);
    } else {
      for (std::int32_t n = 1; n <= count; ++n) areas_.push_back(areas.Item(n));
    }
  }

  void Run() {
    for (const excel::Range& area : areas_) FindIn(area);
    // A SUBTOTAL counts another one as soon as that is a value.
    for (Block& block : blocks_) block.values = ElementsOf(block.cells.Value2(), block.rows, block.columns);
    for (ArrayFormula& array : arrays_) {
      array.size = SizeOf(array.cells);
      array.values = ElementsOf(array.cells.Value2(), array.size.rows, array.size.columns);
    }
    for (const Block& block : blocks_) all_ += static_cast<std::int64_t>(block.formulas.size());
    for (const Place& place : array_places_) all_ += place.rows * place.columns;
    for (const Block& block : blocks_) Freeze(block);
    for (const ArrayFormula& array : arrays_) FreezeArray(array);
  }

 private:
  void FindIn(const excel::Range& area) {
    const Place size = SizeOf(area);
    if (size.rows * size.columns <= kBlockCells) return Read(area, size.rows, size.columns);
    // Beyond the used range there is nothing; a whole sheet would take hours to read.
    const Place used = PlaceOf(area.Worksheet().UsedRange());
    const std::int64_t top = area.Row();
    const std::int64_t left = area.Column();
    const std::int64_t end_row = std::min(top + size.rows, used.end_row());
    const std::int64_t first_column = std::max(left, used.column);
    const std::int64_t columns = std::min(left + size.columns, used.end_column()) - first_column;
    if (columns < 1) return;
    const std::int64_t rows_of_block = std::max<std::int64_t>(kBlockCells / columns, 1);
    for (std::int64_t row = std::max(top, used.row); row < end_row; row += rows_of_block) {
      const std::int64_t rows = std::min(rows_of_block, end_row - row);
      Read(Part(area, {row - top + 1, first_column - left + 1, rows, columns}), rows, columns);
    }
  }

  /// The formulas' texts travel as one block.
  void Read(const excel::Range& cells, std::int64_t rows, std::int64_t columns) {
    progress_.Say(kSearching);
    const std::vector<Value> formulas = ElementsOf(cells.Formula(), rows, columns);
    Block block{cells, rows, columns, {}, {}};
    std::int64_t position = 0;
    for (const Value& formula : formulas) {
      if (HoldsFormula(formula)) block.formulas.push_back({position, formula.As<std::u16string>()});
      ++position;
    }
    if (block.formulas.empty()) return;
    if (cells.HasArray() != Value(false)) TakeArrays(block);
    if (!block.formulas.empty()) blocks_.push_back(std::move(block));
  }

  /// Takes the cells of array formulas out of a block.
  void TakeArrays(Block& block) {
    const Place place = PlaceOf(block.cells);
    std::erase_if(block.formulas, [&](const Found& found) {
      const std::int64_t position = found.position;
      const Place cell_place{place.row + position / block.columns, place.column + position % block.columns, 1,
                             1};
      const auto is_known = [&](const Place& array) { return array.Contains(cell_place); };
      if (std::any_of(array_places_.begin(), array_places_.end(), is_known)) return true;
      const excel::Range cell = block.Cell(position);
      if (cell.HasArray() == Value(false)) return false;
      excel::Range array = cell.CurrentArray();
      const Place array_place = PlaceOf(array);
      const auto holds_it = [&](const excel::Range& area) { return PlaceOf(area).Contains(array_place); };
      if (std::none_of(areas_.begin(), areas_.end(), holds_it)) throw excel::ArrayRefusal();
      array_places_.push_back(array_place);
      arrays_.push_back({std::move(array), found.formula, {}, {}});
      return true;
    });
  }

  /// A block on its way from formulas to values.
  struct Turn {
    const Block& block;
    Value format;  ///< the common one, or Null
    Marks is_done;
    std::size_t next = 0;  ///< the first formula that was not yet looked at by itself
  };

  /// Leaves what one cell after the other would leave, also where a cell is refused, with fewer calls: most
  /// values travel as blocks.
  void Freeze(const Block& block) {
    Turn turn{block, block.cells.NumberFormat(), Marks(block.size())};
    try {
      for (const Place& rectangle : RectanglesOf(PlainCells(turn), block.columns)) {
        FreezeTogether(turn, rectangle);
      }
      FreezeEach(turn, block.rows * block.columns);
    } catch (...) {
      PutBackBehindRefused(turn);
      throw;
    }
  }

  /// The formulas whose values can be written as blocks.
  static Marks PlainCells(const Turn& turn) {
    const Block& block = turn.block;
    if (IsTextFormat(turn.format)) return {};
    Marks marks(block.size());
    for (const Found& found : block.formulas) {
      const auto position = static_cast<std::size_t>(found.position);
      marks[position] = IsPlain(turn.block.values[position]);
    }
    if (turn.format.Is(Value::Type::Null)) {
      for (const Place& rectangle : RectanglesOf(marks, block.columns)) {
        TakeTextCellsOut(block, rectangle, marks);
      }
    }
    return marks;
  }

  /// Halves a rectangle until each part has one format, columns first, since formats go by columns mostly.
  static void TakeTextCellsOut(const Block& block, const Place& part, Marks& marks) {
    const Value format = Part(block.cells, part).NumberFormat();
    if (format.Is(Value::Type::Null) && part.rows * part.columns > 1) {
      Place first = part;
      Place second = part;
      if (part.columns > 1) {
        first.columns /= 2;
        second.column += first.columns;
        second.columns -= first.columns;
      } else {
        first.rows /= 2;
        second.row += first.rows;
        second.rows -= first.rows;
      }
      TakeTextCellsOut(block, first, marks);
      TakeTextCellsOut(block, second, marks);
    } else if (IsTextFormat(format)) {
      ForEachPosition(part, block.columns, [&](std::size_t position) { marks[position] = false; });
    }
  }

  void FreezeTogether(Turn& turn, const Place& rectangle) {
    const Block& block = turn.block;
    progress_.Say(kReplacing, done_, all_);
    const bool is_written = IgnoreErrors([&] {
      Part(block.cells, rectangle).SetValue2(BlockOf(rectangle, block.columns, turn.block.values));
    });
    if (!is_written) {
      // One of its cells may be refused, or the block as such.
      FreezeEach(turn, (rectangle.end_row() - 2) * block.columns + rectangle.end_column() - 1);
    }
    ForEachPosition(rectangle, block.columns, [&](std::size_t position) {
      if (!turn.is_done[position]) ++done_;
      turn.is_done[position] = true;
    });
  }

  /// Freezes the cells in front of a position that are not done, one after the other.
  void FreezeEach(Turn& turn, std::int64_t end) {
    const Block& block = turn.block;
    for (; turn.next < block.formulas.size() && block.formulas[turn.next].position < end; ++turn.next) {
      const Found& found = block.formulas[turn.next];
      const auto position = static_cast<std::size_t>(found.position);
      if (turn.is_done[position]) continue;
      progress_.Say(kReplacing, done_++, all_);
      const excel::Range cell = block.Cell(found.position);
      Replace(cell, {Entry(cell, turn.block.values[position], turn.format)},
              [&] { cell.SetFormula(found.formula); });
      turn.is_done[position] = true;
    }
  }

  /// Blocks may have been ahead of the first cell that is not done: what is behind it gets its formulas
  /// again.
  static void PutBackBehindRefused(const Turn& turn) {
    IgnoreFailures([&] {
      const Block& block = turn.block;
      Marks is_ahead(block.size());
      std::vector<Value> formulas(block.size());
      bool is_behind = false;
      for (const Found& found : block.formulas) {
        const auto position = static_cast<std::size_t>(found.position);
        is_ahead[position] = is_behind && turn.is_done[position];
        is_behind = is_behind || !turn.is_done[position];
        formulas[position] = found.formula;
      }
      for (const Place& rectangle : RectanglesOf(is_ahead, block.columns)) {
        const auto put_back = [&] {
          Part(block.cells, rectangle).SetFormula(BlockOf(rectangle, block.columns, formulas));
        };
        if (IgnoreFailures(put_back)) continue;
        // A formula may be longer than a block takes.
        ForEachPosition(rectangle, block.columns, [&](std::size_t position) {
          const excel::Range cell = block.Cell(static_cast<std::int64_t>(position));
          IgnoreFailures([&] { cell.SetFormula(formulas[position]); });
        });
      }
    });
  }

  void FreezeArray(const ArrayFormula& array) {
    const Place& size = array.size;
    progress_.Say(kReplacing, done_, all_);
    done_ += size.rows * size.columns;
    const Block block{array.cells, size.rows, size.columns, {}, {}};
    const std::vector<Value>& values = array.values;
    const Value format = array.cells.NumberFormat();
    const bool is_plain = !format.Is(Value::Type::Null) && !IsTextFormat(format) &&
                          std::ranges::all_of(values, [](const Value& value) { return IsPlain(value); });
    // Where that is refused the formula is still there, and need not come back, which a long one cannot.
    if (is_plain && IgnoreErrors([&] {
          array.cells.SetValue2(BlockOf({1, 1, size.rows, size.columns}, size.columns, values));
        }))
      return;
    std::vector<Entry> entries;
    for (std::size_t n = 0; n < values.size(); ++n) {
      entries.emplace_back(block.Cell(static_cast<std::int64_t>(n)), values[n], format);
    }
    Replace(array.cells, entries, [&] { array.cells.SetFormulaArray(WithoutBraces(array.formula)); });
  }

  Progress progress_;
  std::int64_t done_ = 0;  ///< cells that hold their values
  std::int64_t all_ = 0;   ///< of so many
  std::vector<excel::Range> areas_;
  std::vector<Block> blocks_;
  std::vector<ArrayFormula> arrays_;
  std::vector<Place> array_places_;
};

}  // namespace

void CReports::ClearFormulas(excel::Range ScanArrea) {
  Freezing(ScanArrea).Run();
}

}  // namespace qva
