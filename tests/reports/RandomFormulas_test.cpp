// CReports: ClearFormulas leaves of any sheet what one cell after the other would leave.
#include <random>

#include "tests/reports/report_fixture.h"

namespace qva {
namespace {

constexpr std::int32_t kRows = 7;
constexpr std::int32_t kColumns = 6;

class RandomFormulas : public ReportTest {
 protected:
  static ObjectPtr Cell(const ObjectPtr& sheet, std::int32_t row, std::int32_t column) {
    return GetObject(sheet, u"Cells", {row, column});
  }
  static ObjectPtr Rectangle(const ObjectPtr& sheet, std::int32_t row, std::int32_t column, std::int32_t rows,
                             std::int32_t columns) {
    return GetObject(Cell(sheet, row, column), u"Resize", {rows, columns});
  }

  int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }
  bool OneIn(int count) { return Below(count) == 0; }

  /// Fills a sheet by chance: a column of constants, and beside it formulas of every kind, alone and in
  /// rectangles, arrays, texts and numbers, in different formats, some cells locked, maybe all protected.
  void Fill(const ObjectPtr& sheet) {
    const Value constants[] = {2.5, u"tekstas", true, Date{45455.25}, Value(), u"'12", u"'=A1", u"a = b"};
    const char16_t* const formulas[] = {u"=1+1",     u"=1=1",      u"=\"ą\"",   u"=A3",       u"=A4&\"x\"",
                                        u"=\"007\"", u"=\"true\"", u"=\"'b\"",  u"=\"=A1\"",  u"=\"\"",
                                        u"=1/0",     u"=A2",       u"=0.1+0.2", u"=\"Iš jų\""};
    const char16_t* const formats[] = {u"0.00", u"@", u"m/d/yyyy", u"$#,##0.00"};
    for (std::int32_t row = 1; row <= kRows; ++row) {
      Put(Cell(sheet, row, 1), u"Value", constants[Below(std::size(constants))]);
    }
    const int how_many_constants = Below(4) + 1;
    for (std::int32_t row = 1; row <= kRows; ++row) {
      for (std::int32_t column = 2; column <= kColumns; ++column) {
        const ObjectPtr cell = Cell(sheet, row, column);
        if (OneIn(how_many_constants + 1)) {
          Put(cell, u"Value", constants[Below(std::size(constants))]);
        } else {
          Put(cell, u"Formula", OneIn(2) ? formulas[0] : formulas[Below(std::size(formulas))]);
        }
      }
    }
    if (OneIn(3)) {
      const std::int32_t row = Below(kRows - 1) + 1;
      const std::int32_t column = Below(kColumns - 2) + 2;
      Put(Rectangle(sheet, row, column, Below(2) + 1, Below(2) + 1), u"FormulaArray",
          formulas[Below(std::size(formulas))]);
    }
    for (int n = Below(4); n > 0; --n) {
      Put(Rectangle(sheet, Below(kRows) + 1, Below(kColumns - 1) + 2, Below(3) + 1, Below(2) + 1),
          u"NumberFormat", formats[Below(std::size(formats))]);
    }
    if (!OneIn(2)) return;
    Put(Rectangle(sheet, 1, 1, kRows + 3, kColumns + 1), u"Locked", false);
    for (int n = Below(3); n > 0; --n) {
      Put(Cell(sheet, Below(kRows) + 1, Below(kColumns) + 1), u"Locked", true);
    }
    Call(sheet, u"Protect", Arguments().Named(u"UserInterfaceOnly", OneIn(4)));
  }

  /// One value in place of a formula; where it is refused, the formula stays.
  static void FreezeCell(const ObjectPtr& cell, const Value& value, const Value& formula) {
    const bool is_text = value.Is(Value::Type::Text) && value != Value(u"");
    const bool is_text_cell = Get(cell, u"NumberFormat") == Value(u"@");
    const bool is_as_it_is =
        value == Value(u"") || !is_text || (is_text_cell && !value.As<std::u16string>().starts_with(u'\''));
    const bool opens = is_text_cell && value != Value(u"") && !(is_text && is_as_it_is);
    if (opens) Put(cell, u"NumberFormat", u"General");
    try {
      Put(cell, u"FormulaLocal", u"");
      Put(cell, u"Value", is_as_it_is ? value : Value(u"'" + value.As<std::u16string>()));
    } catch (const AutomationError&) {
      IgnoreErrors([&] { Put(cell, u"Formula", formula); });
      if (opens) Put(cell, u"NumberFormat", u"@");
      throw;
    }
    if (opens) Put(cell, u"NumberFormat", u"@");
  }

