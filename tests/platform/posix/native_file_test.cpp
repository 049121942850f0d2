#include "platform/filesystem/native_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/files.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

class AppendToFileTest : public testing::Test {
 protected:
  AppendToFileTest() : mask_(::umask(0)) {}
  ~AppendToFileTest() override { ::umask(mask_); }

  fs::perms Rights() const { return fs::status(file).permissions(); }

  TemporaryFolder folder;
  fs::path file = folder.path() / "log.txt";

 private:
  mode_t mask_;
};

TEST_F(AppendToFileTest, CreatesTheFileForItsOwnerAlone) {
  ASSERT_TRUE(AppendToFile(file, "a\n"));
  EXPECT_EQ(Rights(), fs::perms::owner_read | fs::perms::owner_write);
  ASSERT_TRUE(AppendToFile(file, "b\n"));
  EXPECT_EQ(ReadWholeFile(file), "a\nb\n");
}

TEST_F(AppendToFileTest, LeavesAFileTheRightsThatItHas) {
  WriteFile(file, "a\n");
  ASSERT_TRUE(AppendToFile(file, "b\n"));
  EXPECT_EQ(Rights(), fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read |
                          fs::perms::group_write | fs::perms::others_read | fs::perms::others_write);
}

TEST_F(AppendToFileTest, TellsOfAFolderThatIsMissing) {
  EXPECT_FALSE(AppendToFile(folder.path() / "none" / "log.txt", "a\n"));
}

}  // namespace
}  // namespace qva
