// The demo host keeps what every host promises, to a client that reaches it by COM.
#include <windows.h>

#include <filesystem>
#include <fstream>

#include "platform/cannot_create.h"
#include "tests/com/client/client.h"
#include "tests/files.h"
#include "tests/host/sample_facts.h"
#include "tests/temporary_environment.h"

namespace qva::com {
namespace {

namespace fs = std::filesystem;

/// The numbers of the demo host's classes are their places in the host's table.
constexpr CLSID DemoClass(std::size_t place) {
  return {
      0x7c3f9e14, 0x2b86, 0x4a57, {0x9d, 0x1e, 0x4f, 0x60, 0xb8, 0x25, 0xd3, static_cast<BYTE>(place + 1)}};
}

/// The demo host as a new process meets it, on a database of its own, for a user who answers by files.
class DemoSystem : ObjectFactory {
 public:
  DemoSystem() {
    // The bench's host, which is registered for the machine, would come before the demo host.
    RegCreateKeyW(HKEY_CURRENT_USER, kMachine, &machine_);
    EXPECT_EQ(RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine_), ERROR_SUCCESS);
    fs::copy(fs::path(LibraryPath()).parent_path() / "host", folder_ / "host");
    const fs::path sample = folder_ / "host" / "sample.sql";
    WriteFile(sample, FileContent(sample) + embedded::kContractSql);
    WriteFile(folder_ / "boxes", "");
    WriteFile(folder_ / "lists", "");
    environment_.Set("QVA_HOST_RESOURCES", folder_ / "host");
    environment_.Set("QVA_HOST_DATABASE", folder_ / "host.sqlite");
    environment_.Set("QVA_HOST_LIST_ANSWERS", folder_ / "lists");
    environment_.Set("QVA_VARNHOLT_ANSWERS", folder_ / "boxes");
    environment_.Set("QVA_VARNHOLT_MESSAGE_LOG", folder_ / "log");
    module_ = LoadLibraryW((fs::path(LibraryPath()).parent_path() / "QVA_DemoHost.dll").c_str());
    EXPECT_TRUE(module_) << GetLastError();
  }
  DemoSystem(const DemoSystem&) = delete;
  DemoSystem& operator=(const DemoSystem&) = delete;
  ~DemoSystem() override {
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(Export<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow")(), S_OK);
    FreeLibrary(module_);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(machine_);
    RegDeleteKeyW(HKEY_CURRENT_USER, kMachine);
  }

  ObjectFactory& factory() { return *this; }
  static HostFacts Facts() { return embedded::SampleFacts(); }

  void Press(std::int32_t button) { WriteFile(folder_ / "boxes", std::to_string(button) + "\n"); }
  std::vector<ShownMessage> Messages() const {
    std::vector<ShownMessage> messages;
    std::ifstream log(folder_ / "log");
    const auto value = [](const std::string& line) { return FromUtf8(std::string_view(line).substr(11)); };
    for (std::string line; std::getline(log, line);) {
      if (line.starts_with("  title:   ")) messages.push_back({.title = value(line)});
      if (line.starts_with("  text:    ")) messages.back().text = value(line);
      if (!line.starts_with("  buttons: ")) continue;
      // "1 Taip | 2 Ne"
      for (std::size_t at = 11; at < line.size();) {
        const std::size_t caption = line.find(' ', at) + 1;
        const std::size_t end = std::min(line.find(" | ", caption), line.size());
        messages.back().captions.push_back(FromUtf8(line.substr(caption, end - caption)));
        at = end + 3;
      }
    }
    return messages;
  }
  void Pick(const std::vector<std::optional<std::u16string>>& codes) {
    std::string answers;
    for (const auto& code : codes) answers += "list" + (code ? " = " + ToUtf8(*code) : "") + "\n";
    WriteFile(folder_ / "lists", answers);
  }
  std::size_t Lists() const {
    const std::string log = FileContent(folder_ / "log", "");
    std::size_t lists = 0;
    for (std::size_t at = log.find("   list: "); at != log.npos; at = log.find("   list: ", at + 1)) ++lists;
    return lists;
  }
  /// The log has what was picked alone.
  static std::optional<std::vector<std::u16string>> Codes() { return std::nullopt; }

 private:
  static constexpr wchar_t kMachine[] = L"Software\\QVA_TestMachine";

  template <class Function>
  Function Export(const char* name) const {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }

  ObjectPtr Create(std::u16string_view programmatic_identifier) override {
    const auto* const found = std::ranges::find(host::kCreatableClasses, programmatic_identifier);
    const CLSID class_id = DemoClass(static_cast<std::size_t>(found - std::begin(host::kCreatableClasses)));
    ComPtr<IClassFactory> factory;
    factory.Obtain([&](IClassFactory** received) {
      return Export<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject")(
          class_id, IID_IClassFactory, reinterpret_cast<void**>(received));
    });
    ComPtr<IDispatch> object;
    if (factory) {
      object.Obtain([&](IDispatch** received) {
        return factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(received));
      });
    }
    if (!object) throw CannotCreate(programmatic_identifier);
    return windows::ToObject(object.get());
  }

  const TemporaryFolder folder_;
  HKEY machine_ = nullptr;
  TemporaryEnvironment environment_;
  HMODULE module_ = nullptr;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(DemoHost, HostContract, DemoSystem);

}  // namespace qva::com
