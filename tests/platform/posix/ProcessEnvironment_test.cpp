#include "platform/posix/ProcessEnvironment.h"

#include "tests/platform/environment_contract.h"
#include "tests/temporary_environment.h"

namespace qva {
namespace {

class ThisProcess {
 public:
  Environment& environment() { return environment_; }
  void Set(std::u16string_view name, std::u16string_view value) { variables_.Set(name, value); }
  /// The loader may name this program, which has the library within, by a path from where it was started.
  static bool IsOwn(const std::u16string& folder) {
    return std::filesystem::canonical(folder) ==
           std::filesystem::read_symlink("/proc/self/exe").parent_path();
  }

 private:
  TemporaryEnvironment variables_;
  ProcessEnvironment environment_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(ProcessEnvironment, EnvironmentContract, ThisProcess);

namespace {

class ProcessEnvironmentTest : public testing::Test {
 protected:
  TemporaryEnvironment variables;
  ProcessEnvironment environment;
};

TEST_F(ProcessEnvironmentTest, PathOf1023CharactersFitsTheLibrarysBufferAndOneMoreDoesNot) {
  std::string buffer(1024, '~');
  variables.Set("QVA_TEST", std::string(1023, 'x'));
  EXPECT_EQ(environment.GetVariable(u"QVA_TEST", buffer), 1023u);
  variables.Set("QVA_TEST", std::string(1024, 'x'));
  EXPECT_EQ(environment.GetVariable(u"QVA_TEST", buffer), 1025u);
}

TEST_F(ProcessEnvironmentTest, CountsCharactersOfTheAnsiCodePage) {
  variables.Set("QVA_TEST", "ąž€я");
  std::string buffer(5, '~');
  EXPECT_EQ(environment.GetVariable(u"QVA_TEST", buffer), 4u);
  EXPECT_EQ(buffer, std::string("\xE0\xFE\x80?\0", 5));
}

TEST_F(ProcessEnvironmentTest, MissingAndEmptyVariablesGiveZero) {
  variables.Set("QVA_TEST", std::nullopt);
  std::string buffer(2, '~');
  EXPECT_EQ(environment.GetVariable(u"QVA_TEST", buffer), 0u);
  EXPECT_EQ(environment.GetVariable(u"", buffer), 0u);
  EXPECT_EQ(buffer, "~~");
  variables.Set("QVA_TEST", "");
  EXPECT_EQ(environment.GetVariable(u"QVA_TEST", buffer), 0u);
  EXPECT_EQ(buffer, std::string("\0~", 2));
}

TEST_F(ProcessEnvironmentTest, NamesIgnoreLetterCaseButTheExactSpellingWins) {
  std::string buffer(2, '~');
  variables.Set("qva_test", "a");
  EXPECT_EQ(environment.GetVariable(u"QVA_Test", buffer), 1u);
  EXPECT_EQ(buffer[0], 'a');
  variables.Set("QVA_TEST", "b");
  environment.GetVariable(u"QVA_TEST", buffer);
  EXPECT_EQ(buffer[0], 'b');
  environment.GetVariable(u"qva_test", buffer);
  EXPECT_EQ(buffer[0], 'a');
}

}  // namespace
}  // namespace qva
