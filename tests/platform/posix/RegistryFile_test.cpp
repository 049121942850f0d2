#include "platform/posix/RegistryFile.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <set>
#include <vector>

#include "platform/memory/MemoryLocale.h"
#include "platform/posix/FileAccess.h"
#include "platform/settings.h"
#include "platform/text.h"
#include "tests/files.h"
#include "tests/platform/registry_contract.h"
#include "tests/temporary_environment.h"

namespace qva {
namespace {

struct FileStore {
  Registry& registry() { return file; }
  std::u16string root() { return u"Bandymai"; }

  TemporaryFolder folder;
  RegistryFile file{folder / "registry.reg"};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(RegistryFile, RegistryContract, FileStore);

namespace {

constexpr std::uint32_t kAccess = 63;  // what the library asks for

class RegistryFileTest : public testing::Test {
 protected:
  RegistryKey Create(std::u16string_view path, RegistryKey parent = HKEY_CURRENT_USER_VALUE) {
    RegistryKey key = 0;
    EXPECT_EQ(registry.CreateKey(parent, path, kAccess, {}, key), kRegistrySuccess) << ToUtf8(path);
    return key;
  }
  RegistryKey Open(std::u16string_view path, std::uint32_t access = kAccess) {
    RegistryKey key = 0;
    EXPECT_EQ(registry.OpenKey(HKEY_CURRENT_USER_VALUE, path, access, key), kRegistrySuccess) << ToUtf8(path);
    return key;
  }
  std::int32_t OpenStatus(std::u16string_view path) {
    RegistryKey key = 77;
    const std::int32_t status = registry.OpenKey(HKEY_CURRENT_USER_VALUE, path, kAccess, key);
    if (status != kRegistrySuccess) {
      EXPECT_EQ(key, 77u) << "touched on failure";
    }
    return status;
  }
  std::int32_t SetText(RegistryKey key, std::u16string_view name, std::string_view text) {
    return registry.SetValue(key, name, kRegSz, text);
  }
  /// The value as the library reads it, terminating zero and all; "(status)" when that fails.
  std::string Read(RegistryKey key, std::u16string_view name) {
    std::string data(1000, '~');
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    const std::int32_t status = registry.QueryValue(key, name, type, data, size);
    return status == kRegistrySuccess ? data.substr(0, size) : "(" + std::to_string(status) + ")";
  }
  static std::string Z(std::string_view text) { return std::string(text) + '\0'; }

  void WriteRegistry(std::string_view sections) {
    std::filesystem::create_directories(file.parent_path());
    WriteFile(file, "Windows Registry Editor Version 5.00\n\n" + std::string(sections));
  }

