#include "server/calc/MenuJob.h"

#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/system/SystemShellExecute.hpp>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

#include "host/Sample.h"
#include "period/CodesAndNames.h"
#include "platform/calc/SystemPaths.h"
#include "platform/calc/UnoError.h"
#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/filesystem/folders.h"
#include "platform/host.h"
#include "platform/posix/RegistryFile.h"
#include "platform/services.h"
#include "platform/settings.h"
#include "platform/text.h"
#include "server/calc/BasicError.h"
#include "server/calc/ComponentFolder.h"
#include "server/calc/NewReport.h"
#include "server/calc/OpenWorkbook.h"
#include "server/calc/entry_macro.h"
#include "storage/CSaveForm.h"

namespace qva::calc {
namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view kReportsFolder = u"C:\\Pavyzdziai";
constexpr std::u16string_view kNewReport = u"Nauja ataskaita";
constexpr int kMostNewReports = 9999;

// What the user is told.
constexpr std::u16string_view kNoWorkbook =
    u"Nėra atvertos knygos.\nAtverkite ataskaitos knygą ir šią komandą pakartokite jos lange.";
constexpr std::u16string_view kNotOpened = u"Ataskaitos knygos atverti nepavyko.";
constexpr std::u16string_view kNoMacro =
    u"Šioje knygoje nėra makrokomandos „Main“.\nAtverkite ataskaitos knygą arba pradėkite naują komanda "
    u"„Nauja ataskaita iš šablono“. Savo knygoje parašykite makrokomandą „Public Sub Main()“ modulyje "
    u"„Ataskaita“.";
constexpr std::u16string_view kMacrosDisabled =
    u"Šios knygos makrokomandos išjungtos.\nMeniu „Priemonės → Parinktys → LibreOffice → Saugumas → "
    u"Makrokomandų saugumas“ pasirinkite „Vidutinis“ arba knygos aplanką įrašykite tarp patikimų vietų. Tada "
    u"knygą užverkite, vėl atverkite ir leiskite vykdyti makrokomandas.";
constexpr std::u16string_view kDoesNotCompile =
    u"Knygos makrokomandose yra klaida, todėl jų vykdyti negalima.\nAtverkite jas Basic rengyklėje "
    u"(„Priemonės → Makrokomandos → Taisyti makrokomandas“) ir pasirinkite „Kompiliuoti“.";
constexpr std::u16string_view kNotSaved =
    u"Pasirinktos knygos įrašyti nepavyko.\nPatikrinkite, ar galima rašyti į nustatymų failą: ";
constexpr std::u16string_view kNoTemplate =
    u"Šablono nėra: plėtinys įdiegtas ne visas.\nĮdiekite jį iš naujo. Ieškota: ";
constexpr std::u16string_view kNoGuide =
    u"Gido nėra: plėtinys įdiegtas ne visas.\nĮdiekite jį iš naujo. Ieškota: ";
constexpr std::u16string_view kNotCopied = u"Naujos ataskaitos failo sukurti nepavyko: ";
constexpr std::u16string_view kTooManyReports =
    u"Naujai ataskaitai neliko laisvo vardo.\nSenas ataskaitas perkelkite kitur iš aplanko ";
constexpr std::u16string_view kFailed = u"Komandos įvykdyti nepavyko.";

/// What the user is told in place of anything else.
class Refusal : public std::exception {
 public:
  explicit Refusal(std::u16string_view text) : text_(text) {}
  const std::u16string& text() const { return text_; }

