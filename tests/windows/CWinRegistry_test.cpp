// CWinRegistry on the real registry: what advapi32 is asked for, and which keys stay open.
#include "storage/CWinRegistry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/windows/WindowsApi.h"
#include "platform/windows/services/WindowsPlatform.h"

// This program's entries for advapi32's functions, through which all of its calls go.
#ifdef _WIN64
#define IMPORTED(name, bytes_of_arguments) __asm__("__imp_" #name)
#else
#define IMPORTED(name, bytes_of_arguments) __asm__("__imp__" #name "@" #bytes_of_arguments)
#endif
extern decltype(&RegOpenKeyExA) imported_open IMPORTED(RegOpenKeyExA, 20);
extern decltype(&RegCreateKeyExA) imported_create IMPORTED(RegCreateKeyExA, 36);
extern decltype(&RegQueryValueExA) imported_query IMPORTED(RegQueryValueExA, 24);
extern decltype(&RegSetValueExA) imported_set IMPORTED(RegSetValueExA, 24);
extern decltype(&RegDeleteValueA) imported_delete IMPORTED(RegDeleteValueA, 8);
extern decltype(&RegCloseKey) imported_close IMPORTED(RegCloseKey, 4);

namespace qva::windows {
namespace {

using testing::ElementsAre;

const char* const kRegistryPath = "Software\\QVA_Varnholt Test\\Environment";

/// Puts a function in the place of an imported one for as long as it lives.
template <class Function>
class Replaced {
 public:
  Replaced(Function& entry, Function replacement) : entry_(entry), original_(entry) { Write(replacement); }
  ~Replaced() { Write(original_); }
  Replaced(const Replaced&) = delete;
  Replaced& operator=(const Replaced&) = delete;
  Function original() const { return original_; }

 private:
  void Write(Function function) {
    DWORD protection = 0;
    ASSERT_TRUE(VirtualProtect(&entry_, sizeof entry_, PAGE_READWRITE, &protection));
    entry_ = function;
    VirtualProtect(&entry_, sizeof entry_, protection, &protection);
  }

  Function& entry_;
  Function original_;
};

/// The calls of the class, each written down with its arguments and passed on to the real function.
class RecordedRegistry : public testing::Test {
 protected:
  RecordedRegistry() {
    current = this;
    InstallPlatform();
  }
  ~RecordedRegistry() override {
    for (const HKEY key : keys) close.original()(key);
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\QVA_Varnholt Test");
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\QVA_Varnholt Test");
    current = nullptr;
  }

  bool Save(const std::u16string& name, const std::u16string& value) {
    return registry.SaveRegSetting(HKEY_CURRENT_USER_VALUE, u"Software\\QVA_Varnholt Test\\Environment", name,
                                   value, kRegSz);
  }
  std::u16string Get(const std::u16string& name) {
    std::int32_t type = kRegSz;
    return registry.GetRegSetting(HKEY_CURRENT_USER_VALUE, u"Software\\QVA_Varnholt Test\\Environment", name,
                                  type);
  }
  bool Delete(const std::u16string& name) {
    return registry.DeleteRegSetting(HKEY_CURRENT_USER_VALUE, u"Software\\QVA_Varnholt Test\\Environment",
                                     name);
  }

