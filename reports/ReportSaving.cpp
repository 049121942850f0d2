// CReports: saving a report under its period.
#include "global/Helpers.h"
#include "global/StartUp.h"
#include "platform/date.h"
#include "platform/message_box.h"
#include "reports/CReports.h"
#include "storage/CSaveForm.h"

namespace qva {
namespace {

constexpr std::int32_t kNoDateCell = 813;     ///< host message: the cell of the date is missing
constexpr std::int32_t kReportSaved = 814;    ///< host message: the report is in file %0
constexpr std::int32_t kReplaceReport = 840;  ///< host message: question whether to replace the report

constexpr std::int32_t kNoChosen = 2;

constexpr std::u16string_view kSaving = u"Ataskaita įrašoma archyve";  ///< in the status bar

constexpr std::u16string_view kSavedName = u"Saved";  ///< the workbook's name of the cell that tells it

/// What a report is stored under.
struct Period {
  std::int16_t year = 0;
  std::int16_t part = 0;  ///< quarter; month where the full date is in one cell; 0 the whole year
};

std::int16_t Number(const excel::Range& cell) {
  return cell ? cell.Value().ToInt16() : std::int16_t{0};
}

Period PeriodOfDate(const excel::Range& cell) {
  const DateParts parts = PartsOf(cell.Value().ToDate());
  return {static_cast<std::int16_t>(parts.year), static_cast<std::int16_t>(parts.month)};
}

}  // namespace

bool CReports::MayReplace() {
  return Show(HostText(kReplaceReport), u"", {kYes, kNo}) != kNoChosen;
}

void CReports::SaveDoc(excel::Range rYear, excel::Range rQuater, bool& Saved, bool FullDateInOneRange) {
  ShowingErrors([&] {
    Period period;
    if (!FullDateInOneRange) {
      period = {Number(rYear), Number(rQuater)};
    } else if (rYear) {
      period = PeriodOfDate(rYear);
    } else {
      // It goes on: the save itself refuses the year 0 and tells the user so.
      Tell(HostText(kNoDateCell));
    }
    Saved = true;

    const auto form = MakeRef<CSaveForm>();
    form->Init();
    const std::u16string name = workbook_.VBProject().Name();
    // `Saved` stays True when the user refuses, on purpose: the report of the period is in the archive.
    if (form->ReportExistEx(name, period.year, period.part) && !MayReplace()) return;
    Progress progress;  // not before the question
    form->SaveReport(workbook_, name, period.year, period.part);
    if (form->ErrorStatus() != 0) {
      Saved = false;
      Tell(form->ErrorDescr());
    } else {
      progress.Say(kSaving);
      workbook_.Names().Item(kSavedName).RefersToRange().SetValue(true);
      workbook_.Save();
      progress.Pause();
      Tell(HostMessage(kReportSaved, workbook_.FullName()));
    }
    // Also after a failure, on purpose: closing the workbook must not ask again.
    workbook_.SetSaved(true);
  });
}

}  // namespace qva