 private:
  std::u16string text_;
};

std::u16string CurrentBook(const Services& services) {
  return GetSetting(*services.registry, *services.locale, host::kSettingsApplication, host::kFormsSection,
                    host::kBookSetting, u"");
}

bool SetCurrentBook(const Services& services, std::u16string_view code) {
  return SaveSetting(*services.registry, *services.locale, host::kSettingsApplication, host::kFormsSection,
                     host::kBookSetting, code);
}

/// Without a current book no report connects to the host. Where it cannot be stored, the macro tells that
/// there is none.
void ChooseSampleBook(const Services& services) {
  if (CurrentBook(services).empty()) SetCurrentBook(services, FromUtf8(embedded::kSampleBook));
}

/// The archive, wherever the host has it: the library makes no more than a year's folder in it. What cannot
/// be made is told when a report is to be stored there.
void MakeArchive(const Services& services) {
  IgnoreErrors([&] { MakeFolders(*services.files, CSaveForm::Archive()); });
}

/// What the sample company's reports need.
void PrepareSamples(const Services& services) {
  MakeFolders(*services.files, kReportsFolder);
  MakeArchive(services);
  ChooseSampleBook(services);
}

void ChooseBook() {
  const Services& services = GetServices();
  ChoiceList list{u"Apskaitos knygos", {kCodeCaption, kNameCaption}, {}};
  for (CodeAndName& book : CodesAndNames(host::CommonObjects::Create(*services.object_factory).Books())) {
    list.rows.push_back({std::move(book.code), std::move(book.name)});
  }
  const auto chosen = services.list_chooser->Choose(list, CurrentBook(services));
  if (!chosen) return;
  if (!SetCurrentBook(services, list.rows.at(*chosen)[0])) {
    throw Refusal(std::u16string(kNotSaved) + FromUtf8(UserRegistryPath().string()));
  }
  MakeArchive(services);
}

fs::path InExtension(std::u16string_view sample) {
  return ComponentFolder() / "samples" / ToUtf8(sample);
}

/// A new report from the template under a name that nothing else has, which is its project's name, too: its
/// files in the archive are its own.
fs::path NewReport() {
  const fs::path source = ComponentFolder() / kTemplate;
  std::error_code error;
  if (!fs::is_regular_file(source, error))
    throw Refusal(std::u16string(kNoTemplate) + FromUtf8(source.string()));
  for (int number = 1; number <= kMostNewReports; ++number) {
    std::u16string title(kNewReport);
    if (number > 1) title += u" " + NumberText(number);
    const fs::path workbook = SystemPath(std::u16string(kReportsFolder) + u"\\" + title + u".fods");
    try {
      // False where anything of that name is there, also when it has come just now.
      if (WriteNewReport(source, workbook, ToUtf8(title))) return workbook;
    } catch (const std::runtime_error& failure) {
      throw Refusal(std::u16string(kNotCopied) + FromUtf8(failure.what()));
    }
  }
  throw Refusal(std::u16string(kTooManyReports) + std::u16string(kReportsFolder));
}

std::u16string TextOf(const MacroFailure& failure) {
  switch (failure.reason()) {
    case MacroFailure::Reason::NoWorkbook:
      return std::u16string(kNotOpened);
    case MacroFailure::Reason::NoMacro:
      return std::u16string(kNoMacro);
    case MacroFailure::Reason::DoesNotCompile:
      return std::u16string(kDoesNotCompile);
    case MacroFailure::Reason::Ended:
      break;  // the macro's own will
  }
  return {};
}

std::u16string TextOf(const AutomationError& error) {
  return error.description().empty() ? std::u16string(kFailed) + u" (" + NumberText(error.number()) + u")"
                                     : error.description();
}

}  // namespace

void MenuJob::RunActiveWorkbook() const {
  const Reference<css::lang::XComponent> active =
      css::frame::Desktop::create(context_)->getCurrentComponent();
  const Reference<css::lang::XServiceInfo> info(active, UNO_QUERY);
  if (!info.is() || !info->supportsService("com.sun.star.sheet.SpreadsheetDocument")) {
    throw Refusal(kNoWorkbook);
  }
  const OpenWorkbook workbook(context_, active);
  const std::optional<std::string> macro = workbook.FindMain();
  if (!macro) throw Refusal(kNoMacro);
  if (!workbook.AllowsMacros()) throw Refusal(kMacrosDisabled);
  workbook.RunMacro(*macro);
}

void MenuJob::MakeReport() const {
  PrepareSamples(GetServices());
  OpenWorkbook(context_, NewReport().string()).Keep();
}

void MenuJob::ShowGuide() const {
  const fs::path guide = ComponentFolder() / "FReport" / "index.html";
  std::error_code error;
  if (!fs::is_regular_file(guide, error)) throw Refusal(std::u16string(kNoGuide) + FromUtf8(guide.string()));
  css::system::SystemShellExecute::create(context_)->execute(FileUrl(guide), "", 0);
}

void MenuJob::RunSample(std::u16string_view name) const {
  const Services& services = GetServices();
  PrepareSamples(services);
  const std::u16string file = std::u16string(name) + u".fods";
  const std::u16string copy = std::u16string(kReportsFolder) + u"\\" + file;
  services.files->Copy(FromUtf8(InExtension(file).string()), copy);
  OpenWorkbook workbook(context_, SystemPath(copy).string());
  workbook.Keep();
  workbook.RunMacro(kEntryMacro);
}

void MenuJob::Run(std::u16string_view command) const {
  // The services come with the first creation of an object.
  context_->getServiceManager()->createInstanceWithContext(OUString::createFromAscii(kOleObjectFactory),
                                                           context_);
  if (command == u"run-workbook") return RunActiveWorkbook();
  if (command == u"choose-book") return ChooseBook();
  if (command == u"new-report") return MakeReport();
  if (command == u"guide") return ShowGuide();
  RunSample(command);
}

std::u16string MenuJob::FailureOf(std::u16string_view command) const {
  try {
    Run(command);
    return {};
  } catch (const Refusal& refusal) {
    return refusal.text();
  } catch (const MacroFailure& failure) {
    return TextOf(failure);
  } catch (...) {
    return TextOf(CaughtError());
  }
}

void MenuJob::trigger(const OUString& command) {
  std::u16string failure;
  IgnoreFailures([&] { failure = FailureOf(FromUno(command)); });
  ReleaseErrors();
  // There may be no services, or no memory, to show it by.
  if (!failure.empty())
    IgnoreFailures([&] { GetServices().message_box->Show(failure, vbCritical, kLibraryName); });
}

}  // namespace qva::calc
