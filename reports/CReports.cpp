#include "reports/CReports.h"

#include "global/Globals.h"
#include "platform/host.h"
#include "platform/message_box.h"
#include "platform/services.h"
#include "reports/FrozenScreen.h"

namespace qva {
ClassBuilder CReports::Describe() {
  return ClassBuilder(u"CReports", "Prepares, fills and finishes a report workbook")
      .Method<&CReports::Init>(u"Init", {{u"WCaption"}},
                               "Takes over the active workbook and sets the caption")
      .Method<&CReports::ReadDate>(u"ReadDate",
                                   {{u"rYear"}, {u"rMonth"}, {u"rDay"}, {u"rQuater"}, {u"DateType"}},
                                   "Asks for the report date and writes it into cells")
      .Method<&CReports::FillAttr>(u"FillAttr", {Optional(u"rIMKodas"),       Optional(u"rPVMKodas"),
                                                 Optional(u"rPavad"),         Optional(u"rAdresas"),
                                                 Optional(u"rTelefonas"),     Optional(u"rFaksas"),
                                                 Optional(u"rVadovas"),       Optional(u"rBuhas"),
                                                 Optional(u"rBankas"),        Optional(u"rBKodas"),
                                                 Optional(u"rBSaskaita"),     Optional(u"rSlaveId"),
                                                 Optional(u"rSlaveCode"),     Optional(u"ID"),
                                                 Optional(u"rPaprastAkcSk"),  Optional(u"rPrivilegAkcSk"),
                                                 Optional(u"rNominAkcVerte"), Optional(u"rNuosavAkcSk"),
                                                 Optional(u"rSodrosKodas"),   Optional(u"rSodrosPavad"),
                                                 Optional(u"rSodrosTel"),     Optional(u"rSodrosAdresas"),
                                                 Optional(u"rDraudRegNum")},
                                   "Writes the company's attributes into cells")
      .Method<&CReports::FillBnksAcc>(
          u"FillBnksAcc", {{u"rBankas"}, {u"rBKodas"}, {u"rBSaskaita"}, {u"rSlaveId"}, {u"rSlaveCode"}},
          "Does nothing; kept for existing macros")
      .Method<&CReports::Spauzd>(u"Spauzd",
                                 {{u"sh"}, {u"Out"}, Optional(u"AskBeforePage"), Optional(u"Count")},
                                 "Prints a sheet within its print area, or previews it")
      .Method<&CReports::Locking>(u"Locking", {{u"rZona"}}, "Switches the protection of a zone")
      .Method<&CReports::ClearFormulas>(u"ClearFormulas", {{u"ScanArrea"}},
                                        "Turns formulas into their values")
      .Method<&CReports::SaveDoc>(u"SaveDoc",
                                  {{u"rYear"}, {u"rQuater"}, {u"Saved"}, Optional(u"FullDateInOneRange")},
                                  "Saves the report under its period")
      .Method<&CReports::ColorRanges>(u"ColorRanges", {{u"rGrey"}, {u"rYellow"}, {u"rColorErr"}, {u"pColor"}},
                                      "Marks a zone with a grey fill, or unmarks it");
}

void CReports::Init(std::u16string WCaption) {
  const excel::Application application = TheGlobals().application;
  workbook_ = application.ActiveWorkbook();
  application.ActiveWindow().SetCaption(WCaption);
  WithScreenFrozen(application, true, [&] { application.SetDisplayFormulaBar(true); });
}

void CReports::FillAttr(excel::Range& rIMKodas, excel::Range& rPVMKodas, excel::Range& rPavad,
                        excel::Range& rAdresas, excel::Range& rTelefonas, excel::Range& rFaksas,
                        excel::Range& rVadovas, excel::Range& rBuhas, excel::Range&, excel::Range&,
                        excel::Range&, excel::Range&, excel::Range&, std::int32_t&, excel::Range&,
                        excel::Range&, excel::Range&, excel::Range&, excel::Range&, excel::Range&,
                        excel::Range&, excel::Range&, excel::Range&) {
  const auto company = host::CompanyAttributes::Create(*GetServices().object_factory);
  company.Init(TheGlobals().oBook);

  if (rIMKodas) rIMKodas.SetValue(company.Code());
  if (rPVMKodas) rPVMKodas.SetValue(company.VATCode());
  if (rPavad) rPavad.SetValue(company.Name());
  if (rAdresas || rTelefonas || rFaksas) {
    const host::Address address = company.Address(u"");
    if (rAdresas) rAdresas.SetValue(address.FullText());
    if (rTelefonas) rTelefonas.SetValue(address.Contact(host::kTelephone));
    if (rFaksas) rFaksas.SetValue(address.Contact(host::kFax));
  }
  if (rVadovas) rVadovas.SetValue(company.ResponsiblePerson(host::kDirector));
  if (rBuhas) rBuhas.SetValue(company.ResponsiblePerson(host::kChiefAccountant));
}

void CReports::FillBnksAcc(excel::Range, excel::Range, excel::Range, excel::Range, excel::Range) {
}

std::int32_t CReports::Show(std::u16string_view text, std::u16string_view title,
                            const std::vector<Value>& captions) {
  if (!message_) message_ = host::Message::Create(*GetServices().object_factory);
  return message_.Show(text, title, captions);
}

void CReports::Tell(std::u16string_view text, std::u16string_view title) {
  Show(text, title, {kOk});
}

}  // namespace qva
