// What the twin takes for granted of Excel, in memory. LibreOffice, the test bench and users' own Excels are
// asked for the same.
#include <memory>

#include "tests/corpus/Corpus.h"
#include "tests/corpus/MemoryEngine.h"

namespace qva::corpus {

void PrintTo(const Facts& facts, std::ostream* out) {
  *out << facts.name;
}

namespace {

class ExcelFacts : public testing::TestWithParam<Facts> {};

TEST_P(ExcelFacts, HoldOfTheTwin) {
  const auto engine = std::make_unique<MemoryEngine>("excel_" + GetParam().name);
  EXPECT_EQ(engine->Run(GetParam().macro), GetParam().log);
}

INSTANTIATE_TEST_SUITE_P(All, ExcelFacts, testing::ValuesIn(AllFacts()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace qva::corpus
