// Windows' own files, and the file and log utility on them.
#include "platform/windows/WindowsFiles.h"

#include <filesystem>
#include <functional>

#include "platform/date.h"
#include "platform/memory/MemoryClock.h"
#include "platform/memory/MemoryObjectFactory.h"
#include "platform/services.h"
#include "platform/windows/ComObjectFactory.h"
#include "platform/windows/Handle.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"
#include "platform/windows/WindowsLocale.h"
#include "storage/CFile.h"
#include "tests/files.h"
#include "tests/platform/files_contract.h"
#include "tests/windows/windows_test.h"

namespace qva {
namespace {

namespace fs = std::filesystem;

// What Wine cannot be brought to do is done in Windows' place, by these.

template <class Function>
Function* WindowsOwn(const char* name) {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32"), name)));
}

BOOL Refuse(DWORD code) {
  SetLastError(code);
  return FALSE;
}

std::function<void()> flushing;  ///< run before each flushing of a file

BOOL WINAPI FlushAndTell(HANDLE file) {
  if (flushing) flushing();
  return WindowsOwn<decltype(FlushFileBuffers)>("FlushFileBuffers")(file);
}

std::optional<DWORD> room;  ///< bytes of one writing that the disk has room for; nothing: for all
bool room_is_told = true;   ///< whether a writing fails for it, or writes less

BOOL WINAPI WriteIntoRoom(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED overlapped) {
  const bool fits = !room || size <= *room;
  const BOOL done =
      WindowsOwn<decltype(::WriteFile)>("WriteFile")(file, bytes, fits ? size : *room, written, overlapped);
  return fits || !room_is_told ? done : Refuse(ERROR_DISK_FULL);
}

BOOL WINAPI CopyIntoRoom(LPCWSTR from, LPCWSTR to, BOOL only_new) {
  if (room) return Refuse(ERROR_DISK_FULL);
  return WindowsOwn<decltype(CopyFileW)>("CopyFileW")(from, to, only_new);
}

bool is_another_drive = false;  ///< whether files are moved to another drive

BOOL WINAPI MoveOnDrive(LPCWSTR from, LPCWSTR to, DWORD flags) {
  if (is_another_drive && !(flags & MOVEFILE_COPY_ALLOWED)) return Refuse(ERROR_NOT_SAME_DEVICE);
  return WindowsOwn<decltype(MoveFileExW)>("MoveFileExW")(from, to, flags);
}

bool is_path_too_long = false;  ///< for a folder

BOOL WINAPI MakeFolder(LPCWSTR path, LPSECURITY_ATTRIBUTES security) {
  if (is_path_too_long) return Refuse(ERROR_FILENAME_EXCED_RANGE);
  return WindowsOwn<decltype(CreateDirectoryW)>("CreateDirectoryW")(path, security);
}

TIME_ZONE_INFORMATION* zone = nullptr;  ///< of the user, instead of the system's

BOOL WINAPI LocalTimeInZone(const TIME_ZONE_INFORMATION* asked, const SYSTEMTIME* universal,
                            SYSTEMTIME* local) {
  return WindowsOwn<decltype(SystemTimeToTzSpecificLocalTime)>("SystemTimeToTzSpecificLocalTime")(
      asked || !zone ? asked : zone, universal, local);
}

}  // namespace

/// In the place of what the linker would take from Windows' import library.
#ifdef _WIN64
decltype(&FlushFileBuffers) flush_import asm("__imp_FlushFileBuffers") = &FlushAndTell;
decltype(&::WriteFile) write_import asm("__imp_WriteFile") = &WriteIntoRoom;
decltype(&CopyFileW) copy_import asm("__imp_CopyFileW") = &CopyIntoRoom;
decltype(&MoveFileExW) move_import asm("__imp_MoveFileExW") = &MoveOnDrive;
decltype(&CreateDirectoryW) folder_import asm("__imp_CreateDirectoryW") = &MakeFolder;
decltype(&SystemTimeToTzSpecificLocalTime) zone_import asm("__imp_SystemTimeToTzSpecificLocalTime") =
    &LocalTimeInZone;
#else
decltype(&FlushFileBuffers) flush_import asm("__imp__FlushFileBuffers@4") = &FlushAndTell;
decltype(&::WriteFile) write_import asm("__imp__WriteFile@20") = &WriteIntoRoom;
decltype(&CopyFileW) copy_import asm("__imp__CopyFileW@12") = &CopyIntoRoom;
decltype(&MoveFileExW) move_import asm("__imp__MoveFileExW@12") = &MoveOnDrive;
decltype(&CreateDirectoryW) folder_import asm("__imp__CreateDirectoryW@8") = &MakeFolder;
decltype(&SystemTimeToTzSpecificLocalTime) zone_import asm("__imp__SystemTimeToTzSpecificLocalTime@12") =
    &LocalTimeInZone;
#endif

namespace {

/// A folder with Lithuanian letters in its name; its files may be read-only in the end.
class LithuanianFolder : public TemporaryFolder {
 public:
  LithuanianFolder() : TemporaryFolder(u"qva-bandymas ąčęėįšųūž ") {}
  ~LithuanianFolder() {
    std::error_code error;
    for (const auto& entry : fs::recursive_directory_iterator(TemporaryFolder::path(), error)) {
      SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
    }
  }

