// The default buttons of every report toolbar.
#pragma once

#include <cstdint>

#include "excelui/CButtonProperties.h"
#include "platform/excel.h"
#include "platform/member_table.h"

namespace qva {

/// Adds the seven default buttons to a bar and finds them again. Not built yet: each member raises 445
/// (Object doesn't support this action).
class CDefaultButtons : public Described<CDefaultButtons> {
 public:
  static const ClassDescription& Description();

  void AddButtons();
  std::int32_t cmdIndexComment() const;
  std::int32_t cmdIndexFreeze() const;
  std::int32_t cmdIndexPrintP() const;
  std::int32_t cmdIndexPrint() const;
  std::int32_t cmdIndexExcel() const;
  std::int32_t cmdIndexHelp() const;
  void Init(excel::Worksheet pwsSeting, ObjectPtr pCmdBar, Ref<CButtonProperties> pBProperties);
};

}  // namespace qva
