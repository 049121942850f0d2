#include "tools/doctor/windows/Prober.h"

#include <algorithm>
#include <optional>

#include "platform/host.h"
#include "platform/services.h"
#include "platform/settings.h"
#include "platform/text.h"
#include "platform/windows/Bstr.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/WideText.h"
#include "platform/windows/WindowsApi.h"
#include "platform/windows/services/WindowsPlatform.h"
#include "server/PublicClasses.h"
#include "server/com/LibraryRegistration.h"
#include "server/demo/HostClasses.h"
#include "storage/CSaveForm.h"
#include "tools/doctor/windows/ProgramFiles.h"
#include "tools/doctor/windows/RegistryReader.h"

namespace qva::doctor {
namespace {

using windows::ComPtr;
using windows::TextOf;
using windows::WideText;

constexpr std::u16string_view kLibraryFile = u"QVA_Varnholt.dll";
constexpr View kOtherView = kOwnBitness == Bitness::x64 ? View::x86 : View::x64;

std::u16string GuidText(const CLSID& id) {
  return TextOf(com::GuidText(id).c_str());
}

/// The name of an object's class, as it tells itself.
std::u16string TypeNameOf(IDispatch& object) {
  ComPtr<ITypeInfo> type;
  windows::Bstr name;
  const HRESULT code =
      type.Obtain([&](ITypeInfo** received) { return object.GetTypeInfo(0, LOCALE_USER_DEFAULT, received); });
  if (SUCCEEDED(code) && type) {
    type->GetDocumentation(MEMBERID_NIL, name.Receive(), nullptr, nullptr, nullptr);
  }
  return name.Text();
}

/// The program of a command line such as LocalServer32 has.
std::u16string ProgramOf(const std::u16string& command) {
  if (command.starts_with(u'"')) return command.substr(1, command.find(u'"', 1) - 1);
  const std::size_t end = ToLower(command).find(u".exe");
  return end == command.npos ? command : command.substr(0, end + 4);
}

/// Where Windows would find a file that is named without a folder.
std::u16string WholePath(const std::u16string& file) {
  if (file.find(u'\\') != file.npos) return file;
  wchar_t path[MAX_PATH];
  const DWORD length = SearchPathW(nullptr, WideText(file).c_str(), nullptr, MAX_PATH, path, nullptr);
  return length == 0 || length >= MAX_PATH ? file : TextOf(path, length);
}

class Prober {
 public:
  explicit Prober(const std::function<void(const BitnessFacts&)>& keep) : keep_(keep) {}

  BitnessFacts Run() {
    facts_.bitness = kOwnBitness;
    facts_.beside = FindInPackage(kLibraryFile, kOwnBitness).value_or(u"");
    AddFile(facts_.beside);
    LookAtHive(Hive::User, Root::User);
    LookAtHive(Hive::Machine, Root::Machine);
    for (const PublicClass& public_class : PublicClasses()) {
      TryClass(std::u16string(kLibraryName) + u"." + std::u16string(public_class.description().name()));
    }
    for (const std::u16string_view identifier : host::kCreatableClasses) TryHostClass(identifier);
    AskHost();
    facts_.is_complete = true;
    facts_.doing.clear();
    return std::move(facts_);
  }

 private:
  void Begin(std::u16string_view what) {
    facts_.doing = what;
    keep_(facts_);
  }

  void AddFile(const std::u16string& path) {
    if (path.empty() || facts_.File(path)) return;
    FileFacts& file = facts_.files.emplace_back(LookAt(path));
    if (file.machine != MachineOf(kOwnBitness)) return;
    Begin(u"LoadLibrary(\"" + path + u"\")");
    file.load_code = TryToLoad(path);
  }

  void LookAtHive(Hive hive, Root root) {
    HiveFacts facts{.hive = hive};
    for (const com::RegistrationValue& value : com::DescribeRegistration(L"").values) {
      const std::u16string key = TextOf(value.key.c_str());
      const std::u16string path = TextOf(com::kBelowClasses) + key;
      const std::optional<std::u16string> text = ReadText(root, path, TextOf(value.name.c_str()));
      ++facts.expected;
      if (text || (!value.text && HasKey(root, path))) ++facts.present;
      if (!text || !value.name.empty()) continue;
      if (key.ends_with(u"\\CLSID") && !EqualIgnoringCase(*text, TextOf(value.text->c_str())))
        ++facts.foreign;
      if (key.ends_with(u"\\InprocServer32") && !std::ranges::count(facts.servers, *text)) {
        facts.servers.push_back(*text);
      }
    }
    // Names and type library are the other bitness's, too; without a server they are none of this one.
    if (facts.servers.empty()) facts.present = 0;
    facts_.hives.push_back(facts);
    for (const std::u16string& server : facts.servers) AddFile(server);
  }