  /// The same as ClearFormulas, one cell after the other, arrays last.
  static void FreezeEach(const ObjectPtr& sheet) {
    std::vector<Value> values;
    std::vector<ObjectPtr> arrays;
    for (std::int32_t n = 0; n < kRows * kColumns; ++n) {
      values.push_back(Get(Cell(sheet, n / kColumns + 1, n % kColumns + 1), u"Value2"));
    }
    for (std::int32_t n = 0; n < kRows * kColumns; ++n) {
      const ObjectPtr cell = Cell(sheet, n / kColumns + 1, n % kColumns + 1);
      const Value formula = Get(cell, u"Formula");
      if (formula.ToText().find(u'=') == std::u16string::npos) continue;
      if (Get(cell, u"HasArray") == Value(false)) {
        FreezeCell(cell, values[static_cast<std::size_t>(n)], formula);
      } else {
        arrays.push_back(GetObject(cell, u"CurrentArray"));
      }
    }
    for (const ObjectPtr& array : arrays) {
      if (Get(array, u"HasArray") == Value(false)) continue;  // another cell's, too
      const std::int32_t count = Get(array, u"Count").ToInt32();
      std::vector<Value> of_array;
      for (std::int32_t n = 1; n <= count; ++n) {
        of_array.push_back(Get(GetObject(array, u"Cells", {n}), u"Value2"));
        const Value format = Get(GetObject(array, u"Cells", {n}), u"NumberFormat");
        // A format that must be changed is changed before anything is lost.
        const bool changes = format == Value(u"@") && of_array.back() != Value(u"") &&
                             (!of_array.back().Is(Value::Type::Text) ||
                              of_array.back().As<std::u16string>().starts_with(u'\''));
        if (changes) Put(GetObject(array, u"Cells", {n}), u"NumberFormat", u"@");
      }
      Put(array, u"FormulaLocal", u"");
      for (std::int32_t n = 1; n <= count; ++n) {
        FreezeCell(GetObject(array, u"Cells", {n}), of_array[static_cast<std::size_t>(n - 1)], Value());
      }
    }
  }

  static std::u16string Described(const ObjectPtr& sheet) {
    std::u16string text;
    for (std::int32_t row = 1; row <= kRows; ++row) {
      for (std::int32_t column = 1; column <= kColumns; ++column) {
        const ObjectPtr cell = Cell(sheet, row, column);
        for (const std::u16string_view member : {u"Formula", u"Value2", u"NumberFormat", u"HasArray"}) {
          text += DescribeValue(Get(cell, member)) + u" ";
        }
        text += u"\n";
      }
    }
    return text;
  }

  static std::u16string Described(const std::optional<AutomationError>& error) {
    return error ? NumberText(error->number()) + u" " + error->source() + u" " + error->description()
                 : u"done";
  }

  std::mt19937 random;
};

TEST_F(RandomFormulas, AreFrozenAsOneAfterTheOtherWouldBe) {
  int refused = 0;
  for (unsigned seed = 1; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    excel->AddWorkbook();
    for (const std::int32_t n : {1, 2}) {
      random.seed(seed);
      Fill(Sheet(n));
    }
    const std::u16string before = Described(Sheet(2));
    ASSERT_EQ(Described(Sheet(1)), before);
    const auto one_by_one = ErrorOf([&] { FreezeEach(Sheet(1)); });
    const auto by_blocks = ErrorOf([&] {
      Call(reports, u"ClearFormulas", {Traced(Rectangle(Sheet(2), 1, 1, kRows, kColumns), u"Range")});
    });
    EXPECT_EQ(Described(by_blocks), Described(one_by_one));
    ASSERT_EQ(ToUtf8(Described(Sheet(2))), ToUtf8(Described(Sheet(1)))) << ToUtf8(before);
    refused += by_blocks ? 1 : 0;
    Put(Workbook(), u"Saved", true);
    Call(Workbook(), u"Close");
  }
  EXPECT_GT(refused, 10) << "which is what the test is for";
}

}  // namespace
}  // namespace qva
