#include "tests/operations/operation_parts.h"

#include <algorithm>

#include "platform/date.h"
#include "reports/enDateType.h"

namespace qva {
namespace operations {
namespace {

constexpr std::u16string_view kFormFolder = u"C:\\AtaskaitosPVM\\";

/// An error that a macro passes on.
class PassedError : public Described<PassedError> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"ErrObject", "").Get<&PassedError::Text>(u"Description");
  }
  std::u16string Text() const { return u"Dalyba iš nulio"; }
};

std::vector<Operation> GlobalObject() {
  const auto global = [](Stage& s) -> ReadyCall { return {s.Global(), {}}; };
  const auto fresh = [](Stage& s) -> ReadyCall {
    const ObjectPtr object = Stage::Create(u"gExcelObject");
    Call(object, u"InitConnectEX", {s.observed_excel, Stage::Nothing()});
    return {object, {}};
  };
  // It was counted once: one reset releases what the property gives.
  const auto after_reset = [](std::u16string_view reset, std::u16string_view property) {
    return [=](Stage&, const ObjectPtr& object) -> std::string {
      Call(object, reset);
      return Get(object, property).IsNothing() ? "nothing" : "an object";
    };
  };
  return {
      Creation(u"gExcelObject"),
      {u"gExcelObject", u"InitConnectEX", kCall,
       [](Stage& s) -> ReadyCall {
         ResetGlobals();
         return {Stage::Create(u"gExcelObject"), {s.observed_excel, Stage::Nothing()}};
       },
       '1', "XXE{5}", "", "M*", kObjectErrorBase},
      {u"gExcelObject", u"oBook", kGet, global, 'O'},
      {u"gExcelObject", u"oToolBars", kGet, global, 'O'},
      {u"gExcelObject", u"oEnvironment", kGet, global, 'O'},
      {u"gExcelObject", u"oMyPlant", kGet, global, 'O'},
      // What is let go of gives back what it has of Excel, as far as Excel takes it.
      {u"gExcelObject", u"ResetConnectEX", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Global(), {std::int16_t{0}}};
       },
       '.', "\\.+", "", "M*\\.+"},
      {u"gExcelObject", u"ResetConnectOnError", kCall, global, '.', "\\.+", "", "M*\\.+"},
      {u"gExcelObject", u"ExcelReportError", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Global(), {s.Observed(MakeRef<PassedError>())}};
       },
       '.', "\\.{3}", "", "M*\\.+"},
      {.class_name = u"gExcelObject",
       .member = u"InitToolBars",
       .kind = kCall,
       .prepare = fresh,
       .undisturbed = 'O',
       .outcome = u"oToolBars",
       .leaves = after_reset(u"ResetToolBars", u"oToolBars")},
      {.class_name = u"gExcelObject",
       .member = u"ResetToolBars",
       .kind = kCall,
       .prepare = [fresh](Stage& s) -> ReadyCall {
         ReadyCall call = fresh(s);
         Call(call.object, u"InitToolBars");
         return call;
       },
       .undisturbed = 'N',
       .when_a_call_fails = "N+",
       .when_memory_is_short = "M*N+",
       .outcome = u"oToolBars"},
      {u"gExcelObject", u"cmdHelp", kCall,
       [](Stage& s) -> ReadyCall {
         TheGlobals().oToolBars = s.Toolbars();
         return {s.global, {}};
       },
       '.', "E"},
      {.class_name = u"gExcelObject",
       .member = u"InitEnvironment",
       .kind = kCall,
       .prepare = fresh,
       .undisturbed = 'O',
       .when_a_call_fails = "O+",
       .outcome = u"oEnvironment",
       .leaves = after_reset(u"ResetEnvironment", u"oEnvironment")},
      {.class_name = u"gExcelObject",
       .member = u"ResetEnvironment",
       .kind = kCall,
       .prepare = [fresh](Stage& s) -> ReadyCall {
         ReadyCall call = fresh(s);
         Call(call.object, u"InitEnvironment");
         return call;
       },
       .undisturbed = 'N',
       .when_a_call_fails = "N+",
       .outcome = u"oEnvironment"},
      {u"gExcelObject", u"", kRelease, fresh, '.'},
  };
}

