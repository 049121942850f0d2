#include "tools/doctor/Judgement.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"
#include "tools/doctor/RepairPlan.h"

namespace qva::doctor {
namespace {

using Values = std::map<std::u16string, Words, std::less<>>;

constexpr std::uint32_t kLithuanianCodePage = 1257;
constexpr std::uint32_t kUtf8CodePage = 65001;

/// Excel's settings of macros (VBAWarnings).
constexpr std::int32_t kSignedMacrosAlone = 3;
constexpr std::int32_t kNoMacros = 4;

/// What the library's own classes answer: 91 where a macro must connect to Excel first, 429 where a component
/// of the accounting system cannot be created.
constexpr std::uint32_t kNotConnected = 0x800A005B;
constexpr std::uint32_t kHostNotCreated = 0x800A01AD;

/// The failures of COM that people meet, for which Windows' own words help little or are missing.
struct KnownCode {
  std::uint32_t code;
  std::u16string_view words[kLanguageCount];
};
constexpr KnownCode kKnownCodes[] = {
    {0x800401F3, {u"the name is not registered", u"vardas neužregistruotas"}},
    {0x80040154,
     {u"the class is not registered for this bitness", u"tokiai programai klasė neužregistruota"}},
    {0x80040111, {u"the file does not have the class", u"faile tokios klasės nėra"}},
    {0x80040152, {u"the registration is damaged", u"registracija sugadinta"}},
    {0x800401F8, {u"the file is not found", u"failas nerastas"}},
    {0x800401F9, {u"the file is no such library", u"failas nėra tokia biblioteka"}},
    {0x80070002, {u"the file is not found", u"failas nerastas"}},
    {0x8007007E,
     {u"the file or one that it needs is not found", u"nerastas failas arba kitas, kurio jam reikia"}},
    {0x800700C1, {u"the file is damaged or of the other bitness", u"failas sugadintas arba kitokių bitų"}},
    {0x80070005, {u"access is denied", u"prieiga uždrausta"}},
};

std::u16string Filled(std::u16string_view text, const Values& values, Language language) {
  std::u16string filled;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text[at] == u'{' ? text.find(u'}', at) : text.npos;
    const auto value = end == text.npos ? values.end() : values.find(text.substr(at + 1, end - at - 1));
    if (value == values.end()) {
      filled += text[at++];
    } else {
      filled += value->second.in[static_cast<std::size_t>(language)];
      at = end + 1;
    }
  }
  return filled;
}

Words ScopeWords(Hive hive) {
  return hive == Hive::User ? Words(u"the current user", u"dabartiniam naudotojui")
                            : Words(u"all users", u"visiems naudotojams");
}

Words NumberWords(long long number) {
  return NumberText(number);
}

/// What stands behind a list of which the first one was named: " (and 3 more)".
Words MoreWords(std::size_t count) {
  if (count == 0) return u"";
  return {u" (and " + NumberText(static_cast<long long>(count)) + u" more)",
          u" (ir dar " + NumberText(static_cast<long long>(count)) + u")"};
}

Words PolicyWords(bool is_policy) {
  return is_policy ? Words(u", as the administrator has set", u", taip nustatė administratorius")
                   : Words(u"");
}

std::u16string Joined(const std::vector<std::u16string>& texts) {
  std::u16string joined;
  for (const std::u16string& text : texts) joined += (joined.empty() ? u"" : u", ") + text;
  return joined;
}

std::u16string_view FileName(std::u16string_view path) {
  return path.substr(path.rfind(u'\\') + 1);
}

Words OfMachine(std::uint16_t machine) {
  if (machine == kMachineX64) return BitnessWords(Bitness::x64);
  if (machine == kMachineX86) return BitnessWords(Bitness::x86);
  return {u"for another processor", u"kitam procesoriui"};
}

/// Judges one machine, part by part.
class MachineJudge {
 public:
  MachineJudge(const MachineFacts& facts, CodeWords system_words)
      : facts_(facts), system_words_(system_words) {}

  std::vector<Finding> All() {
    JudgeWindows();
    JudgeExcel();
    for (const TrustFacts& trust : facts_.trusts) JudgeTrust(trust);
    for (const BitnessFacts& bitness : facts_.bitnesses) {
      bitness_ = &bitness;
      JudgeBitness();
    }
    return std::move(findings_);
  }

