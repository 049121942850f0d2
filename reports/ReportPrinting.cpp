// CReports: printing and previewing a sheet.
#include "global/Helpers.h"
#include "global/Progress.h"
#include "global/StartUp.h"
#include "platform/text.h"
#include "reports/CReports.h"

namespace qva {
namespace {

constexpr std::int32_t kNoPrintArea = 815;  ///< host message: the sheet has no print area
constexpr std::int32_t kHowToPrint = 816;   ///< host message: question whose answers are the next two
constexpr std::int32_t kAllAtOnce = 817;
constexpr std::int32_t kPageByPage = 818;
constexpr std::int32_t kNextPage = 819;       ///< host message: page %0 will be printed
constexpr std::int32_t kNextPageTitle = 820;  ///< host message: second text of the one before

constexpr std::int32_t kAllAtOnceChosen = 1;

// What the status bar says in a long one.
constexpr std::u16string_view kPrinting = u"Spausdinama";
constexpr std::u16string_view kPrintingPages = u"Spausdinami puslapiai";

constexpr std::u16string_view kPrintName = u"Print";           ///< the workbook's name of what is printed
constexpr std::u16string_view kPrintAreaName = u"Print_Area";  ///< the sheet's name that Excel prints by

/// Makes the range "Print" the sheet's print area. Each step is tried for itself: what can be done is done.
void CopyPrintRange(const excel::Worksheet& sheet) {
  excel::DefinedName name;
  IgnoreErrors([&] { name = sheet.Parent().Names().Item(kPrintName); });
  IgnoreErrors([&] { name.SetVisible(true); });
  IgnoreErrors([&] { sheet.PageSetup().SetPrintArea(sheet.Range(kPrintName).Address()); });
  IgnoreErrors([&] { name.SetVisible(false); });
}

/// The sheet's print area, made visible; nothing when the sheet has none.
excel::DefinedName FindPrintArea(const excel::Worksheet& sheet) {
  excel::DefinedName name;
  const bool is_there = IgnoreErrors([&] {
    name = sheet.Names().Item(kPrintAreaName);
    name.SetVisible(true);
  });
  return is_there ? name : excel::DefinedName();
}

}  // namespace

void CReports::Spauzd(excel::Worksheet sh, bool Out, bool AskBeforePage, std::uint8_t Count) {
  ShowingErrors([&] {
    Progress progress;
    const std::int32_t visibility = sh.Visible();
    if (visibility != xlSheetVisible) sh.SetVisible(xlSheetVisible);
    CopyPrintRange(sh);
    const excel::DefinedName print_area = FindPrintArea(sh);
    if (!print_area) {
      // The sheet stays visible, on purpose: the user is told about it and should see it.
      Tell(HostText(kNoPrintArea));
      return;
    }
    print_area.SetVisible(true);
    progress.Pause();  // the answer may take long
    if (!Out) {
      sh.PrintPreview();
    } else if (!AskBeforePage || WantsAllAtOnce()) {
      progress.Say(kPrinting);
      sh.PrintOut();
    } else {
      PrintPages(sh, Count, progress);
    }
    print_area.SetVisible(false);
    sh.SetDisplayPageBreaks(false);
    sh.SetVisible(visibility);
  });
}

bool CReports::WantsAllAtOnce() {
  const std::u16string question = HostText(kHowToPrint);
  const std::u16string all_at_once = HostText(kAllAtOnce);
  const std::u16string page_by_page = HostText(kPageByPage);
  return Show(question, u"", {all_at_once, page_by_page}) == kAllAtOnceChosen;
}

void CReports::PrintPages(const excel::Worksheet& sheet, std::int32_t count, Progress& progress) {
  progress.Say(kPrintingPages, 0, count);
  sheet.PrintOut(1);
  for (std::int32_t page = 2; page <= count; ++page) {
    progress.Pause();
    Tell(HostMessage(kNextPage, NumberText(page)), HostText(kNextPageTitle));
    progress.Say(kPrintingPages, page - 1, count);
    sheet.PrintOut(page);
  }
}

}  // namespace qva
