#include "excelui/CEnvironment.h"
#include "excelui/CToolbars.h"
#include "platform/date.h"
#include "platform/excel.h"
#include "platform/excel_constants.h"
#include "tests/excelui/toolbar_test.h"
#include "tests/operations/Operations.h"
#include "tests/period/rep_period_fixture.h"

namespace qva {

OperationStage::OperationStage() {
  platform.files.SetFolder(u"C:\\Ataskaitos");
  SetSetting(host::kGeneralSection, u"Kelias", u"C:\\Buhalterija");
  InstallOwnServices();
  global = Create(u"gExcelObject");
  Call(global, u"InitConnectEX", {observed_excel, Nothing()});
}

OperationStage::~OperationStage() {
  global.reset();
  settings_ = tools_ = form_ = toolbar_ = toolbars_ = default_buttons_ = bar_ = period_ = {};
  // What goes here may ask for the services, which are this object's.
  ResetGlobals();
  ShutDown();
}

void OperationStage::InstallOwnServices() {
  Services services = platform.services();
  services.object_factory = &observed_factory_;
  services.forms = &observed_forms_;
  InstallServices(services);
}

ObjectPtr OperationStage::Global() {
  Call(global, u"InitConnectEX", {observed_excel, Nothing()});
  TheGlobals().oToolBars = MakeRef<CToolbars>();
  TheGlobals().oEnvironment = MakeRef<CEnvironment>();
  return global;
}

ObjectPtr OperationStage::Tools() {
  if (!tools_) {
    tools_ = Create(u"CTools");
    Call(tools_, u"Init", {observed_excel});
  }
  return tools_;
}

ObjectPtr OperationStage::Reports() {
  if (!has_report_) {
    has_report_ = true;
    const ObjectPtr names = GetObject(workbook, u"Names");
    Call(names, u"Add", {u"Print", u"=Sheet1!$A$1:$C$20"});
    Call(names, u"Add", {u"Saved", u"=Sheet1!$D$1"});
    Put(GetObject(workbook, u"VBProject"), u"Name", u"Balansas");
    constexpr std::int32_t kDate[] = {2024, 2, 29, 2};
    for (std::int32_t row = 1; row <= 4; ++row) {
      Put(GetObject(sheet, u"Cells", {row, 1}), u"Value", kDate[row - 1]);
    }
  }
  const ObjectPtr reports = Create(u"CReports");
  Call(reports, u"Init", {u"Balansas"});
  return reports;
}

ObjectPtr OperationStage::SaveForm() {
  if (!form_) {
    form_ = Create(u"CSaveForm");
    Call(form_, u"Init");
  }
  return form_;
}

ObjectPtr OperationStage::Settings() {
  if (!settings_) {
    settings_ = GetObject(workbook, u"Sheets", {2});
    AddPicture(settings_, u"Picture02");
    DescribeToolbar(settings_, {{.key = u"^{s}"}, {.face_id = 0, .picture = u"Picture02", .key = u"^{b}"}});
  }
  return settings_;
}

ObjectPtr OperationStage::Toolbars() {
  if (!toolbars_) {
    toolbars_ = Create(u"CToolbars");
    Call(toolbars_, u"CreateToolbar", {Observed(Settings())});
  }
  return toolbars_;
}

ObjectPtr OperationStage::Toolbar() {
  if (!toolbar_) toolbar_ = Call(Toolbars(), u"Item", {1}).ToObject();
  Put(toolbar_, u"VisibleToolbar", true);
  return toolbar_;
}

ObjectPtr OperationStage::Commands() {
  const ObjectPtr bar = GetObject(excel, u"CommandBars", {Get(Toolbar(), u"Caption")});
  for (const auto* member : {u"iComment", u"iFreeze"}) {
    Put(GetObject(bar, u"Controls", {Call(toolbar_, member)}), u"State", std::int32_t{msoButtonUp});
  }
  return GetObject(toolbar_, u"CmdEvent");
}

ObjectPtr OperationStage::DefaultButtons() {
  if (!default_buttons_) {
    bar_ = EmptyBar(u"Mygtukai");
    default_buttons_ = Create(u"CDefaultButtons");
    Call(default_buttons_, u"Init", {Observed(Settings()), Observed(bar_), Create(u"CButtonProperties")});
    Call(default_buttons_, u"AddButtons");
  }
  return default_buttons_;
}

ObjectPtr OperationStage::Buttons() {
  const ObjectPtr buttons = Create(u"CButtonProperties");
  Call(buttons, u"Add", {2});
  return buttons;
}

ObjectPtr OperationStage::Period() {
  if (!period_) {
    const ObjectPtr of_period = SheetWithoutTwoNames();
    period_ = Create(u"CRepPeriod");
    Call(period_, u"Init", {Observed(of_period)});
    constexpr std::int32_t kPeriod[] = {2024, 2, 5, 3};
    for (std::int32_t row = 2; row <= 5; ++row) {
      Put(GetObject(of_period, u"Cells", {row, 1}), u"Value", kPeriod[row - 2]);
    }
    platform.forms.user = [](MemoryForm& form) { form.Click(u"btOk"); };
  }
  return period_;
}

ObjectPtr OperationStage::SheetWithoutTwoNames() {
  if (period_workbook) Call(period_workbook, u"Close", {false});
  period_workbook = excel->AddWorkbook();
  for (std::size_t i = 0; i + 2 < kNames.size(); ++i) {
    const std::u16string row = NumberText(static_cast<long long>(i) + 1);
    Call(GetObject(period_workbook, u"Names"), u"Add", {kNames[i], u"=Sheet1!$A$" + row});
  }
  Put(GetObject(GetObject(period_workbook, u"ActiveSheet"), u"Range", {u"A1"}), u"Value", u"F1");
  return GetObject(period_workbook, u"ActiveSheet");
}

ObjectPtr OperationStage::EmptyBar(std::u16string_view name) const {
  DeleteBar(name);
  return Call(GetObject(excel, u"CommandBars"), u"Add", {name}).ToObject();
}

void OperationStage::DeleteBar(std::u16string_view name) const {
  IgnoreErrors([&] { Call(GetObject(GetObject(excel, u"CommandBars"), u"Item", {name}), u"Delete"); });
}

}  // namespace qva