std::vector<Operation> ToolsAndLock() {
  const auto call = [](std::u16string_view member, Arguments arguments, char undisturbed,
                       std::string_view when_a_call_fails, std::string_view when_all_fail = "") {
    return Operation{u"CTools",
                     member,
                     kCall,
                     [arguments = std::move(arguments)](Stage& s) -> ReadyCall {
                       return {s.Tools(), arguments}; },
                     undisturbed,
                     when_a_call_fails,
                     when_all_fail};
  };
  return {
      Creation(u"CTools"),
      {u"CTools", u"Init", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Tools(), {s.observed_excel}};
       },
       '.'},
      call(u"BookIsOpen", {u"Ataskaita"}, 'F', "E{4}"),
      call(u"CheckFileName", {u"Ataskaita"}, '.', ""),
      // Where Excel does not tell what is open, the book is only looked for.
      {u"CTools", u"OpenBook", kCall,
       [](Stage& s) -> ReadyCall {
         if (!s.excel->HasFile(u"C:\\Knyga.xls")) s.excel->AddFile(u"C:\\Knyga.xls");
         Call(s.Tools(), u"OpenBook", {u"C:\\", u"Knyga"});
         return {s.Tools(), {u"C:\\", u"Knyga"}};
       },
       'O', "NO{5}", "N+"},
      {u"CTools", u"LockScreen", kCall,
       [](Stage& s) -> ReadyCall {
         const ObjectPtr tools = Stage::Create(u"CTools");
         Call(tools, u"Init", {s.observed_excel});
         return {tools, {true}};
       },
       '.', "EE"},
      call(u"SheetLock", {true, u"", u"Sheet1"}, '.', "\\.{3}"),
      call(u"ConvertStr2Str", {u"Balansas 2024.12.31", u"_"}, 'S', ""),
      {u"CTools", u"FileExist", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Tools(), {u"C:\\Ataskaitos", u"Nera.xls"}};
       },
       'F', "E{4}"},
      {u"CLockScreen", u"", kCreate, [](Stage&) -> ReadyCall { return {}; }, 'O', "OOOEE", "E{5}"},
      {u"CLockScreen", u"", kRelease,
       [](Stage&) -> ReadyCall {
         return {Stage::Create(u"CLockScreen"), {}};
       },
       '.', "\\.{3}", "", "\\.*"},
  };
}

std::vector<Operation> Period() {
  return {
      {u"CRepPeriod", u"", kCreate, [](Stage&) -> ReadyCall { return {}; }, 'O', "OOOE+", "E+"},
      {.class_name = u"CRepPeriod",
       .member = u"Init",
       .kind = kCall,
       .prepare = [](Stage& s) -> ReadyCall {
         const ObjectPtr period = Stage::Create(u"CRepPeriod");
         return {period, {s.Observed(s.SheetWithoutTwoNames())}};
       },
       .undisturbed = '.',
       .when_a_call_fails = "E+",
       .tidies_up = true,
       .leaves =
           [](Stage& s, const ObjectPtr&) {
             const ObjectPtr names = GetObject(s.period_workbook, u"Names");
             std::string places;
             for (const auto* name : {u"BudgetCount", u"BookCode"}) {
               places += ToUtf8(Get(GetObject(names, u"Item", {name}), u"RefersTo").ToText()) + " ";
             }
             return places;
           }},
      {u"CRepPeriod", u"Edit", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Period(), {}};
       },
       'T', "F+TTF+", "F+", "M*F+"},
      Creation(u"CDatePic"),
      {u"CDatePic", u"Show", kCall,
       [](Stage& s) -> ReadyCall {
         s.platform.forms.user = [](MemoryForm& form) { form.PressKey(u"MonthView1", 13); };
         return {Stage::Create(u"CDatePic"), {DateFromParts(2024, 2, 12)}};
       },
       'T', "EE"},
  };
}