 private:
  Words ReasonOf(std::uint32_t code) const {
    const auto* known = std::ranges::find(kKnownCodes, code, &KnownCode::code);
    if (known == std::end(kKnownCodes)) return system_words_(code);
    return {known->words[0], known->words[1]};
  }

  const BitnessFacts& here() const { return *bitness_; }

  void Add(std::string_view code, Values values = {}) {
    const FindingKind& kind = KindOf(code);
    Finding finding{.kind = &kind, .level = kind.level, .values = std::move(values)};
    if (bitness_) {
      finding.bitness = static_cast<int>(here().bitness);
      if (!IsNeeded(here().bitness)) finding.level = std::min(finding.level, Level::Warning);
      finding.values.try_emplace(u"bitness", BitnessWords(here().bitness));
      finding.values.try_emplace(u"other", BitnessWords(Other(here().bitness)));
    }
    findings_.push_back(std::move(finding));
  }

  bool HasExcel() const {
    return std::ranges::any_of(facts_.excels, [](const ExcelFacts& excel) { return excel.file.is_there; });
  }
  bool HasExcel(Bitness bitness) const {
    return std::ranges::any_of(facts_.excels, [&](const ExcelFacts& excel) {
      return excel.file.is_there && excel.file.machine == MachineOf(bitness);
    });
  }
  bool IsRegistered(Bitness bitness) const {
    return std::ranges::any_of(facts_.bitnesses, [&](const BitnessFacts& facts) {
      return facts.bitness == bitness &&
             std::ranges::any_of(facts.hives, [](const HiveFacts& hive) { return hive.present != 0; });
    });
  }
  bool IsNeeded(Bitness bitness) const {
    return HasExcel() ? HasExcel(bitness) : IsRegistered(bitness) || !IsRegistered(Other(bitness));
  }

  void JudgeWindows() {
    Add("windows", {{u"version", facts_.windows_version},
                    {u"bitness", BitnessWords(facts_.is_64bit ? Bitness::x64 : Bitness::x86)}});
    if (facts_.is_elevated) Add("elevated");
    const bool has_letters = facts_.code_page == kLithuanianCodePage || facts_.code_page == kUtf8CodePage;
    Add(has_letters ? "code-page" : "code-page-other", {{u"page", NumberWords(facts_.code_page)}});
    if (!facts_.call_log.empty()) Add("call-log", {{u"file", facts_.call_log}});
    if (facts_.book_setting.empty()) Add("no-book");
  }

  void JudgeExcel() {
    for (const ExcelFacts& excel : facts_.excels) {
      if (excel.file.is_there) {
        Add("excel", {{u"version", excel.file.version},
                      {u"bitness", OfMachine(excel.file.machine)},
                      {u"file", excel.file.path}});
      } else {
        Add("excel-file-missing", {{u"file", excel.file.path}});
      }
    }
    if (facts_.excels.empty()) Add("excel-missing");
    if (HasExcel(Bitness::x64) && HasExcel(Bitness::x86)) Add("excel-both");
  }

  void JudgeTrust(const TrustFacts& trust) {
    const Values values{{u"version", trust.version}, {u"policy", PolicyWords(trust.is_macros_policy)}};
    if (trust.macros == kNoMacros) {
      Add("macros-off", values);
    } else if (trust.macros == kSignedMacrosAlone) {
      Add("macros-signed-only", values);
    } else {
      Add("macros", values);
    }
    Add(trust.project_access == 1 ? "project-access" : "project-access-off",
        {{u"version", trust.version}, {u"policy", PolicyWords(trust.is_project_access_policy)}});
  }

  void JudgeBitness() {
    if (here().start_code != 0 || (!here().is_complete && here().doing.empty())) {
      const std::uint32_t code = here().start_code;
      const Words reason = code != 0 ? Words(system_words_(code)) : EndedAtOnce();
      Add("part-not-run", {{u"reason", reason}});
      return;
    }
    if (!here().is_complete) Add("part-stopped", {{u"step", here().doing}});
    const bool is_registered = JudgeRegistration();
    for (const FileFacts& file : here().files) {
      if (file.zone >= FileFacts::kInternetZone) Add("blocked", {{u"file", file.path}});
    }
    if (is_registered) JudgeCreations();
    if (!IsNeeded(here().bitness)) return;
    JudgeHost();
    JudgeArchive();
  }

  // --- The library -----------------------------------------------------------------------------------------

