// The report period of a workbook.
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "period/frmReportPeriod.h"
#include "platform/ado.h"
#include "platform/excel.h"
#include "platform/host.h"
#include "platform/member_table.h"

namespace qva {

/// The named cells of the period's first and last day.
inline constexpr std::u16string_view kFirstDayCell = u"RepCurrPerBeg";
inline constexpr std::u16string_view kLastDayCell = u"RepCurrPerEnd";

/// Lets the user choose the report period that a workbook keeps in its named cells. Create it, call Init
/// once, then Edit any number of times.
class CRepPeriod : public Described<CRepPeriod> {
 public:
  static ClassBuilder Describe();

  /// Raises what the host's settings collection and the recordset raise.
  CRepPeriod();

  /// Binds the workbook's 16 names of the period, which stand for single cells. A name that is missing is
  /// given the next free cell to the right of the sheet's used range, in blue; so is one whose reference is
  /// broken, its old content being lost. Raises hexadecimal 80040001 with the source "Wrong parameter"
  /// without a sheet, 400 (Form already displayed) during Edit, and what Excel raises.
  void Init(excel::Worksheet pWorkSheet);

  /// Shows the period to the user and keeps what the user confirms. True when it was confirmed and written;
  /// false when it was not, and when anything failed - cells that were written by then stay so. Raises 400
  /// (Form already displayed) when a macro calls it before the Edit of the same object has ended, and nothing
  /// else.
  bool Edit();

 private:
  /// The named cells, in the order of binding.
  enum Cell : std::size_t {
    kAccPlan,
    kRepYear,
    kRepQuarter,
    kRepMon,
    kRepType,
    kRepLastPerBeg,
    kRepLastPerEnd,
    kRepCurrPerBeg,
    kRepCurrPerEnd,
    kCurrBudgetDocId,
    kCurrBudgetDocCode,
    kLastBudgetDocId,
    kLastBudgetDocCode,
    kIsBudgetPlan,
    kBudgetCount,
    kBookCode,
    kCellCount
  };
  struct NamedCell;
  static const std::array<NamedCell, kCellCount> kNamedCells;

  void RefuseWhileEditing() const;
  excel::Range CreateName(std::u16string_view name) const;
  void BuildBudgets();
  void Load();
  void LoadBudgets();
  void Save() const;
  Value Item(std::u16string_view name) const { return oParams_.Item(name).Value(); }
  void SetItem(std::u16string_view name, Value value) const {
    oParams_.Item(name).SetValue(std::move(value));
  }

  bool is_editing_ = false;
  std::unique_ptr<frmReportPeriod> dialog_;  ///< from the first Edit on
  host::SettingsCollection oParams_;
  excel::Worksheet sheet_;
  excel::Workbook book_;
  std::array<excel::Range, kCellCount> cells_;
  ado::Recordset budgets_;
};

}  // namespace qva
