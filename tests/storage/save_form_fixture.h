// What tests of saving into the archive share.
#pragma once

#include "platform/date.h"
#include "storage/CSaveForm.h"
#include "tests/library_fixture.h"

namespace qva {

/// An instance after Init, connected to an Excel with one workbook; the archive is "C:\Ataskaitos".
class SaveFormTest : public LibraryTest {
 protected:
  SaveFormTest() {
    platform.files.SetFolder(kArchive);
    for (const std::int32_t code : {1, 2, 3, 4, 5, 8}) {
      host.texts[800 + code] = u"klaida " + NumberText(code);
    }
    excel->AddWorkbook();
    workbook = GetObject(application, u"ActiveWorkbook");
    Call(form, u"Init");
    StartOver();
  }

  /// Starts the count, the trace and the failures anew.
  void StartOver(long failing_call = 0) {
    count.Reset();
    trace.Clear();
    failure.Reset(failing_call);
  }

  static Value Day(int year, int month, int day) { return DateFromParts(year, month, day); }

  Value Save(const Value& wb, const Value& name, const Value& type, const Value& id, const Value& date) {
    return Call(form, u"Save", {wb, name, type, id, date});
  }
  Value FileExist(const Value& wb, const Value& name, const Value& type, const Value& id, const Value& date) {
    return Call(form, u"FileExist", {wb, name, type, id, date});
  }
  std::u16string FileName(const Value& wb, const Value& name, const Value& type, const Value& id,
                          const Value& date) {
    return Call(form, u"FileName", {wb, name, type, id, date}).ToText();
  }
  void SaveReport(const Value& wb, std::u16string_view name, int year, int period) {
    Call(form, u"SaveReport", {wb, name, year, period});
  }
  bool ReportExist(const Value& wb, std::u16string_view name, int year, int period) {
    return Call(form, u"ReportExist", {wb, name, year, period}).ToBoolean();
  }
  bool ReportExistEx(std::u16string_view name, int year, int period) {
    return Call(form, u"ReportExistEx", {name, year, period}).ToBoolean();
  }

  int Status() const { return Get(form, u"ErrorStatus").ToInt32(); }
  std::u16string Description() const { return Get(form, u"ErrorDescr").ToText(); }
  std::u16string FullPath() const { return Get(form, u"FileFullPath").ToText(); }
  bool Alerts() const { return Get(excel, u"DisplayAlerts").ToBoolean(); }

  static constexpr std::u16string_view kArchive = u"C:\\Ataskaitos";
  ObjectPtr global = Connected();
  ObjectPtr workbook;
  ObjectPtr form = Create(u"CSaveForm");
};

}  // namespace qva
