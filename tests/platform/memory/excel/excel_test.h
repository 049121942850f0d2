// What tests of the in-memory Excel share: an application with one workbook open, and short ways to its
// cells.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/excel_constants.h"
#include "platform/memory/excel/Application.h"
#include "tests/platform/core_test.h"

namespace qva::memory {

class ExcelTest : public CoreTest {
 protected:
  ExcelTest() : workbook(excel->AddWorkbook()), sheet(GetObject(workbook, u"ActiveSheet")) {}

  /// Cells of the first sheet.
  ObjectPtr Range(std::u16string_view address) const { return GetObject(sheet, u"Range", {address}); }
  Value At(std::u16string_view address) const { return Get(Range(address), u"Value"); }
  void Set(std::u16string_view address, const Value& value) const { Put(Range(address), u"Value", value); }
  std::u16string AddressOf(const ObjectPtr& range) const { return Get(range, u"Address").ToText(); }
  /// What a formula gives in a cell of its own.
  Value Evaluate(std::u16string_view formula) const {
    Put(Range(u"IV65536"), u"Formula", formula);
    return At(u"IV65536");
  }
  std::u16string Text(const ObjectPtr& object, std::u16string_view member) const {
    return Get(object, member).ToText();
  }

  Ref<Application> excel = MakeRef<Application>();
  ObjectPtr application = excel;
  ObjectPtr workbook;  ///< "Book1" with "Sheet1" to "Sheet3"
  ObjectPtr sheet;     ///< "Sheet1"
};

}  // namespace qva::memory
