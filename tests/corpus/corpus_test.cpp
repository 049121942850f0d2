// Every macro of the corpus, in memory.
#include <cstdlib>
#include <memory>

#include "tests/corpus/Corpus.h"
#include "tests/corpus/MemoryEngine.h"
#include "tests/files.h"

namespace qva::corpus {
namespace {

class CorpusMacro : public testing::TestWithParam<std::string> {};

/// With QVA_CORPUS_RECORD set the log is written, to be read by whoever changed the macro.
TEST_P(CorpusMacro, LogsWhatItsGoldenLogHolds) {
  const auto engine = std::make_unique<MemoryEngine>(GetParam());
  const std::string log = engine->Run();
  EXPECT_EQ(engine->FormProblems(), "");
  if (std::getenv("QVA_CORPUS_RECORD")) {
    WriteFile(Folder() / "macros" / (GetParam() + ".log"), log);
    GTEST_SKIP() << "recorded";
  }
  EXPECT_EQ(log, GoldenLogOf(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(All, CorpusMacro, testing::ValuesIn(MacroNames()),
                         [](const auto& info) { return info.param; });

}  // namespace
}  // namespace qva::corpus