  static std::string Text(const char* text) { return text ? "\"" + std::string(text) + "\"" : "null"; }
  static std::string Hexadecimal(ULONG_PTR number) {
    char text[32];
    std::snprintf(text, sizeof text, "%llx", static_cast<unsigned long long>(number));
    return text;
  }
  /// A predefined key by its number, an opened one as the count of those opened.
  std::string Key(HKEY key) const {
    if (key == HKEY_CURRENT_USER) return "HKEY_CURRENT_USER";
    for (std::size_t i = keys.size(); i > 0; --i) {
      if (keys[i - 1] == key) return "key " + std::to_string(i);
    }
    return "an unknown key";
  }
  /// Whether the handle of the n-th opened key is one that the registry still knows.
  bool IsOpen(std::size_t n) const {
    return RegQueryInfoKeyA(keys.at(n - 1), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
  }

  static LSTATUS WINAPI Open(HKEY parent, LPCSTR path, DWORD options, REGSAM access, PHKEY key) {
    current->calls.push_back("open " + current->Key(parent) + " " + Text(path) + " options " +
                             std::to_string(options) + " access " + std::to_string(access));
    const LSTATUS status = current->open.original()(parent, path, options, access, key);
    if (status == ERROR_SUCCESS) current->keys.push_back(*key);
    return status;
  }
  static LSTATUS WINAPI Create(HKEY parent, LPCSTR path, DWORD reserved, LPSTR class_name, DWORD options,
                               REGSAM access, const LPSECURITY_ATTRIBUTES security, PHKEY key,
                               LPDWORD disposition) {
    current->calls.push_back(
        "create " + current->Key(parent) + " " + Text(path) + " reserved " + std::to_string(reserved) +
        " class " + Text(class_name) + " options " + std::to_string(options) + " access " +
        std::to_string(access) + " security " + std::to_string(security->nLength) +
        (security->lpSecurityDescriptor ? " descriptor " : " no descriptor ") +
        std::to_string(security->bInheritHandle) + (disposition ? " disposition" : " no disposition"));
    const LSTATUS status = current->create.original()(parent, path, reserved, class_name, options, access,
                                                      security, key, disposition);
    if (status == ERROR_SUCCESS) current->keys.push_back(*key);
    return status;
  }
  static LSTATUS WINAPI Query(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                              LPDWORD size) {
    const std::string buffer(reinterpret_cast<const char*>(data), *size);
    current->calls.push_back("query " + current->Key(key) + " " + Text(name) +
                             (reserved ? " reserved" : " null") + " type " + std::to_string(*type) +
                             " size " + std::to_string(*size) +
                             (buffer == std::string(*size, ' ') ? " blanks" : " something"));
    return current->query.original()(key, name, reserved, type, data, size);
  }
  static LSTATUS WINAPI Set(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
    current->calls.push_back(
        "set " + current->Key(key) + " " + (std::string(name).size() > 50 ? "a long name" : Text(name)) +
        " reserved " + std::to_string(reserved) + " type " + std::to_string(type) + " [" +
        std::string(reinterpret_cast<const char*>(data), size) + "] " + std::to_string(size));
    return current->set.original()(key, name, reserved, type, data, size);
  }
  static LSTATUS WINAPI DeleteValue(HKEY key, LPCSTR name) {
    current->calls.push_back("delete " + current->Key(key) + " " + Text(name));
    return current->delete_value.original()(key, name);
  }
  static LSTATUS WINAPI Close(HKEY key) {
    current->calls.push_back("close " + current->Key(key));
    return current->close.original()(key);
  }

  static inline RecordedRegistry* current = nullptr;
  std::vector<std::string> calls;
  std::vector<HKEY> keys;  ///< in the order in which they were opened
  CWinRegistry registry;
  Replaced<decltype(imported_open)> open{imported_open, &Open};
  Replaced<decltype(imported_create)> create{imported_create, &Create};
  Replaced<decltype(imported_query)> query{imported_query, &Query};
  Replaced<decltype(imported_set)> set{imported_set, &Set};
  Replaced<decltype(imported_delete)> delete_value{imported_delete, &DeleteValue};
  Replaced<decltype(imported_close)> close{imported_close, &Close};
};

TEST_F(RecordedRegistry, IsWrittenWithSecurityOfLength10AndTheInheritFlagMinus1) {
  EXPECT_TRUE(Save(u"PATH", u"C:\\Host"));
  EXPECT_THAT(calls, ElementsAre("create HKEY_CURRENT_USER \"" + std::string(kRegistryPath) +
                                     "\" reserved 0 class \"\" options 0 access 63 security 10 no descriptor "
                                     "-1 disposition",
                                 "set key 1 \"PATH\" reserved 0 type 1 [C:\\Host] 7", "close key 1"));
  EXPECT_FALSE(IsOpen(1));
}

TEST_F(RecordedRegistry, IsReadIntoABufferOf255Blanks) {
  Save(u"PATH", u"C:\\Host");
  calls.clear();
  EXPECT_EQ(Get(u"PATH"), u"C:\\Host");
  EXPECT_THAT(calls,
              ElementsAre("open HKEY_CURRENT_USER \"" + std::string(kRegistryPath) + "\" options 0 access 63",
                          "query key 2 \"PATH\" null type 1 size 255 blanks", "close key 2"));
  EXPECT_EQ(Get(u"TEMP"), u"");
  EXPECT_EQ(calls.back(), "close key 3") << "also after a failure";
  EXPECT_FALSE(IsOpen(2) || IsOpen(3));
}

TEST_F(RecordedRegistry, KeepsTheKeyOpenWhenTheValueCannotBeDeleted) {
  Save(u"PATH", u"C:\\Host");
  EXPECT_TRUE(Delete(u"PATH"));
  EXPECT_FALSE(IsOpen(2));
  calls.clear();
  EXPECT_FALSE(Delete(u"PATH"));
  EXPECT_THAT(calls,
              ElementsAre("open HKEY_CURRENT_USER \"" + std::string(kRegistryPath) + "\" options 0 access 63",
                          "delete key 3 \"PATH\""));
  EXPECT_TRUE(IsOpen(3));
}

TEST_F(RecordedRegistry, KeepsTheKeyOpenWhenTheValueCannotBeWritten) {
  // The registry refuses names of more than 16383 characters.
  EXPECT_FALSE(Save(std::u16string(20000, u'n'), u"C:\\Host"));
  EXPECT_EQ(calls.back(), "set key 1 a long name reserved 0 type 1 [C:\\Host] 7");
  EXPECT_TRUE(IsOpen(1));
}

}  // namespace
}  // namespace qva::windows
