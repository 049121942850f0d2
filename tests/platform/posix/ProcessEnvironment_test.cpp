#include "platform/posix/ProcessEnvironment.h"

#include "tests/platform/posix/temporary_folder.h"

namespace qva {
namespace {

class ProcessEnvironmentTest : public testing::Test {
 protected:
  TemporaryEnvironment variables;
  ProcessEnvironment environment;
};

TEST_F(ProcessEnvironmentTest, GivesTheLengthAndATerminatedText) {
  variables.Set("QVA_TEST", "abc");
  std::string buffer(6, '~');
  EXPECT_EQ(environment.GetVariable(u"QVA_TEST", buffer), 3u);
  EXPECT_EQ(buffer, std::string("abc\0~~", 6));
}

TEST_F(ProcessEnvironmentTest, BufferThatIsTooSmallIsLeftAloneAndTheNeededSizeTold) {
  variables.Set("QVA_TEST", "abc");
  std::string buffer(3, '~');
  EXPECT_EQ(environment.GetVariable(u"QVA_TEST", buffer), 4u);
  EXPECT_EQ(buffer, "~~~");
  EXPECT_EQ(environment.GetVariable(u"QVA_TEST", {}), 4u);
  buffer = "~~~~";
  EXPECT_EQ(environment.GetVariable(u"QVA_TEST", buffer), 3u);
}

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

TEST_F(ProcessEnvironmentTest, KnowsWhereTheLibraryLies) {
  // Here that is this program; the loader may name it by a path from the folder it was started in.
  const auto folder = std::filesystem::absolute(std::filesystem::path(environment.LibraryFolder()));
  EXPECT_EQ(std::filesystem::weakly_canonical(folder),
            std::filesystem::read_symlink("/proc/self/exe").parent_path());
}

}  // namespace
}  // namespace qva
