// Comma-separated values.
#include "tools/report-runner/Csv.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace qva {
namespace {

using testing::ElementsAre;
using Fields = std::vector<std::string>;

std::vector<Fields> FieldsOf(std::string_view text) {
  std::vector<Fields> fields;
  for (const CsvRow& row : ReadCsv(text)) fields.push_back(row.fields);
  return fields;
}

TEST(Csv, FieldsStandBetweenCommas) {
  EXPECT_THAT(FieldsOf("a,b\r\n1,\n"), ElementsAre(Fields{"a", "b"}, Fields{"1", ""}));
  EXPECT_THAT(FieldsOf("a;b,c\n1;2,3"), ElementsAre(Fields{"a;b", "c"}, Fields{"1;2", "3"}));
}

TEST(Csv, OrBetweenSemicolonsWhereTheFirstLineHasNoComma) {
  EXPECT_THAT(FieldsOf("a;b\n1,5;2\n"), ElementsAre(Fields{"a", "b"}, Fields{"1,5", "2"}));
}

TEST(Csv, QuotationMarksKeepSeparatorsLineEndsAndEachOther) {
  EXPECT_THAT(FieldsOf("a\n\"1,2\"\"\n3\",\"\"\n"), ElementsAre(Fields{"a"}, Fields{"1,2\"\n3", ""}));
}

TEST(Csv, AMarkAndEmptyLinesCountForNothing) {
  EXPECT_THAT(FieldsOf("\xEF\xBB\xBF"
                       "a,b\r\n\r\n1,2\n\n"),
              ElementsAre(Fields{"a", "b"}, Fields{"1", "2"}));
  EXPECT_THAT(FieldsOf(""), ElementsAre());
}

TEST(Csv, RowsKnowTheLineThatTheyBeginIn) {
  std::vector<int> lines;
  for (const CsvRow& row : ReadCsv("a\n\n\"1\n2\"\n3")) lines.push_back(row.line);
  EXPECT_THAT(lines, ElementsAre(1, 3, 5));
}

TEST(Csv, TellsTheLineOfAQuotationMarkThatIsNotClosed) {
  try {
    ReadCsv("a\n\"1\n2");
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "line 2: a quotation mark is not closed");
  }
}

TEST(Csv, WhatIsWrittenIsReadAgain) {
  const Fields fields = {"ą b", "", "1,2", "a;b", "\"", "1\r\n2"};
  EXPECT_EQ(CsvLine(fields), "ą b,,\"1,2\",\"a;b\",\"\"\"\",\"1\r\n2\"\r\n");
  EXPECT_THAT(FieldsOf(CsvLine({"x", "y"}) + CsvLine(fields)), ElementsAre(Fields{"x", "y"}, fields));
  EXPECT_THAT(FieldsOf(CsvLine({"", "y"})), ElementsAre(Fields{"", "y"})) << "an empty field in front";
}

}  // namespace
}  // namespace qva
