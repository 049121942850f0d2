// Snapshots of the user's Excel settings. Not visible outside the library.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "excelui/ConnectedExcel.h"
#include "platform/member_table.h"

namespace qva {

struct SavedSetting;

/// A stack of snapshots, last in, first out, in memory alone. Each setting and each command bar is a step of
/// its own: one that Excel refuses is skipped, all others are saved or put back, and nothing is raised. What
/// could not be read is not written back.
class CExcelState : public Object {
 public:
  CExcelState() = default;
  explicit CExcelState(ConnectedExcel excel) : excel_(std::move(excel)) {}

  /// One snapshot more. The stack is at most 32 767 deep; then the latest snapshot is taken anew.
  void SaveExcelState();
  /// Puts the latest snapshot back and drops it. Does nothing when there is none.
  ///
  /// Two things do not come back as they were, on purpose: calculation mode and reference style stay as the
  /// report left them, and the caption becomes Excel's own.
  void RestoreExcelState();

  std::int16_t depth() const { return static_cast<std::int16_t>(stack_.size()); }

  Value Invoke(Access access, std::u16string_view member, Arguments& arguments) override;
  std::u16string TypeName() const override { return u"CExcelState"; }

 private:
  struct SavedValue {
    const SavedSetting* setting;
    Value value;
  };
  struct SavedBar {
    std::u16string name;
    std::optional<bool> visible;
    std::optional<bool> enabled;
  };
  /// What Excel gave of its settings; what it refused is missing.
  struct Snapshot {
    std::vector<SavedValue> settings;
    std::u16string caption;  ///< nothing fills it, on purpose: empty, it gives Excel its own caption back
    std::vector<SavedBar> bars;
    std::optional<bool> menu_bar_enabled;
  };

  Snapshot TakeSnapshot() const;
  void PutBack(const Snapshot& snapshot) const;

  ConnectedExcel excel_;
  std::vector<Snapshot> stack_;
};

}  // namespace qva
