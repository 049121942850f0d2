// What tests of a report's finishing operations share: a connected report on a workbook of three sheets.
#pragma once

#include <string>
#include <string_view>

#include "platform/excel.h"
#include "tests/library_fixture.h"

namespace qva {

class ReportTest : public LibraryTest {
 protected:
  ReportTest() {
    for (const std::int32_t number : {813, 815, 816, 817, 818, 820, 840}) {
      host.texts[number] = u"tekstas " + NumberText(number);
    }
    host.texts[814] = u"išsaugota: %0";
    host.texts[819] = u"%0 puslapis";
    excel->AddWorkbook();
    Call(reports, u"Init", {u"Balansas"});
    StartOver();
  }

  /// Starts the count, the trace and the failures anew.
  void StartOver(long failing_call = 0) {
    count.Reset();
    trace.Clear();
    failure.Reset(failing_call);
  }

  // Behind the interceptor: what tests prepare and look at is neither traced nor counted.
  ObjectPtr Workbook() const { return GetObject(excel, u"ActiveWorkbook"); }
  ObjectPtr Sheet(std::int32_t position = 1) const { return GetObject(Workbook(), u"Sheets", {position}); }
  ObjectPtr Cells(std::u16string_view address) const { return GetObject(Sheet(), u"Range", {address}); }
  Value At(std::u16string_view address) const { return Get(Cells(address), u"Value"); }
  void Set(std::u16string_view address, const Value& value) const { Put(Cells(address), u"Value", value); }
  ObjectPtr Name(std::u16string_view name) const { return GetObject(Workbook(), u"Names", {name}); }
  void AddName(std::u16string_view name, std::u16string_view refers_to) const {
    Call(GetObject(Workbook(), u"Names"), u"Add", {name, refers_to});
  }

  /// The same as the library gets them: every call is traced.
  ObjectPtr Traced(const ObjectPtr& object, std::u16string_view path) {
    return interceptor.Wrap(object, path);
  }
  ObjectPtr TracedCells(std::u16string_view address, std::u16string_view path = u"Range") {
    return Traced(Cells(address), path);
  }

  const std::vector<MemoryMessageBox::Shown>& Boxes() const { return platform.message_box.boxes(); }
  std::vector<std::u16string> BoxTexts() const {
    std::vector<std::u16string> texts;
    for (const auto& box : Boxes()) texts.push_back(box.text);
    return texts;
  }

  ObjectPtr global = Connected();
  ObjectPtr reports = Create(u"CReports");
};

}  // namespace qva