  std::u16string path() const { return TemporaryFolder::path().u16string(); }
};

struct WindowsDrive {
  Files& files() { return windows; }
  std::u16string root() { return folder.path(); }
  void SetContent(const std::u16string& path, std::string bytes) { WriteFile(path, bytes); }
  std::optional<std::string> Content(const std::u16string& path) { return FileContent(path, "(no file)"); }
  bool LoseCurrentFolder() {
    const fs::path path = fs::path(folder.path()) / "dabar";
    fs::create_directory(path);
    current.emplace(path);
    return RemoveDirectoryW(path.c_str()) != FALSE;
  }

  LithuanianFolder folder;
  std::optional<CurrentFolder> current;
  windows::ComObjectFactory factory;
  windows::WindowsLocale locale;
  windows::WindowsFiles windows{factory, locale};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(WindowsFiles, FilesContract, WindowsDrive);

namespace windows {
namespace {

class WindowsFilesTest : public NothingLeftTest {
 protected:
  ~WindowsFilesTest() override {
    room.reset();
    room_is_told = true;
    is_another_drive = false;
    is_path_too_long = false;
    zone = nullptr;
  }

  std::u16string At(std::u16string_view name) const { return folder.path() + u"\\" + std::u16string(name); }

  LithuanianFolder folder;
  ComObjectFactory factory;
  WindowsLocale locale;
  WindowsFiles files{factory, locale};
};

TEST_F(WindowsFilesTest, TheCurrentFolderIsTheProcesss) {
  const CurrentFolder current(folder.path());
  EXPECT_EQ(files.CurrentFolder(), folder.path());
  files.OpenChannel(1, u"x.txt", ChannelMode::Output)->PrintLine(u"1");
  EXPECT_EQ(FileContent(At(u"x.txt")), "1\r\n");
}

TEST_F(WindowsFilesTest, AReadOnlyFileIsNeitherDeletedNorReplaced) {
  WriteFile(At(u"x.txt"), "old");
  WriteFile(At(u"y.txt"), "new");
  SetFileAttributesW(WideText(At(u"x.txt")).c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(RaisedBy([&] { files.Delete(At(u"x.txt")); }), kPathFileAccess);
  EXPECT_EQ(RaisedBy([&] { files.Copy(At(u"y.txt"), At(u"x.txt")); }), kPathFileAccess);
  EXPECT_EQ(FileContent(At(u"x.txt")), "old");
  EXPECT_EQ(files.Find(folder.path(), u"*").size(), 2u) << "something is left behind";
}

TEST_F(WindowsFilesTest, ACopyOfAReadOnlyFileThatFailsLeavesNothingBehind) {
  WriteFile(At(u"x.txt"), "new");
  WriteFile(At(u"y.txt"), "old");
  SetFileAttributesW(WideText(At(u"x.txt")).c_str(), FILE_ATTRIBUTE_READONLY);
  // The copy can be made and not be put in its place.
  const HANDLE other = CreateFileW(WideText(At(u"y.txt")).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(other, INVALID_HANDLE_VALUE);
  const std::int32_t raised = RaisedBy([&] { files.Copy(At(u"x.txt"), At(u"y.txt")); });
  CloseHandle(other);
  EXPECT_TRUE(raised == kPermissionDenied || raised == kPathFileAccess) << raised;
  EXPECT_EQ(FileContent(At(u"y.txt")), "old");
  EXPECT_EQ(files.Find(folder.path(), u"*").size(), 2u);
}

TEST_F(WindowsFilesTest, ACopyIsOnTheDiskBeforeItReplaces) {
  WriteFile(At(u"x.txt"), "new");
  WriteFile(At(u"y.txt"), "old");
  SetFileAttributesW(WideText(At(u"x.txt")).c_str(), FILE_ATTRIBUTE_READONLY);
  std::vector<std::string> found;
  flushing = [&] { found.push_back(FileContent(At(u"y.txt"), "(no file)")); };
  files.Copy(At(u"x.txt"), At(u"y.txt"));
  flushing = nullptr;
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found[0], "old");
  EXPECT_EQ(FileContent(At(u"y.txt")), "new");
  EXPECT_TRUE(GetFileAttributesW(WideText(At(u"y.txt")).c_str()) & FILE_ATTRIBUTE_READONLY);
}

TEST_F(WindowsFilesTest, CopiesIntoFoldersOfPathsAsLongAsTheyCanBe) {
  constexpr std::size_t kLongest = 247;
  const std::u16string deep = At(std::u16string(kLongest - folder.path().size() - 1, u'd'));
  files.CreateFolder(deep);
  WriteFile(At(u"x.txt"), "new");
  files.Copy(At(u"x.txt"), deep + u"\\y.txt");
  EXPECT_EQ(FileContent(deep + u"\\y.txt"), "new");
  EXPECT_EQ(files.Find(deep, u"*").size(), 1u) << "something is left behind";
}

TEST_F(WindowsFilesTest, ALineThatTheDiskHasNoRoomForIsError61AndNoneOfItStays) {
  for (const bool told : {true, false}) {
    room_is_told = told;
    const auto channel = files.OpenChannel(1, At(u"x.txt"), ChannelMode::Output);
    channel->PrintLine(u"1");
    room = 2;
    EXPECT_EQ(RaisedBy([&] { channel->PrintLine(u"Ąžuolas"); }), kDiskFull);
    EXPECT_EQ(FileContent(At(u"x.txt")), "1\r\n");
    room.reset();
    channel->PrintLine(u"2");
    EXPECT_EQ(FileContent(At(u"x.txt")), "1\r\n2\r\n");
  }
}

TEST_F(WindowsFilesTest, ACopyThatTheDiskHasNoRoomForIsError61AndLeavesTheOldFile) {
  WriteFile(At(u"x.txt"), "new");
  WriteFile(At(u"y.txt"), "old");
  room = 0;
  EXPECT_EQ(RaisedBy([&] { files.Copy(At(u"x.txt"), At(u"y.txt")); }), kDiskFull);
  EXPECT_EQ(FileContent(At(u"y.txt")), "old");
  EXPECT_EQ(files.Find(folder.path(), u"*").size(), 2u) << "something is left behind";
}

TEST_F(WindowsFilesTest, AFileIsNotRenamedToAnotherDrive) {
  WriteFile(At(u"x.txt"), "x");
  is_another_drive = true;
  EXPECT_EQ(RaisedBy([&] { files.Rename(At(u"x.txt"), At(u"y.txt")); }), kOtherDrive);
  EXPECT_EQ(FileContent(At(u"x.txt")), "x");
  EXPECT_FALSE(fs::exists(At(u"y.txt")));
}

TEST_F(WindowsFilesTest, TellsTheTimeOfTheUsersZoneAsItWasThatDay) {
  TIME_ZONE_INFORMATION lithuania{};
  lithuania.Bias = -120;
  lithuania.DaylightBias = -60;
  lithuania.DaylightDate = {.wMonth = 3, .wDayOfWeek = 0, .wDay = 5, .wHour = 3};
  lithuania.StandardDate = {.wMonth = 10, .wDayOfWeek = 0, .wDay = 5, .wHour = 4};
  zone = &lithuania;
  const auto time_of = [&](WORD month, WORD day) {
    const SYSTEMTIME universal{.wYear = 2024, .wMonth = month, .wDay = day, .wHour = 22, .wMinute = 30};
    FILETIME time;
    SystemTimeToFileTime(&universal, &time);
    WriteFile(At(u"x.txt"), "");
    const Handle file = OwnFileHandle(CreateFileW(WideText(At(u"x.txt")).c_str(), FILE_WRITE_ATTRIBUTES, 0,
                                                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    EXPECT_TRUE(SetFileTime(file.get(), nullptr, nullptr, &time));
    return files.LastModified(At(u"x.txt"));
  };
  EXPECT_EQ(time_of(1, 15), *ParseDate(u"2024-01-16 00:30:00", locale));
  EXPECT_EQ(time_of(7, 15), *ParseDate(u"2024-07-16 01:30:00", locale));
}

TEST_F(WindowsFilesTest, AFolderWhosePathIsTooLongIsError52) {
  is_path_too_long = true;
  EXPECT_EQ(RaisedBy([&] { files.CreateFolder(At(u"folder")); }), kBadFileNameOrNumber);
  EXPECT_FALSE(files.FolderExists(At(u"folder")));
}

TEST_F(WindowsFilesTest, AFileThatSomebodyElseKeepsToHimselfIsError70) {
  WriteFile(At(u"x.txt"), "old");
  WriteFile(At(u"y.txt"), "new");
  const HANDLE other = CreateFileW(WideText(At(u"x.txt")).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(other, INVALID_HANDLE_VALUE);
  for (const ChannelMode mode : {ChannelMode::Input, ChannelMode::Output, ChannelMode::Append}) {
    EXPECT_EQ(RaisedBy([&] { files.OpenChannel(1, At(u"x.txt"), mode); }), kPermissionDenied);
  }
  EXPECT_EQ(RaisedBy([&] { files.Delete(At(u"x.txt")); }), kPermissionDenied);
  EXPECT_EQ(RaisedBy([&] { files.Rename(At(u"x.txt"), At(u"z.txt")); }), kPermissionDenied);
  EXPECT_EQ(RaisedBy([&] { files.Copy(At(u"x.txt"), At(u"z.txt")); }), kPermissionDenied);
  CloseHandle(other);
  EXPECT_EQ(files.FreeNumber(), 1);
  EXPECT_EQ(FileContent(At(u"x.txt")), "old");
  EXPECT_EQ(files.Find(folder.path(), u"*").size(), 2u);
}

TEST_F(WindowsFilesTest, OthersMayReadWhatAChannelWritesAndNothingElse) {
  const auto channel = files.OpenChannel(1, At(u"x.txt"), ChannelMode::Output);
  channel->PrintLine(u"1");
  EXPECT_EQ(FileContent(At(u"x.txt")), "1\r\n");
  const HANDLE other = CreateFileW(WideText(At(u"x.txt")).c_str(), GENERIC_WRITE,
                                   FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(other, INVALID_HANDLE_VALUE);
  EXPECT_FALSE(DeleteFileW(WideText(At(u"x.txt")).c_str()));
}

TEST_F(WindowsFilesTest, AMissingFileSystemObjectIsError429) {
  MemoryObjectFactory none;
  WindowsFiles without(none, locale);
  EXPECT_EQ(RaisedBy([&] { without.CreateTextStream(At(u"x.txt")); }), kCannotCreateObject);
  EXPECT_EQ(RaisedBy([&] { without.OpenTextStream(At(u"x.txt"), StreamMode::ForReading); }),
            kCannotCreateObject);
}

TEST_F(WindowsFilesTest, AFileSystemObjectThatGivesNothingGivesNoStream) {
  MemoryObjectFactory silent;
  silent.Register(u"Scripting.FileSystemObject", [] {
    const ComPtr<TestDispatch> object = NewDispatch();
    object->names = {u"CreateTextFile", u"Unicode", u"OpenTextFile"};
    object->invoke = [](const InvokeCall& call) {
      call.result->vt = VT_DISPATCH;
      call.result->pdispVal = nullptr;
      return S_OK;
    };
    return ObjectOver(object);
  });
  WindowsFiles with(silent, locale);
  EXPECT_FALSE(with.CreateTextStream(At(u"x.txt")));
  EXPECT_FALSE(with.OpenTextStream(At(u"x.txt"), StreamMode::ForAppending));
}

/// CFile on Windows' own services, at a time that is known, in the date format of the user "yyyy.MM.dd".
class WindowsCFile : public WindowsFilesTest {
 protected:
  WindowsCFile() {
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, L"yyyy.MM.dd");
    clock.Set(*ParseDate(u"2010.11.12 14:05:09", locale));
    Services services = installed;
    services.clock = &clock;
    InstallServices(services);
    file.SetPath(folder.path());
    file.SetFileName(u"Žurnalas.txt");
  }
  ~WindowsCFile() override {
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, WideText(short_date).c_str());
    InstallServices(installed);
  }

  /// Closes the stream by moving it to another file: whether others may read what a stream has open differs.
  void CloseStream() {
    const std::u16string name = file.FileName();
    file.SetFileName(u"kitas.txt");
    file.CrFile();
    file.SetFileName(name);
  }

  const Services installed = GetServices();
  const std::u16string short_date = locale.ShortDatePattern();
  MemoryClock clock;
  std::u16string no_name;
  CFile file;
};

TEST_F(WindowsCFile, WritesALogInTheAnsiCodePage) {
  EXPECT_TRUE(file.StartLog());
  EXPECT_TRUE(file.WriteStrLog(u"Išsaugota „Forma“ 漢"));
  EXPECT_TRUE(file.EndLog());
  EXPECT_EQ(FileContent(At(u"Žurnalas.txt")),
            "--- New sesion ----- [2010.11.12 14:05:09] -------------------------------\r\n"
            "2010.11.12 14:05:09  :  I\xF0saugota \x84"
            "Forma\x93 ?\r\n"
            "--- End sesion ----- [2010.11.12 14:05:09] -------------------------------\r\n");
}

TEST_F(WindowsCFile, WritesALogInUtf16) {
  file.SetIsUnicode(true);
  EXPECT_TRUE(file.StartLog());
  EXPECT_TRUE(file.WriteStrLog(u"Išsaugota 漢"));
  EXPECT_TRUE(file.EndLog());
  CloseStream();
  const std::u16string_view expected =
      u"\uFEFF--- New sesion ----- [2010.11.12 14:05:09] -------------------------------\r\n"
      u"2010.11.12 14:05:09  :  Išsaugota 漢\r\n"
      u"--- End sesion ----- [2010.11.12 14:05:09] -------------------------------\r\n";
  std::string bytes;
  for (const char16_t c : expected) {
    bytes += static_cast<char>(c & 0xFF);
    bytes += static_cast<char>(c >> 8);
  }
  EXPECT_EQ(FileContent(At(u"Žurnalas.txt")), bytes);
}

TEST_F(WindowsCFile, ReadsBackWhatItWrote) {
  file.WriteStr(u"Ąžuolas");
  file.WriteStr(u"");
  EXPECT_TRUE(file.OpenFile(no_name));
  EXPECT_EQ(no_name, At(u"Žurnalas.txt"));
  std::u16string line;
  EXPECT_TRUE(file.ReadStr(line));
  EXPECT_EQ(line, u"Ąžuolas");
  EXPECT_TRUE(file.ReadStr(line));
  EXPECT_EQ(line, u"");
  EXPECT_FALSE(file.ReadStr(line));
}

TEST_F(WindowsCFile, TheResultsOfUnicodeModeAreInverted) {
  file.SetIsUnicode(true);
  EXPECT_FALSE(file.CrFile());
  CloseStream();
  EXPECT_EQ(FileContent(At(u"Žurnalas.txt")), "\xFF\xFE");
  EXPECT_FALSE(file.OpenFileForAppend(no_name));
  EXPECT_FALSE(file.OpenFile(no_name));
}

TEST_F(WindowsCFile, BacksAFileUp) {
  file.WriteStr(u"1");
  file.SetPath(folder.path() + u"\\");
  EXPECT_TRUE(file.SaveFileAsBackup());
  EXPECT_EQ(file.FileName(), u"Žurnalas.txt.bak");
  EXPECT_TRUE(file.SaveFileAsBackup());
  EXPECT_EQ(FileContent(At(u"Žurnalas.txt.bak.bak")), "1\r\n");
  EXPECT_EQ(files.Find(folder.path(), u"*").size(), 1u);
}

TEST_F(WindowsCFile, AFileWhoseStreamIsOpenCannotBeBackedUp) {
  file.SetIsUnicode(true);
  file.WriteStr(u"1");
  file.SetPath(folder.path() + u"\\");
  EXPECT_EQ(RaisedBy([&] { file.SaveFileAsBackup(); }), kPermissionDenied);
  EXPECT_EQ(file.FileName(), u"Žurnalas.txt");
}

TEST_F(WindowsCFile, MovesAFileToBackup) {
  WriteFile(At(u"Ataskaita.xls"), "1");
  EXPECT_TRUE(CFile::MoveFileToBackup(At(u"Ataskaita.xls"), u""));
  EXPECT_FALSE(fs::exists(At(u"Ataskaita.xls")));
  EXPECT_EQ(FileContent(At(u"BACKUP\\Ataskaita.xls")), "1");
  WriteFile(At(u"Ataskaita.xls"), "2");
  EXPECT_TRUE(CFile::MoveFileToBackup(At(u"Ataskaita.xls"), At(u"BACKUP")));
  EXPECT_EQ(FileContent(At(u"BACKUP\\Ataskaita.xls")), "2");
}

TEST_F(WindowsCFile, CopiesOnlyWhatChanged) {
  WriteFile(At(u"x.xls"), "new");
  WriteFile(At(u"y.xls"), "older");
  const auto copy = [&] {
    CFile::CopyFile(At(u"x.xls"), CFile::FileDateTimeAttr(At(u"x.xls")),
                    static_cast<std::int32_t>(CFile::FileLenAttr(At(u"x.xls"))), At(u"y.xls"));
  };
  copy();
  EXPECT_EQ(FileContent(At(u"y.xls")), "new");
  EXPECT_EQ(CFile::FileDateTimeAttr(At(u"y.xls")), CFile::FileDateTimeAttr(At(u"x.xls")));
  // Other content of the same length and time, by which one sees whether it is copied over.
  WriteFile(At(u"y.xls"), "NEW");
  fs::last_write_time(At(u"y.xls"), fs::last_write_time(At(u"x.xls")));
  copy();
  EXPECT_EQ(FileContent(At(u"y.xls")), "NEW");
}

}  // namespace
}  // namespace windows
}  // namespace qva
