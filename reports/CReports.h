// The report object: prepares, fills and finishes a report workbook.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "global/Progress.h"
#include "period/CDatePic.h"
#include "platform/excel.h"
#include "platform/failure_listener.h"
#include "platform/host.h"
#include "platform/member_table.h"
#include "reports/enDateType.h"

namespace qva {

/// Takes over the active workbook, asks for the report's date, fills the company's attributes into the cells
/// that the macros pass, and finishes the report: prints, locks, freezes, saves and colours it. What takes
/// longer than a second says so in the status bar.
class CReports : public Described<CReports> {
 public:
  static ClassBuilder Describe();

  /// Takes over the application's active workbook and sets the active window's caption. Excel's errors, such
  /// as that of a missing window, reach the caller; the screen is on afterwards, whatever fails.
  void Init(std::u16string WCaption);

  /// Shows the date that the cells hold in a date picker and writes the one that the user confirms back; true
  /// then. `DateType` is one of enDateType; the cells that its form of date does not use may be Nothing and
  /// stay as they are. A month or quarter stands for the 12th of its (last) month. Any other `DateType` shows
  /// today and writes nothing. Raises 6 and 13 for cells that hold no 16-bit whole numbers, 5 for numbers
  /// that make no date, and what Excel and the picker raise.
  bool ReadDate(excel::Range rYear, excel::Range rMonth, excel::Range rDay, excel::Range rQuater,
                std::int32_t DateType);

  /// Writes the company's attributes into the given cells, in the order of the parameters: registration code,
  /// VAT code, name, address, telephone, fax, head of the company, chief accountant. A cell that is Nothing
  /// is skipped. Everything from `rBankas` on is accepted so that existing macros stay valid, and left
  /// untouched on purpose. Errors of the host's company object or of a cell reach the caller; cells written
  /// before stay.
  void FillAttr(excel::Range& rIMKodas, excel::Range& rPVMKodas, excel::Range& rPavad, excel::Range& rAdresas,
                excel::Range& rTelefonas, excel::Range& rFaksas, excel::Range& rVadovas, excel::Range& rBuhas,
                excel::Range& rBankas, excel::Range& rBKodas, excel::Range& rBSaskaita,
                excel::Range& rSlaveId, excel::Range& rSlaveCode, std::int32_t& ID,
                excel::Range& rPaprastAkcSk, excel::Range& rPrivilegAkcSk, excel::Range& rNominAkcVerte,
                excel::Range& rNuosavAkcSk, excel::Range& rSodrosKodas, excel::Range& rSodrosPavad,
                excel::Range& rSodrosTel, excel::Range& rSodrosAdresas, excel::Range& rDraudRegNum);

  /// Does nothing; kept for the workbooks that still call it.
  void FillBnksAcc(excel::Range rBankas, excel::Range rBKodas, excel::Range rBSaskaita, excel::Range rSlaveId,
                   excel::Range rSlaveCode);

  /// Prints a sheet (`Out`) or previews it, by the workbook's name "Print", which becomes the sheet's print
  /// area. A sheet without print area is not printed, the user is told so. With AskBeforePage the user may
  /// choose to get the pages 1 to `Count` one by one, each announced from the second on; page 1 always comes.
  /// Names that take part are hidden afterwards, the sheet is as visible as before. An error ends it there
  /// and is shown; what was done by then stays.
  void Spauzd(excel::Worksheet sh, bool Out, bool AskBeforePage, std::uint8_t Count);

  /// Locks or unlocks the cells of a zone on the active sheet, each call of the instance the other way than
  /// the one before, whatever the zone is; the first one locks. The active cell stays, the selection becomes
  /// the zone. Excel's errors reach the caller, with the screen updating as after a success; such a call
  /// counts, too.
  void Locking(excel::Range rZona);

  /// Puts the values of formulas in their place; formats stay. What becomes of each:
  /// - numbers keep all their digits, also where the cell shows a date or an amount of money;
  /// - texts stay the texts that they are, though they look like numbers, dates, times or formulas; the empty
  ///   text leaves an empty cell;
  /// - True, False and error values stay what they are;
  /// - a cell of the format "@" (text) keeps it, and its number stays a number;
  /// - an array formula becomes the values of all its cells. One that goes beyond ScanArrea refuses the whole
  ///   call, with 1004 and nothing changed.
  /// A constant text that holds "=" is written anew, too, and stays that text. Cells get the values that they
  /// had before any of their block - an area of up to some 130 000 cells - was changed. Only the used part of
  /// the sheet counts. Excel's errors reach the caller; cells done by then stay so, and the refused one keeps
  /// its formula. Raises 13 for an object that only looks like a range.
  void ClearFormulas(excel::Range ScanArrea);

  /// Saves the workbook in the archive as the report of a year and quarter or, where `rYear` holds the full
  /// date, of its year and month; the report's name is that of the workbook's macro project. An earlier
  /// report is replaced when the user agrees. The outcome is shown. `Saved` becomes False when the save was
  /// refused or failed, and True otherwise, also when the user does not agree. An error ends it there and is
  /// shown; `Saved` is then True, or untouched when the cells could not be read.
  void SaveDoc(excel::Range rYear, excel::Range rQuater, bool& Saved, bool FullDateInOneRange);

  /// Gives `rGrey`, which may be Nothing, a grey fill (`pColor`) or none. The other two ranges are accepted
  /// and left alone on purpose. The screen stands still meanwhile. An error is shown.
  void ColorRanges(excel::Range rGrey, excel::Range rYellow, excel::Range rColorErr, bool pColor);

 private:
  /// Asks how to print: all at once, otherwise page by page.
  bool WantsAllAtOnce();
  void PrintPages(const excel::Worksheet& sheet, std::int32_t count, Progress& progress);
  /// Asks whether the report that is in the archive may be replaced.
  bool MayReplace();

  /// Shows a text with a button for each caption; the result is the pressed one's number, from 1. Raises what
  /// the host's message object raises.
  std::int32_t Show(std::u16string_view text, std::u16string_view title, const std::vector<Value>& captions);
  /// Shows a text with the one button "Gerai".
  void Tell(std::u16string_view text, std::u16string_view title = u"");
  /// Runs an operation; an error ends it and is shown by its description.
  template <class Operation>
  void ShowingErrors(Operation operation) {
    try {
      operation();
    } catch (const AutomationError& error) {
      if (error.number() == 0) return;
      TellFailure(error.description());
      Tell(error.description());
    }
  }

  excel::Workbook workbook_;
  Ref<CDatePic> date_picker_;  ///< from the first ReadDate on
  host::Message message_;      ///< from the first message on
  bool is_locking_ = false;    ///< what the last Locking did
};

}  // namespace qva
