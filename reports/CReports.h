// The report object: prepares, fills and finishes a report workbook.
#pragma once

#include <cstdint>
#include <string>

#include "platform/excel.h"
#include "platform/member_table.h"
#include "reports/enDateType.h"

namespace qva {

/// Takes over the active workbook and fills the company's attributes into the cells that the macros pass.
/// Reading the date, printing, locking, clearing formulas, saving and colouring are not built yet: these
/// members raise 445 (Object doesn't support this action).
class CReports : public Described<CReports> {
 public:
  static const ClassDescription& Description();

  /// Takes over the application's active workbook and sets the active window's caption. Excel's errors, such
  /// as that of a missing window, reach the caller.
  void Init(std::u16string WCaption);

  /// `DateType` is one of enDateType; the cells that its form of date does not use may be Nothing.
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

  void Spauzd(excel::Worksheet sh, bool Out, bool AskBeforePage, std::uint8_t Count);
  void Locking(excel::Range rZona);
  void ClearFormulas(excel::Range ScanArrea);
  void SaveDoc(excel::Range rYear, excel::Range rQuater, bool& Saved, bool FullDateInOneRange);
  void ColorRanges(excel::Range rGrey, excel::Range rYellow, excel::Range rColorErr, bool pColor);

 private:
  excel::Workbook workbook_;
};

}  // namespace qva
