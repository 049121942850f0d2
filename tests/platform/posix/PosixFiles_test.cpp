#include "platform/posix/PosixFiles.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <functional>

#include "platform/date.h"
#include "platform/memory/MemoryLocale.h"
#include "tests/files.h"
#include "tests/platform/files_contract.h"
#include "tests/raised_error.h"
#include "tests/temporary_environment.h"

namespace {

/// Gets the path of each file and folder that is flushed, before it is.
std::function<void(const std::filesystem::path&)> flushing;

}  // namespace

/// In the C library's place.
extern "C" int fsync(int descriptor) {
  if (flushing) flushing(std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor)));
  return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

namespace qva {
namespace {

namespace fs = std::filesystem;

struct PosixDrive {
  PosixDrive() { fs::create_directories(folder / "D" / "Bandymai"); }
  Files& files() { return posix; }
  std::u16string root() { return u"D:\\Bandymai"; }
  void SetContent(const std::u16string& path, std::string bytes) {
    WriteFile(posix.SystemPath(path), std::move(bytes));
  }
  std::optional<std::string> Content(const std::u16string& path) {
    const fs::path file = posix.SystemPath(path);
    return fs::exists(file) ? std::optional(FileContent(file)) : std::nullopt;
  }
  bool LoseCurrentFolder() {
    fs::create_directory(folder / "dabar");
    current.emplace(folder / "dabar");
    return fs::remove(folder / "dabar");
  }