  /// Whether anything is registered that a macro could meet.
  bool JudgeRegistration() {
    const HiveFacts user = here().InHive(Hive::User);
    const HiveFacts machine = here().InHive(Hive::Machine);
    if (user.present == 0 && machine.present == 0) {
      AddNotRegistered();
      return false;
    }
    if (user.present != 0) JudgeHive(user);
    if (machine.present != 0) JudgeHive(machine);
    if (user.present != 0 && machine.present != 0) JudgeBoth(user, machine);
    if (user.present != 0 && machine.present == 0 && facts_.is_elevated) Add("user-not-seen");
    return true;
  }

  void AddNotRegistered() {
    if (!IsNeeded(here().bitness)) return Add("not-needed");
    Words result = u"";
    if (!here().creations.empty()) {
      const std::uint32_t code = here().creations.front().code;
      result = Words(u" (" + here().creations.front().identifier + u": " + CodeText(code) + u")");
    }
    Add(IsRegistered(Other(here().bitness)) ? "registered-for-other" : "not-registered",
        {{u"result", result}});
  }

  void JudgeHive(const HiveFacts& hive) {
    const std::size_t before = findings_.size();
    const Words scope = ScopeWords(hive.hive);
    if (hive.present < hive.expected) {
      Add("registration-incomplete", {{u"scope", scope},
                                      {u"missing", NumberWords(hive.expected - hive.present)},
                                      {u"all", NumberWords(hive.expected)}});
    }
    if (hive.foreign != 0) {
      Add("registration-foreign", {{u"scope", scope}, {u"count", NumberWords(hive.foreign)}});
    }
    if (hive.servers.size() > 1) {
      Add("registration-mixed", {{u"scope", scope}, {u"files", Joined(hive.servers)}});
    }
    for (const std::u16string& server : hive.servers) JudgeServer(server);
    if (findings_.size() != before) return;
    const std::u16string version = VersionOf(hive);
    Add("registered", {{u"scope", scope}, {u"file", Joined(hive.servers)}, {u"version", version}});
    const FileFacts* beside = here().File(here().beside);
    if (beside && !version.empty() && IsNewer(beside->version, version)) {
      Add("outdated", {{u"version", version}, {u"other", beside->version}});
    }
  }

  void JudgeServer(const std::u16string& path) {
    const FileFacts* file = here().File(path);
    if (!file) return;
    if (!file->has_folder) {
      Add("folder-missing", {{u"file", path}});
    } else if (!file->is_there) {
      Add("file-missing", {{u"file", path}});
    } else if (file->machine == 0 && file->load_code <= 0) {
      Add("file-damaged", {{u"file", path}});
    } else if (file->machine != 0 && file->machine != MachineOf(here().bitness)) {
      Add("wrong-bitness", {{u"file", path}, {u"other", OfMachine(file->machine)}});
    } else if (file->load_code > 0) {  // or cannot even be read
      const auto code = static_cast<std::uint32_t>(file->load_code);
      Add("file-does-not-load",
          {{u"file", path}, {u"reason", system_words_(code)}, {u"code", CodeText(code)}});
    }
  }

  void JudgeBoth(const HiveFacts& user, const HiveFacts& machine) {
    const std::u16string version = VersionOf(user);
    const std::u16string other = VersionOf(machine);
    if (version.empty() || other.empty()) return;  // said of each file
    if (version == other) return Add("two-registrations");
    Add("two-versions", {{u"version", version},
                         {u"file", Joined(user.servers)},
                         {u"other", other},
                         {u"other_file", Joined(machine.servers)}});
  }

  std::u16string VersionOf(const HiveFacts& hive) const {
    const FileFacts* file = hive.servers.empty() ? nullptr : here().File(hive.servers.front());
    return file ? file->version : std::u16string();
  }

  void JudgeCreations() {
    // Classes that fail alike are told once.
    std::map<std::uint32_t, std::vector<const Creation*>> failures;
    for (const Creation& creation : here().creations) {
      if (IsFailure(creation.code) && creation.code != kNotConnected) {
        failures[creation.code].push_back(&creation);
      }
    }
    for (const auto& [code, creations] : failures) {
      const Creation& first = *creations.front();
      Add(code == kHostNotCreated ? "needs-host" : "does-not-create",
          {{u"class", first.identifier},
           {u"reason", ReasonOf(code)},
           {u"code", CodeText(code)},
           {u"others", MoreWords(creations.size() - 1)}});
    }
    if (failures.empty() && !here().creations.empty()) {
      Add("creates", {{u"count", NumberWords(static_cast<long long>(here().creations.size()))}});
    }
  }

