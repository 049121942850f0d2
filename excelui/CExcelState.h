// Snapshots of the user's Excel settings. Not visible outside the library.
#pragma once

#include <cstdint>

#include "platform/member_table.h"

namespace qva {

/// A stack of snapshots, last in, first out. So far it keeps the depth of the stack only: nothing of Excel is
/// read or written yet.
class CExcelState : public Object {
 public:
  /// One snapshot more. Raises 6 (Overflow) past 32 767.
  void SaveExcelState();
  /// One snapshot less.
  void RestoreExcelState();

  std::int16_t depth() const { return depth_; }

  Value Invoke(Access access, std::u16string_view member, Arguments& arguments) override;
  std::u16string TypeName() const override { return u"CExcelState"; }

 private:
  std::int16_t depth_ = 0;
};

}  // namespace qva