  TemporaryFolder folder;
  MemoryLocale locale;
  PosixFiles posix{folder.path(), locale};
  std::optional<CurrentFolder> current;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(PosixFiles, FilesContract, PosixDrive);

namespace {

/// Lets the process have so much of something (RLIMIT_FSIZE, RLIMIT_NOFILE) and no more.
class Limit {
 public:
  Limit(__rlimit_resource_t resource, rlim_t most) : resource_(resource) {
    ::getrlimit(resource_, &before_);
    rlimit limit = before_;
    limit.rlim_cur = most;
    ::setrlimit(resource_, &limit);
  }
  ~Limit() {
    ::setrlimit(resource_, &before_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  __rlimit_resource_t resource_;
  rlimit before_{};
  void (*handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

class PosixFilesTest : public testing::Test {
 protected:
  void WriteDriveFile(const std::string& name, std::string_view content) {
    fs::create_directories(folder / "drives/C");
    WriteFile(folder / "drives/C" / name, content);
  }
  std::unique_ptr<TextChannel> Open(std::u16string_view path, ChannelMode mode) {
    return files.OpenChannel(files.FreeNumber(), path, mode);
  }

  TemporaryFolder folder;
  MemoryLocale locale;
  PosixFiles files{folder / "drives", locale};
};

TEST_F(PosixFilesTest, DriveCIsMadeOnFirstUse) {
  EXPECT_FALSE(fs::exists(folder / "drives"));
  Open(u"C:\\x.txt", ChannelMode::Output)->PrintLine(u"1");
  EXPECT_EQ(FileContent(folder / "drives/C/x.txt"), "1\r\n");
}

TEST_F(PosixFilesTest, DriveCIsAlwaysThere) {
  EXPECT_TRUE(files.FolderExists(u"c:\\"));
  EXPECT_EQ(RaisedBy([&] { files.Length(u"C:\\x.txt"); }), kFileNotFound);
}

TEST_F(PosixFilesTest, OtherDrivesAreFoldersOrLinksThatTheUserMakes) {
  EXPECT_EQ(RaisedBy([&] { Open(u"D:\\x.txt", ChannelMode::Output); }), kPathNotFound);
  EXPECT_EQ(RaisedBy([&] { files.CreateFolder(u"D:\\"); }), kPathNotFound);
  EXPECT_FALSE(fs::exists(folder / "drives/D"));
  fs::create_directories(folder / "drives/d");
  fs::create_directories(folder / "elsewhere");
  fs::create_directory_symlink(folder / "elsewhere", folder / "drives/E");
  Open(u"D:\\x.txt", ChannelMode::Output)->PrintLine(u"1");
  Open(u"E:\\x.txt", ChannelMode::Output)->PrintLine(u"2");
  EXPECT_EQ(FileContent(folder / "drives/d/x.txt"), "1\r\n");
  EXPECT_EQ(FileContent(folder / "elsewhere/x.txt"), "2\r\n");
}

TEST_F(PosixFilesTest, SharesAreFoldersBelowUNC) {
  EXPECT_FALSE(files.FolderExists(u"\\\\server\\share"));
  fs::create_directories(folder / "drives/UNC/Server/Share");
  Open(u"\\\\server\\share\\x.txt", ChannelMode::Output)->PrintLine(u"1");
  EXPECT_EQ(FileContent(folder / "drives/UNC/Server/Share/x.txt"), "1\r\n");
}

TEST_F(PosixFilesTest, APathWithASlashInFrontIsOneOfTheSystem) {
  fs::create_directories(folder / "Archyvas/2024");
  const std::u16string archive = FromUtf8((folder / "Archyvas").string());
  Open(archive + u"\\2024\\x.txt", ChannelMode::Output)->PrintLine(u"1");
  EXPECT_EQ(FileContent(folder / "Archyvas/2024/x.txt"), "1\r\n");
  EXPECT_TRUE(files.FolderExists(FromUtf8((folder / "archyvas").string()) + u"\\2024\\"));
  EXPECT_FALSE(fs::exists(folder / "drives"));
}

TEST_F(PosixFilesTest, WithoutAFolderThereAreNoDrives) {
  PosixFiles nowhere{{}, locale};
  EXPECT_FALSE(nowhere.FolderExists(u"C:\\"));
  EXPECT_EQ(RaisedBy([&] { nowhere.OpenChannel(1, u"C:\\x", ChannelMode::Output); }), kPathNotFound);
  EXPECT_TRUE(nowhere.FolderExists(u"/"));
}

TEST_F(PosixFilesTest, DotsDoNotLeadOutOfADrive) {
  Open(u"C:\\..\\..\\x.txt", ChannelMode::Output);
  EXPECT_TRUE(fs::exists(folder / "drives/C/x.txt"));
}

TEST_F(PosixFilesTest, TheCurrentFolderIsTheProcesss) {
  fs::create_directories(folder / "drives/C/Host/Bin");
  const CurrentFolder current(folder / "drives/C/Host/Bin");
  EXPECT_EQ(files.CurrentFolder(), u"C:\\Host\\Bin");
  Open(u"x.txt", ChannelMode::Output)->PrintLine(u"1");
  Open(u"\\y.txt", ChannelMode::Output)->PrintLine(u"2");
  EXPECT_EQ(FileContent(folder / "drives/C/Host/Bin/x.txt"), "1\r\n");
  EXPECT_EQ(FileContent(folder / "drives/C/y.txt"), "2\r\n");
}

TEST_F(PosixFilesTest, TheRootOfADriveCanBeTheCurrentFolder) {
  fs::create_directories(folder / "drives/C");
  const CurrentFolder current(folder / "drives/C");
  EXPECT_EQ(files.CurrentFolder(), u"C:\\");
  EXPECT_TRUE(files.FolderExists(u"."));
}

TEST_F(PosixFilesTest, ACurrentFolderOffTheDrivesIsAPathOfTheSystem) {
  fs::create_directories(folder / "drives");
  fs::create_directories(folder / "a: b");
  const CurrentFolder current(folder / "a: b");
  EXPECT_EQ(files.CurrentFolder(), FromUtf8(fs::current_path().string()));
  Open(u"x.txt", ChannelMode::Output)->PrintLine(u"1");
  EXPECT_EQ(FileContent(folder / "a: b/x.txt"), "1\r\n");
}

TEST_F(PosixFilesTest, ThePathOnADriveIsFoundFromTheSystemsPath) {
  fs::create_directories(folder / "elsewhere");
  fs::create_directories(folder / "drives");
  fs::create_directory_symlink(folder / "elsewhere", folder / "drives/D");
  EXPECT_EQ(files.DrivePath(folder / "drives/C/Aplankas/x.txt"), u"C:\\Aplankas\\x.txt") << "there or not";
  EXPECT_EQ(files.DrivePath(folder / "drives/D/x.txt"), u"D:\\x.txt") << "a drive that is a link";
  EXPECT_EQ(files.DrivePath(folder / "drives/C"), u"C:\\");
  for (const fs::path& off : {folder / "elsewhere/x.txt", folder / "drives", folder / "drives/Ilgas/x.txt"}) {
    EXPECT_EQ(files.DrivePath(off), FromUtf8(off.string()));
  }
}

TEST_F(PosixFilesTest, OfNamesThatDifferInLetterCaseTheOneAsWrittenIsMeant) {
  fs::create_directories(folder / "drives/C");
  WriteFile(folder / "drives/C/x.txt", "small");
  WriteFile(folder / "drives/C/X.TXT", "LARGE.");
  EXPECT_EQ(files.Length(u"C:\\x.txt"), 5);
  EXPECT_EQ(files.Length(u"C:\\X.TXT"), 6);
  EXPECT_EQ(files.Length(u"C:\\X.txt"), 6) << "the first of them";
}

TEST_F(PosixFilesTest, ALineThatDoesNotFitLeavesNothingOfItself) {
  for (const ChannelMode mode : {ChannelMode::Output, ChannelMode::Append}) {
    const auto channel = Open(u"C:\\x.txt", mode);
    const std::string before = FileContent(folder / "drives/C/x.txt");
    channel->PrintLine(u"1");
    {
      const Limit limit(RLIMIT_FSIZE, before.size() + 10);
      EXPECT_EQ(RaisedBy([&] { channel->PrintLine(u"a line that is too long"); }), kDiskFull);
      EXPECT_EQ(FileContent(folder / "drives/C/x.txt"), before + "1\r\n");
    }
    channel->PrintLine(u"2");
    EXPECT_EQ(FileContent(folder / "drives/C/x.txt"), before + "1\r\n2\r\n");
  }
}

TEST_F(PosixFilesTest, AFullDeviceIsError61) {
  fs::create_directories(folder / "drives/C");
  fs::create_symlink("/dev/full", folder / "drives/C/x.txt");
  EXPECT_EQ(RaisedBy([&] { Open(u"C:\\x.txt", ChannelMode::Append)->PrintLine(u"1"); }), kDiskFull);
  EXPECT_EQ(RaisedBy([&] { files.CreateTextStream(u"C:\\x.txt"); }), kDiskFull);
}

TEST_F(PosixFilesTest, MoreFilesThanTheProcessMayOpenAreError67) {
  WriteDriveFile("x.txt", "1\r\n");
  {
    const Limit limit(RLIMIT_NOFILE, 0);
    EXPECT_EQ(RaisedBy([&] { Open(u"C:\\x.txt", ChannelMode::Input); }), kTooManyFiles);
    EXPECT_EQ(RaisedBy([&] { files.OpenTextStream(u"C:\\x.txt", StreamMode::ForReading); }), kTooManyFiles);
  }
  EXPECT_NE(Open(u"C:\\x.txt", ChannelMode::Input), nullptr);
}

TEST_F(PosixFilesTest, ACopyThatDoesNotFitLeavesTheTarget) {
  fs::create_directories(folder / "drives/C");
  WriteFile(folder / "drives/C/x.txt", std::string(100, 'x'));
  WriteFile(folder / "drives/C/y.txt", "old");
  {
    const Limit limit(RLIMIT_FSIZE, 50);
    EXPECT_EQ(RaisedBy([&] { files.Copy(u"C:\\x.txt", u"C:\\y.txt"); }), kDiskFull);
    EXPECT_EQ(RaisedBy([&] { files.Copy(u"C:\\x.txt", u"C:\\z.txt"); }), kDiskFull);
  }
  EXPECT_EQ(FileContent(folder / "drives/C/y.txt"), "old");
  EXPECT_EQ(files.Find(u"C:\\", u"*").size(), 2u) << "something is left behind";
}

TEST_F(PosixFilesTest, ACopyKeepsTimePermissionsAndALinkInItsPlace) {
  fs::create_directories(folder / "drives/C");
  WriteFile(folder / "drives/C/x.txt", "x");
  WriteFile(folder / "real.txt", "old");
  fs::create_symlink(folder / "real.txt", folder / "drives/C/y.txt");
  ::chmod((folder / "drives/C/x.txt").c_str(), 0640);
  const timespec times[] = {{1000000000, 0}, {1000000000, 0}};
  ::utimensat(AT_FDCWD, (folder / "drives/C/x.txt").c_str(), times, 0);
  files.Copy(u"C:\\x.txt", u"C:\\y.txt");
  EXPECT_EQ(FileContent(folder / "real.txt"), "x");
  EXPECT_TRUE(fs::is_symlink(folder / "drives/C/y.txt"));
  struct stat status {};
  ASSERT_EQ(::stat((folder / "real.txt").c_str(), &status), 0);
  EXPECT_EQ(status.st_mtime, 1000000000);
  EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(PosixFilesTest, TimesAreLocal) {
  TemporaryEnvironment environment;
  environment.Set("TZ", "Europe/Vilnius");
  ::tzset();
  fs::create_directories(folder / "drives/C");
  WriteFile(folder / "drives/C/x.txt", "x");
  const timespec times[] = {{1718182800, 0}, {1718182800, 999999999}};  // 12 June 2024, 9:00:00 UTC
  ::utimensat(AT_FDCWD, (folder / "drives/C/x.txt").c_str(), times, 0);
  const double noon = DateFromParts(2024, 6, 12).serial + 0.5;
  EXPECT_DOUBLE_EQ(files.LastModified(u"C:\\x.txt").serial, noon);
}

TEST_F(PosixFilesTest, RenamesAFileToOtherLetterCase) {
  Open(u"C:\\x.txt", ChannelMode::Output);
  files.Rename(u"C:\\x.txt", u"C:\\X.TXT");
  EXPECT_THAT(files.Find(u"C:\\", u"*"), testing::ElementsAre(u"X.TXT"));
}

TEST_F(PosixFilesTest, RenamesNothingToAnotherDrive) {
  fs::create_directories(folder / "drives/C");
  fs::create_directory_symlink("/dev/shm", folder / "drives/D");
  if (fs::space("/dev/shm").capacity == fs::space(folder.path()).capacity) {
    GTEST_SKIP() << "there is no second file system";
  }
  WriteFile(folder / "drives/C/qva-test.txt", "x");
  EXPECT_EQ(RaisedBy([&] { files.Rename(u"C:\\qva-test.txt", u"D:\\qva-test.txt"); }), kOtherDrive);
  EXPECT_EQ(FileContent(folder / "drives/C/qva-test.txt"), "x");
}

TEST_F(PosixFilesTest, AnAnsiStreamRefusesACharacterThatTheCodePageLacks) {
  const auto stream = files.OpenTextStream(u"C:\\x.txt", StreamMode::ForAppending);
  EXPECT_EQ(RaisedBy([&] { stream->WriteLine(u"a漢b"); }), kInvalidProcedureCall);
  EXPECT_EQ(FileContent(folder / "drives/C/x.txt"), "");
}

TEST(UserDrivesPath, IsTheVariablesOrBelowTheUsersData) {
  TemporaryEnvironment environment;
  environment.Set("QVA_VARNHOLT_DRIVES", "/srv/drives");
  environment.Set("XDG_DATA_HOME", "/data");
  environment.Set("HOME", "/home/ona");
  EXPECT_EQ(UserDrivesPath(), "/srv/drives");
  environment.Set("QVA_VARNHOLT_DRIVES", "");
  EXPECT_EQ(UserDrivesPath(), "/data/qva-varnholt/drives");
  environment.Set("XDG_DATA_HOME", "relative");
  EXPECT_EQ(UserDrivesPath(), "/home/ona/.local/share/qva-varnholt/drives");
}

TEST_F(PosixFilesTest, ACopyIsOnTheDiskBeforeItReplacesAndItsNameAfterwards) {
  WriteDriveFile("x.txt", "new");
  WriteDriveFile("y.txt", "old");
  std::vector<std::string> flushed;
  flushing = [&](const fs::path& path) {
    flushed.push_back((fs::is_directory(path) ? "folder " : FileContent(path) + " ") +
                      FileContent(folder / "drives/C/y.txt"));
  };
  files.Copy(u"C:\\x.txt", u"C:\\y.txt");
  flushing = nullptr;
  EXPECT_THAT(flushed, testing::ElementsAre("new old", "folder new"));
}

TEST_F(PosixFilesTest, CopiesToNamesAsLongAsTheyCanBe) {
  WriteDriveFile("x.txt", "new");
  for (const std::size_t length : {1u, 249u, 255u}) {
    const std::string name(length, 'y');
    files.Copy(u"C:\\x.txt", u"C:\\" + FromUtf8(name));
    EXPECT_EQ(FileContent(folder / "drives/C" / name), "new") << length;
  }
  EXPECT_EQ(files.Find(u"C:\\", u"*").size(), 4u) << "something is left behind";
}

}  // namespace
}  // namespace qva