  static bool IsFailure(std::uint32_t code) { return (code & 0x80000000u) != 0; }

  // --- The accounting system -------------------------------------------------------------------------------

  void JudgeHost() {
    JudgeHostClasses();
    if (facts_.book_setting.empty()) return;  // said of the machine
    const Words book = facts_.book_setting;
    if (here().book.is_asked && here().book.error != 0) {
      Add("book-does-not-open",
          {{u"book", book}, {u"reason", here().book.text}, {u"code", NumberWords(here().book.error)}});
    } else {
      Add(here().book.is_asked ? "book" : "book-not-tried", {{u"book", book}});
    }
  }

  void JudgeHostClasses() {
    const std::vector<HostClass>& all = here().host_classes;
    if (all.empty()) return;  // said of the part that stopped
    if (std::ranges::any_of(all, &HostClass::is_behind_demo)) Add("demo-left");
    std::vector<std::u16string> missing;
    std::vector<const HostClass*> failing;
    bool is_for_other = true;
    for (const HostClass& host : all) {
      if (host.server.empty()) {
        missing.push_back(host.identifier);
        is_for_other = is_for_other && host.is_for_other;
      } else if (IsFailure(host.code)) {
        failing.push_back(&host);
      }
    }
    if (missing.size() == all.size()) {
      return Add(is_for_other ? "host-for-other" : "host-missing");
    }
    if (!missing.empty()) Add("host-incomplete", {{u"classes", Joined(missing)}});
    if (!failing.empty()) {
      const HostClass& first = *failing.front();
      Add("host-does-not-load", {{u"class", first.identifier},
                                 {u"reason", ReasonOf(first.code)},
                                 {u"code", CodeText(first.code)},
                                 {u"file", first.server},
                                 {u"others", MoreWords(failing.size() - 1)}});
    }
    if (!missing.empty() || !failing.empty()) return;
    const std::u16string& server = all.front().server;
    Add(EqualIgnoringCase(FileName(server), kDemoHostFile) ? "host-demo" : "host", {{u"file", server}});
  }

  void JudgeArchive() {
    const Answer& archive = here().archive;
    if (!archive.is_asked) return;
    if (archive.error != 0) {
      return Add("archive-unknown", {{u"reason", archive.text}, {u"code", NumberWords(archive.error)}});
    }
    if (archive.text.empty()) return Add("archive-none");
    const FolderFacts& folder = here().archive_folder;
    if (!folder.is_there) return Add("archive-missing", {{u"folder", archive.text}});
    if (folder.write_code == 0) return Add("archive", {{u"folder", archive.text}});
    Add("archive-read-only", {{u"folder", archive.text},
                              {u"reason", system_words_(folder.write_code)},
                              {u"code", CodeText(folder.write_code)}});
  }

  const MachineFacts& facts_;
  CodeWords system_words_;
  const BitnessFacts* bitness_ = nullptr;  ///< nothing while the finding is about the machine
  std::vector<Finding> findings_;
};

}  // namespace

std::u16string Finding::Cause(Language language) const {
  return Filled(kind->cause[static_cast<std::size_t>(language)], values, language);
}

std::u16string Finding::Action(Language language) const {
  return Filled(kind->action[static_cast<std::size_t>(language)], values, language);
}

std::vector<Finding> Judge(const MachineFacts& facts, CodeWords system_words) {
  return MachineJudge(facts, system_words).All();
}

Level Worst(const std::vector<Finding>& findings) {
  const auto worst = std::ranges::max_element(findings, {}, &Finding::level);
  return worst == findings.end() ? Level::Ok : worst->level;
}

Words BitnessWords(Bitness bitness) {
  return bitness == Bitness::x64 ? Words(u"64-bit", u"64 bitų") : Words(u"32-bit", u"32 bitų");
}

Words EndedAtOnce() {
  return {u"its program ended at once", u"programa iškart baigėsi"};
}

std::u16string CodeText(std::uint32_t code) {
  if (code < 0x10000) return NumberText(code);
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  std::u16string text = u"0x";
  for (int shift = 28; shift >= 0; shift -= 4) text += kDigits[code >> shift & 0xF];
  return text;
}

}  // namespace qva::doctor