std::vector<Operation> Reports() {
  return {
      Creation(u"CReports"),
      {u"CReports", u"Init", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Reports(), {u"Balansas"}};
       },
       '.', "E{6}"},
      {u"CReports", u"ReadDate", kCall,
       [](Stage& s) -> ReadyCall {
         s.platform.forms.user = [](MemoryForm& form) { form.PressKey(u"MonthView1", 13); };
         return {s.Reports(),
                 {s.ObservedCells(u"A1"), s.ObservedCells(u"A2"), s.ObservedCells(u"A3"), Stage::Nothing(),
                  std::int32_t{FullDate}}};
       },
       'T', "E{9}"},
      {u"CReports", u"FillAttr", kCall,
       [](Stage& s) -> ReadyCall {
         Arguments cells;
         for (const auto* address : {u"B1", u"B2", u"B3", u"B4", u"B5", u"B6", u"B7", u"B8"}) {
           cells.positional.emplace_back(s.ObservedCells(address));
         }
         return {s.Reports(), cells};
       },
       '.', "E{19}"},
      {u"CReports", u"FillBnksAcc", kCall,
       [](Stage& s) -> ReadyCall {
         const ObjectPtr cell = s.ObservedCells(u"B1");
         return {s.Reports(), {cell, cell, cell, cell, cell}};
       },
       '.'},
      // What goes wrong is shown; where that cannot be done either, it is raised.
      {u"CReports", u"Spauzd", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Reports(), {s.Observed(s.sheet), true}};
       },
       '.', "\\.{18}", "E{18}"},
      {u"CReports", u"Locking", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Reports(), {s.ObservedCells(u"B1:B2")}};
       },
       '.', "E{7}"},
      {.class_name = u"CReports",
       .member = u"ClearFormulas",
       .kind = kCall,
       .prepare = [](Stage& s) -> ReadyCall {
         Put(s.Cells(u"C1"), u"Formula", u"=1+1");
         return {s.Reports(), {s.ObservedCells(u"C1:C2")}};
       },
       .undisturbed = '.',
       // A block that is refused goes cell by cell.
       .when_a_call_fails = "E{10}\\.\\.",
       .when_all_calls_fail_from_it_on = "E+",
       .tidies_up = true,
       .leaves = [](Stage& s, const ObjectPtr&) { return ToUtf8(Get(s.Cells(u"C1"), u"Formula").ToText()); }},
      {u"CReports", u"SaveDoc", kCall,
       [](Stage& s) -> ReadyCall {
         const ObjectPtr reports = s.Reports();
         return {reports, {s.ObservedCells(u"A1"), s.ObservedCells(u"A4"), false}};
       },
       '.', "\\.+", "E+"},
      {u"CReports", u"ColorRanges", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Reports(), {s.ObservedCells(u"B1"), Stage::Nothing(), Stage::Nothing(), true}};
       },
       '.', "\\.{5}", "E{5}"},
  };
}

