#include "platform/posix/FileAccess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <set>
#include <thread>

#include "platform/posix/OwnersFolders.h"
#include "tests/files.h"

namespace qva {
namespace {

using std::chrono::milliseconds;

class FileAccess : public testing::Test {
 protected:
  static mode_t PermissionsOf(const std::filesystem::path& path) {
    struct stat info {};
    EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
    return info.st_mode & 07777;
  }

  std::set<std::string> Names() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  TemporaryFolder folder;
  const std::filesystem::path file = folder / "file";
};

TEST_F(FileAccess, ReadsWholeFiles) {
  const std::string content = std::string(100000, 'x') + std::string("\0\r\n", 3);
  WriteFile(file, content);
  EXPECT_EQ(ReadFileOrEmpty(file), content);
}

TEST_F(FileAccess, MissingFileIsEmptyAndAnUnreadableOneNothing) {
  EXPECT_EQ(ReadFileOrEmpty(file), "");
  EXPECT_EQ(ReadFileOrEmpty(folder.path()), std::nullopt);
  WriteFile(file, "x");
  EXPECT_EQ(ReadFileOrEmpty(file / "below"), std::nullopt);
}

TEST_F(FileAccess, NewFileBelongsToItsOwnerAlone) {
  EXPECT_TRUE(ReplaceWholeFile(file, "content"));
  EXPECT_EQ(FileContent(file), "content");
  EXPECT_EQ(PermissionsOf(file), 0600u);
  EXPECT_EQ(Names(), std::set<std::string>{"file"});
}

TEST_F(FileAccess, ReplacedFileKeepsItsPermissions) {
  WriteFile(file, "old");
  ::chmod(file.c_str(), 0664);
  EXPECT_TRUE(ReplaceWholeFile(file, "new"));
  EXPECT_EQ(FileContent(file), "new");
  EXPECT_EQ(PermissionsOf(file), 0664u);
  EXPECT_EQ(Names(), std::set<std::string>{"file"});
}

TEST_F(FileAccess, WhoHasTheOldFileOpenGoesOnReadingIt) {
  WriteFile(file, "old");
  std::ifstream reader(file);
  EXPECT_TRUE(ReplaceWholeFile(file, "new"));
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old");
}

TEST_F(FileAccess, SymbolicLinkStaysOne) {
  WriteFile(folder / "target", "old");
  std::filesystem::create_symlink("target", file);
  EXPECT_TRUE(ReplaceWholeFile(file, "new"));
  EXPECT_TRUE(std::filesystem::is_symlink(file));
  EXPECT_EQ(FileContent(folder / "target"), "new");
}

TEST_F(FileAccess, FailureLeavesNothingBehind) {
  EXPECT_FALSE(ReplaceWholeFile(folder / "missing" / "file", "x"));
  std::filesystem::create_directory(file);
  EXPECT_FALSE(ReplaceWholeFile(file, "x"));
  EXPECT_EQ(Names(), std::set<std::string>{"file"});
}

TEST_F(FileAccess, ReadOnlyFileIsNotReplaced) {
  WriteFile(file, "old");
  ::chmod(file.c_str(), 0444);
  ::chmod(folder.path().c_str(), 0777);
  const auto replace_as_somebody = [&] {
    // Root may write anything, so root becomes nobody.
    if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) ::_exit(2);
    ::_exit(ReplaceWholeFile(file, "new") ? 1 : 0);
  };
  EXPECT_EXIT(replace_as_somebody(), testing::ExitedWithCode(0), "");
  EXPECT_EQ(FileContent(file), "old");
  EXPECT_EQ(Names(), std::set<std::string>{"file"});
}

TEST_F(FileAccess, LockIsHeldByOneAtATime) {
  FileDescriptor first = LockFile(file, milliseconds(0));
  ASSERT_TRUE(first);
  EXPECT_FALSE(LockFile(file, milliseconds(30)));
  first = {};
  EXPECT_TRUE(LockFile(file, milliseconds(0)));
}

TEST_F(FileAccess, LockIsWaitedFor) {
  FileDescriptor first = LockFile(file, milliseconds(0));
  ASSERT_TRUE(first);
  std::thread holder([&] {
    std::this_thread::sleep_for(milliseconds(50));
    first = {};
  });
  EXPECT_TRUE(LockFile(file, std::chrono::seconds(10)));
  holder.join();
}

TEST_F(FileAccess, LockThatCannotBeMadeIsNone) {
  EXPECT_FALSE(LockFile(folder / "missing" / "lock", milliseconds(0)));
}

TEST_F(FileAccess, AFileIsReplacedWhoseNameIsAsLongOrAsShortAsNamesCanBe) {
  for (const std::size_t length : {1u, 2u, 249u, 255u}) {
    const std::filesystem::path named = folder / std::string(length, 'x');
    EXPECT_TRUE(ReplaceWholeFile(named, "old"));
    EXPECT_TRUE(ReplaceWholeFile(named, "new")) << length;
    EXPECT_EQ(FileContent(named), "new");
  }
  EXPECT_EQ(Names().size(), 4u) << "something is left behind";
}

TEST_F(FileAccess, FoldersAreCreatedForTheirOwnerAlone) {
  CreateOwnersFolders(folder / "one" / "two");
  EXPECT_EQ(PermissionsOf(folder / "one"), 0700u);
  EXPECT_EQ(PermissionsOf(folder / "one/two"), 0700u);
}

}  // namespace
}  // namespace qva