  TemporaryFolder folder;
  const std::filesystem::path file = folder / "config" / "registry.reg";
  RegistryFile registry{file};
};

TEST_F(RegistryFileTest, ReadingCreatesNothing) {
  EXPECT_EQ(OpenStatus(u"Environment"), kRegistryFileNotFound);
  EXPECT_EQ(Read(HKEY_CURRENT_USER_VALUE, u"PATH"), "(2)");
  EXPECT_FALSE(std::filesystem::exists(folder / "config"));
}

TEST_F(RegistryFileTest, ChangeCreatesAReadableFileForTheUserAlone) {
  const RegistryKey key = Create(u"Environment");
  EXPECT_EQ(SetText(key, u"PATH", "C:\\Host\\\xD0iaurys"), kRegistrySuccess);
  EXPECT_EQ(FileContent(file),
            "Windows Registry Editor Version 5.00\n"
            "\n"
            "[HKEY_CURRENT_USER\\Environment]\n"
            "\"PATH\"=\"C:\\\\Host\\\\Šiaurys\"\n");
  struct stat info {};
  ASSERT_EQ(::stat(file.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0600u);
}

TEST_F(RegistryFileTest, TextOf254CharactersFitsTheLibrarysBufferAndOneMoreDoesNot) {
  const RegistryKey key = Create(u"Environment");
  std::string data(255, ' ');
  std::uint32_t type = 0;
  std::uint32_t size = 255;
  SetText(key, u"PATH", std::string(254, '\xF0'));
  EXPECT_EQ(registry.QueryValue(key, u"PATH", type, data, size), kRegistrySuccess);
  SetText(key, u"PATH", std::string(255, '\xF0'));
  EXPECT_EQ(registry.QueryValue(key, u"PATH", type, data, size), kRegistryMoreData);
}

TEST_F(RegistryFileTest, KeysAndNamesKeepTheirSpelling) {
  const RegistryKey key = Create(u"Software\\Šalis");
  SetText(key, u"Ąžuolas", "1");
  SetText(Open(u"SOFTWARE\\ŠALIS"), u"ĄŽUOLAS", "2");
  EXPECT_NE(FileContent(file).find("[HKEY_CURRENT_USER\\Software\\Šalis]\n\"Ąžuolas\"=\"2\"\n"),
            std::string::npos)
      << FileContent(file);
}

TEST_F(RegistryFileTest, CreatingAnExistingKeyOpensItAndWritesNothing) {
  WriteRegistry("[HKEY_CURRENT_USER\\Environment]\n\"PATH\"=\"x\"\n");
  const std::string before = FileContent(file);
  EXPECT_EQ(Read(Create(u"environment"), u"PATH"), Z("x"));
  EXPECT_EQ(FileContent(file), before);
}

TEST_F(RegistryFileTest, ValuesCanStandInTheRoot) {
  EXPECT_EQ(SetText(HKEY_CURRENT_USER_VALUE, u"", "default"), kRegistrySuccess);
  EXPECT_EQ(Read(HKEY_CURRENT_USER_VALUE, u""), Z("default"));
  EXPECT_NE(FileContent(file).find("[HKEY_CURRENT_USER]\n@=\"default\"\n"), std::string::npos);
}

TEST_F(RegistryFileTest, HasNoOtherPredefinedKey) {
  constexpr RegistryKey kLocalMachine = 0x80000002;
  RegistryKey other = 0;
  EXPECT_EQ(registry.OpenKey(kLocalMachine, u"", kAccess, other), kRegistryInvalidHandle);
  EXPECT_EQ(registry.CreateKey(kLocalMachine, u"A", kAccess, {}, other), kRegistryInvalidHandle);
  EXPECT_EQ(Read(kLocalMachine, u"PATH"), "(6)");
  EXPECT_EQ(SetText(kLocalMachine, u"PATH", "x"), kRegistryInvalidHandle);
}

TEST_F(RegistryFileTest, HandlesThatAreNeverClosedHoldNoFileOpen) {
  Create(u"Environment");
  const auto open_files = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
  };
  const auto before = open_files();
  std::set<RegistryKey> keys;
  for (int i = 0; i < 2000; ++i) keys.insert(Open(u"Environment"));
  EXPECT_EQ(keys.size(), 2000u);
  EXPECT_EQ(open_files(), before);
}

TEST_F(RegistryFileTest, SeesWhatTheUserWrites) {
  const RegistryKey key = Create(u"Environment");
  SetText(key, u"PATH", "x");
  WriteRegistry("; by hand\n[HKEY_CURRENT_USER\\environment]\n\"Path\"=\"y\"\n\"Temp\"=\"z\"\n");
  EXPECT_EQ(Read(key, u"PATH"), Z("y"));
  EXPECT_EQ(SetText(key, u"PATH", "w"), kRegistrySuccess);
  EXPECT_EQ(FileContent(file),
            "Windows Registry Editor Version 5.00\n\n; by hand\n[HKEY_CURRENT_USER\\environment]\n"
            "\"Path\"=\"w\"\n\"Temp\"=\"z\"\n");
}

TEST_F(RegistryFileTest, WritingIntoAKeyThatIsGoneFails) {
  const RegistryKey key = Create(u"Environment");
  WriteRegistry("");
  EXPECT_EQ(SetText(key, u"PATH", "x"), kRegistryFileNotFound);
  EXPECT_EQ(FileContent(file), "Windows Registry Editor Version 5.00\n\n");
}

TEST_F(RegistryFileTest, MalformedFileIsNeverOverwritten) {
  const RegistryKey key = Create(u"Environment");
  for (const char* content :
       {"my shopping list\n", "Windows Registry Editor Version 5.00\n[HKEY_CURRENT_USER\\A\n",
        "Windows Registry Editor Version 5.00\n[HKEY_CURRENT_USER\\A]\n\"a\"=\"x\n"}) {
    WriteFile(file, content);
    EXPECT_EQ(OpenStatus(u"Environment"), kRegistryFileNotFound);
    EXPECT_EQ(Read(key, u"PATH"), "(2)");
    RegistryKey other = 77;
    EXPECT_EQ(registry.CreateKey(HKEY_CURRENT_USER_VALUE, u"A", kAccess, {}, other), kRegistryWriteFault);
    EXPECT_EQ(other, 77u);
    EXPECT_EQ(SetText(key, u"PATH", "x"), kRegistryWriteFault);
    EXPECT_EQ(registry.DeleteValue(key, u"PATH"), kRegistryWriteFault);
    EXPECT_EQ(FileContent(file), content);
  }
}

TEST_F(RegistryFileTest, NamesThatWouldBreakTheLinesAreRefused) {
  const RegistryKey key = Create(u"Environment");
  const std::string before = FileContent(file);
  EXPECT_EQ(SetText(key, u"a\nb", "x"), kRegistryWriteFault);
  RegistryKey other = 0;
  EXPECT_EQ(registry.CreateKey(key, u"A]\n[B", kAccess, {}, other), kRegistryWriteFault);
  EXPECT_EQ(FileContent(file), before);
}

TEST_F(RegistryFileTest, PlaceThatCannotBeWrittenGivesAWriteFault) {
  for (const std::filesystem::path& path :
       {std::filesystem::path(), std::filesystem::path("/proc/no/registry.reg"), folder.path()}) {
    RegistryFile unwritable(path);
    RegistryKey key = 0;
    EXPECT_EQ(unwritable.CreateKey(HKEY_CURRENT_USER_VALUE, u"A", kAccess, {}, key), kRegistryWriteFault)
        << path;
    EXPECT_EQ(unwritable.OpenKey(HKEY_CURRENT_USER_VALUE, u"A", kAccess, key), kRegistryFileNotFound) << path;
  }
}

TEST_F(RegistryFileTest, LockThatIsNotLetGoGivesAWriteFault) {
  const RegistryKey key = Create(u"Environment");
  const FileDescriptor lock = LockFile(file.string() + ".lock", std::chrono::seconds(1));
  ASSERT_TRUE(lock);
  const std::string before = FileContent(file);
  EXPECT_EQ(SetText(key, u"PATH", "x"), kRegistryWriteFault);
  EXPECT_EQ(FileContent(file), before);
  EXPECT_EQ(OpenStatus(u"Environment"), kRegistrySuccess) << "reading needs no lock";
}

TEST_F(RegistryFileTest, NothingThatSeveralProcessesWriteIsLost) {
  constexpr int kProcesses = 3;
  constexpr int kValues = 20;
  std::vector<pid_t> children;
  for (int process = 0; process < kProcesses; ++process) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      RegistryFile mine(file);
      RegistryKey key = 0;
      std::int32_t status = mine.CreateKey(HKEY_CURRENT_USER_VALUE, u"Shared", kAccess, {}, key);
      for (int i = 0; i < kValues && status == kRegistrySuccess; ++i) {
        const std::u16string name = NumberText(process) + u"." + NumberText(i);
        status = mine.SetValue(key, name, kRegSz, std::string_view("x"));
      }
      ::_exit(status == kRegistrySuccess ? 0 : 1);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  const RegistryKey key = Open(u"Shared");
  for (int process = 0; process < kProcesses; ++process) {
    for (int i = 0; i < kValues; ++i) {
      EXPECT_EQ(Read(key, NumberText(process) + u"." + NumberText(i)), Z("x")) << process << "." << i;
    }
  }
}

TEST_F(RegistryFileTest, HoldsTheSettingsStore) {
  WriteRegistry(
      "[HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\Quillon Enterprise\\General]\n"
      "\"BookRepSave\"=\"C:\\\\Ataskaitos\\\\Metinės\"\n");
  EXPECT_EQ(GetSetting(registry, MemoryLocale(), u"Quillon Enterprise", u"General", u"BookRepSave", u""),
            u"C:\\Ataskaitos\\Metinės");
}

class UserRegistryPathTest : public testing::Test {
 protected:
  UserRegistryPathTest() {
    environment.Set("QVA_VARNHOLT_REGISTRY", std::nullopt);
    environment.Set("XDG_CONFIG_HOME", std::nullopt);
    environment.Set("HOME", "/home/user");
  }
  TemporaryEnvironment environment;
};

TEST_F(UserRegistryPathTest, IsInTheUsersConfigurationFolder) {
  EXPECT_EQ(UserRegistryPath(), "/home/user/.config/qva-varnholt/registry.reg");
  environment.Set("XDG_CONFIG_HOME", "/config");
  EXPECT_EQ(UserRegistryPath(), "/config/qva-varnholt/registry.reg");
  environment.Set("XDG_CONFIG_HOME", "relative");
  EXPECT_EQ(UserRegistryPath(), "/home/user/.config/qva-varnholt/registry.reg");
}

TEST_F(UserRegistryPathTest, IsWhereTheVariableSays) {
  environment.Set("QVA_VARNHOLT_REGISTRY", "/elsewhere/my.reg");
  EXPECT_EQ(UserRegistryPath(), "/elsewhere/my.reg");
  environment.Set("QVA_VARNHOLT_REGISTRY", "");
  EXPECT_EQ(UserRegistryPath(), "/home/user/.config/qva-varnholt/registry.reg");
}

TEST_F(RegistryFileTest, AMistakeIsToldOnceWithItsLine) {
  std::vector<std::string> told;
  RegistryFile telling{file, [&](const std::u16string& problem) { told.push_back(ToUtf8(problem)); }};
  const auto read = [&] {
    RegistryKey key = 0;
    return telling.OpenKey(HKEY_CURRENT_USER_VALUE, u"Environment", kAccess, key);
  };
  read();
  EXPECT_THAT(told, testing::IsEmpty()) << "there is no file, and none is needed";
  WriteRegistry("[HKEY_CURRENT_USER\\Environment]\n\"PATH\"=unquoted\n");
  read();
  read();
  RegistryKey key = 0;
  EXPECT_EQ(telling.CreateKey(HKEY_CURRENT_USER_VALUE, u"New", kAccess, {}, key), kRegistryWriteFault);
  ASSERT_EQ(told.size(), 1u);
  EXPECT_THAT(told[0], testing::HasSubstr("„" + file.string() + "“ eilutėje 4 yra klaida"));
  WriteRegistry("[HKEY_CURRENT_USER\\Environment]\n");
  EXPECT_EQ(read(), kRegistrySuccess);
  WriteRegistry("nonsense\n[\n");
  read();
  ASSERT_EQ(told.size(), 2u) << "it went wrong again";
  EXPECT_THAT(told[1], testing::HasSubstr(" eilutėje 4"));
}

}  // namespace
}  // namespace qva