std::vector<Operation> Storage() {
  const auto form = [](Stage& s) -> Value { return s.Observed(s.workbook); };
  const auto of_form = [form](std::u16string_view member, char undisturbed, std::string_view fails) {
    return Operation{u"CSaveForm",
                     member,
                     kCall,
                     [form](Stage& s) -> ReadyCall {
                       s.excel->AddFile(std::u16string(kFormFolder) + u"Forma_PVM_12_20101112.xls");
                       return {s.SaveForm(), {form(s), u"Forma", u"PVM", u"12", DateFromParts(2010, 11, 12)}};
                     },
                     undisturbed,
                     fails};
  };
  const auto of_report = [form](std::u16string_view member, char undisturbed, std::string_view fails) {
    return Operation{u"CSaveForm",
                     member,
                     kCall,
                     [form](Stage& s) -> ReadyCall {
                       return {s.SaveForm(), {form(s), u"Balansas", 2024, 3}}; },
                     undisturbed,
                     fails};
  };
  const auto get = [](std::u16string_view member, char undisturbed) {
    return Operation{u"CSaveForm", member, kGet,
                     [](Stage& s) -> ReadyCall {
                       return {s.SaveForm(), {}};
                     },
                     undisturbed};
  };
  const auto put = [](std::u16string_view member, Value value, std::string_view fails = "") {
    return Operation{
        u"CSaveForm", member,
        kPut,         [value = std::move(value)](Stage& s) -> ReadyCall { return {s.SaveForm(), {value}}; },
        '.',          fails};
  };
  std::vector<Operation> operations = {
      Creation(u"CSaveForm"),
      {u"CSaveForm", u"Init", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.SaveForm(), {}};
       },
       '.', "E{4}"},
      // The search for an earlier file raises, the saving is a status.
      of_form(u"Save", '0', "E{4}8{3}"),
      of_report(u"SaveReport", '0', "E{4}8{3}"),
      of_form(u"FileExist", 'T', "E{4}"),
      of_form(u"FileName", 'S', ""),
      of_report(u"ReportExist", 'F', "E{4}"),
      {u"CSaveForm", u"ReportExistEx", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.SaveForm(), {u"Balansas", 2024, 3}};
       },
       'F', "E{4}"},
      get(u"ErrorStatus", '0'),
      put(u"ErrorStatus", 4, "E{3}"),
      get(u"ErrorDescr", 's'),
      put(u"ErrorDescr", u"Aprašymas klaidos"),
      get(u"FileFullPath", 's'),
      put(u"FileFullPath", u"C:\\Ataskaitos\\2024\\x.xls"),
      get(u"GeneralPath", 'S'),
      put(u"GeneralPath", u"C:\\Ataskaitos\\"),
      Creation(u"CSetPath"),
      {.class_name = u"CSetPath",
       .member = u"RegPath",
       .kind = kCall,
       .prepare = [](Stage& s) -> ReadyCall {
         s.platform.registry.SetText(u"Environment", u"PATH", "C:\\Bin");
         return {Stage::Create(u"CSetPath"), {u"Kelias"}};
       },
       .undisturbed = 'T',
       .when_a_call_fails = "E{5}",
       .begins_anew = true},
  };
  for (Operation& operation : operations) {
    if (operation.undisturbed == '0' && operation.kind == Operation::Kind::Call) {
      operation.outcome = u"ErrorStatus";
    }
  }
  return operations;
}

}  // namespace
}  // namespace operations

std::string Operation::Name() const {
  constexpr const char* kPrefixes[] = {"", "", "get_", "put_", "putref_", "~"};
  const std::string name = ToUtf8(class_name);
  const std::string prefix = kPrefixes[static_cast<int>(kind)];
  return kind == Kind::Create ? name : name + "." + prefix + ToUtf8(member);
}

std::string Operation::TestName() const {
  std::string name = kind == Kind::Release ? ToUtf8(class_name) + "_release" : Name();
  std::replace(name.begin(), name.end(), '.', '_');
  return name;
}

const std::vector<Operation>& Operations() {
  static const std::vector<Operation> operations = [] {
    using namespace operations;
    std::vector<Operation> all;
    for (const auto part : {GlobalObject, ToolsAndLock, Period, Reports, Storage, OneToolbar,
                            ButtonProperties, SetOfToolbars, ButtonsAndCommands}) {
      for (Operation& operation : part()) all.push_back(std::move(operation));
    }
    return all;
  }();
  return operations;
}

}  // namespace qva