  void TryClass(const std::u16string& identifier) {
    Begin(u"CreateObject(\"" + identifier + u"\")");
    Creation creation{.identifier = identifier};
    CLSID class_id;
    HRESULT code = CLSIDFromProgID(WideText(identifier).c_str(), &class_id);
    if (SUCCEEDED(code)) {
      creation.class_id = GuidText(class_id);
      ComPtr<IDispatch> object;
      code = object.Obtain([&](IDispatch** received) {
        return CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                reinterpret_cast<void**>(received));
      });
      if (object) creation.type_name = TypeNameOf(*object);
    }
    creation.code = static_cast<std::uint32_t>(code);
    facts_.creations.push_back(creation);
  }

  /// The machine's class where the demo host, registered for the user, hands on to it.
  static std::optional<CLSID> BehindDemo(std::u16string_view identifier) {
    const demo::HostClass* const host_class = demo::FindHostClass(identifier);
    if (!host_class || !demo::IsUsers(*host_class)) return std::nullopt;
    return demo::ForeignClass(*host_class, com::Scope::Machine);
  }

  void TryHostClass(std::u16string_view identifier) {
    HostClass host{.identifier = std::u16string(identifier)};
    CLSID class_id;
    const auto behind = BehindDemo(identifier);
    host.is_behind_demo = behind.has_value();
    if (behind) class_id = *behind;
    if (behind || SUCCEEDED(CLSIDFromProgID(WideText(identifier).c_str(), &class_id))) {
      host.class_id = GuidText(class_id);
      const std::u16string key = u"CLSID\\" + host.class_id;
      const auto library = ReadText(Root::Classes, key + u"\\InprocServer32", u"");
      auto program = ReadText(Root::Classes, key + u"\\LocalServer32", u"");
      // A program of its own serves both bitnesses.
      if (!program) program = ReadText(Root::Classes, key + u"\\LocalServer32", u"", kOtherView);
      host.is_for_other = HasKey(Root::Classes, key + u"\\InprocServer32", kOtherView);
      if (library) {
        host.server = WholePath(*library);
        Begin(u"CoGetClassObject(\"" + host.identifier + u"\")");
        ComPtr<IUnknown> factory;
        host.code = static_cast<std::uint32_t>(factory.Obtain([&](IUnknown** received) {
          return CoGetClassObject(class_id, CLSCTX_INPROC_SERVER, nullptr, IID_IUnknown,
                                  reinterpret_cast<void**>(received));
        }));
      } else if (program) {
        // It is not started: that may ask the user something.
        host.server = ProgramOf(*program);
        const bool is_there = LookAt(host.server).is_there;
        host.code = static_cast<std::uint32_t>(is_there ? S_OK : HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
      }
    }
    facts_.host_classes.push_back(host);
  }

  bool HostLoads(std::u16string_view identifier) const {
    const auto found = std::ranges::find(facts_.host_classes, identifier, &HostClass::identifier);
    return found != facts_.host_classes.end() && !found->server.empty() && (found->code & 0x80000000u) == 0;
  }

  /// Asks as the library does when a macro connects and when it saves.
  void AskHost() {
    windows::InstallPlatform();
    const Services& services = GetServices();
    const std::u16string book = GetSetting(*services.registry, *services.locale, host::kSettingsApplication,
                                           host::kFormsSection, host::kBookSetting, u"");
    if (!book.empty() && HostLoads(host::kCommonObjects)) {
      Begin(u"CreateBook(\"" + book + u"\")");
      Ask(facts_.book,
          [&] { return host::CommonObjects::Create(*services.object_factory).CreateBook(book).BookCode(); });
    }
    if (HostLoads(host::kDataAccess)) {
      Begin(u"CSaveForm.Init");
      Ask(facts_.archive, [&] {
        const Ref<CSaveForm> form = MakeRef<CSaveForm>();
        form->Init();
        return Get(form, u"GeneralPath").ToText();
      });
      if (facts_.archive.error == 0) facts_.archive_folder = TryFolder(facts_.archive.text);
    }
  }

  template <class Question>
  static void Ask(Answer& answer, Question&& question) {
    answer.is_asked = true;
    try {
      answer.text = question();
    } catch (const AutomationError& error) {
      answer.error = error.number();
      answer.text = error.description();
    }
  }

  const std::function<void(const BitnessFacts&)>& keep_;
  BitnessFacts facts_;
};

}  // namespace

BitnessFacts Probe(const std::function<void(const BitnessFacts&)>& keep) {
  return Prober(keep).Run();
}

}  // namespace qva::doctor
