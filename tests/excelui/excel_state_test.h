// What tests of Excel's states share: a connected library, an Excel with bars, names and keys of its own, and
// all of its settings in one map.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "excelui/CExcelState.h"
#include "platform/excel_constants.h"
#include "tests/library_fixture.h"

namespace qva {

/// Lets every use of one member fail.
class MemberRefusal : public CallObserver {
 public:
  void Starting(const HostCall& call) override {
    if (!member.empty() && call.member == member) {
      ++refused;
      throw AutomationError(kApplicationDefined, u"Microsoft Excel", u"Refused");
    }
  }

  std::u16string member;  ///< empty: none
  int refused = 0;
};

/// Resets the connection while a setting is read or set, as a macro that an event runs may do.
class ResetBetween : public CallObserver {
 public:
  void Starting(const HostCall& call) override {
    if (global && call.member == u"DisplayFormulas") {
      Call(global, u"ResetConnectEX", {std::int16_t{0}});
      global.reset();
    }
  }
  ObjectPtr global;
};

/// A setting and two values, neither of which is both states' value.
struct TestSetting {
  std::u16string_view owner;  ///< members that lead to it from the application, by points
  std::u16string_view name;
  Value values[2];
};

inline const std::vector<TestSetting>& TestSettings() {
  constexpr std::u16string_view application = u"";
  constexpr std::u16string_view window = u"ActiveWindow";
  constexpr std::u16string_view sheet = u"ActiveSheet";
  static const std::vector<TestSetting> settings = {
      {application, u"DisplayAlerts", {true, false}},
      {application, u"CellDragAndDrop", {true, false}},
      {application, u"EditDirectlyInCell", {true, false}},
      {application, u"TransitionNavigKeys", {false, true}},
      {application, u"MoveAfterReturn", {true, false}},
      {application, u"AskToUpdateLinks", {true, false}},
      {application, u"CopyObjectsWithCells", {true, false}},
      {application, u"EnableAnimations", {false, true}},
      {application, u"DisplayStatusBar", {true, false}},
      {application, u"DisplayFormulaBar", {true, false}},
      {application, u"DisplayCommentIndicator", {xlCommentIndicatorOnly, xlCommentAndIndicator}},
      {application, u"Calculation", {xlCalculationAutomatic, xlCalculationManual}},
      {application, u"ReferenceStyle", {xlA1, xlR1C1}},
      {application, u"Caption", {u"Microsoft Excel", u"Mano Excel"}},
      {window, u"DisplayHorizontalScrollBar", {true, false}},
      {window, u"DisplayVerticalScrollBar", {true, false}},
      {window, u"DisplayWorkbookTabs", {true, false}},
      {window, u"DisplayFormulas", {false, true}},
      {window, u"DisplayGridlines", {true, false}},
      {window, u"DisplayHeadings", {true, false}},
      {window, u"DisplayOutline", {true, false}},
      {window, u"DisplayZeros", {true, false}},
      {window, u"Zoom", {100, 75}},
      {window, u"WindowState", {xlMaximized, xlNormal}},
      {window, u"ScrollColumn", {1, 4}},
      {window, u"ScrollRow", {1, 30}},
      {u"ActiveSheet.PageSetup", u"PrintGridlines", {false, true}},
      {sheet, u"DisplayPageBreaks", {false, true}},
  };
  return settings;
}

using Settings = std::map<std::string, Value>;

/// Excel has one workbook with two names, and beside its own bars a report toolbar "Ataskaita", a foreign bar
/// "Kita" and a bar "Tuščia" without controls.
class ExcelStateTest : public LibraryTest {
 protected:
  ExcelStateTest() {
    workbook = excel->AddWorkbook();
    const ObjectPtr names = GetObject(workbook, u"Names");
    Call(names, u"Add", {u"rMetai", u"=Sheet1!$A$1"});
    Call(names, u"Add", {u"Sheet2!Saved", u"=Sheet2!$B$2"});
    AddBar(u"Ataskaita", u"Ataskaita");
    AddBar(u"Kita", u"kita");
    Call(GetObject(excel, u"CommandBars"), u"Add", {u"Tuščia"});
    trace.Clear();
    count.Reset();
  }

  /// A bar that is shown, with one control.
  void AddBar(std::u16string_view name, std::u16string_view parameter) const {
    const ObjectPtr bar = Call(GetObject(excel, u"CommandBars"), u"Add", {name}).ToObject();
    Call(GetObject(bar, u"Controls"), u"Add", Arguments().Named(u"Parameter", parameter));
    Put(bar, u"Visible", true);
  }

  ObjectPtr Bar(std::u16string_view name) const { return GetObject(excel, u"CommandBars", {name}); }

  /// The object that a setting belongs to, past all observers.
  ObjectPtr Owner(std::u16string_view path) const {
    ObjectPtr object = excel;
    while (!path.empty()) {
      const std::size_t point = std::min(path.find(u'.'), path.size());
      object = GetObject(object, path.substr(0, point));
      path.remove_prefix(std::min(point + 1, path.size()));
    }
    return object;
  }

  Value Read(const TestSetting& setting) const { return Get(Owner(setting.owner), setting.name); }
  void Write(const TestSetting& setting, const Value& value) const {
    Put(Owner(setting.owner), setting.name, value);
  }

  /// Everything that the states concern, past all observers.
  Settings Now() const {
    Settings now;
    for (const TestSetting& setting : TestSettings()) now[ToUtf8(setting.name)] = Read(setting);
    const ObjectPtr bars = GetObject(excel, u"CommandBars");
    for (std::int32_t i = 1; i <= Get(bars, u"Count").ToInt32(); ++i) {
      const ObjectPtr bar = GetObject(bars, u"Item", {i});
      const std::string name = "bar " + ToUtf8(Get(bar, u"Name").ToText());
      now[name + " enabled"] = Get(bar, u"Enabled");
      now[name + " visible"] = Get(bar, u"Visible");
    }
    const ObjectPtr names = GetObject(workbook, u"Names");
    for (std::int32_t i = 1; i <= Get(names, u"Count").ToInt32(); ++i) {
      const ObjectPtr name = GetObject(names, u"Item", {i});
      now["name " + ToUtf8(Get(name, u"Name").ToText())] = Get(name, u"Visible");
    }
    for (const auto& [key, macro] : excel->KeyBindings()) now["key " + ToUtf8(key)] = macro;
    now["active cell"] = Get(GetObject(excel, u"ActiveCell"), u"Address");
    return now;
  }

  /// Changes every setting away from its first value.
  void ChangeEverything() const {
    for (const TestSetting& setting : TestSettings()) Write(setting, setting.values[1]);
    Put(Bar(u"Standard"), u"Visible", false);
    Put(Bar(u"Kita"), u"Enabled", false);
  }

  /// The calls of the trace that change something and went through, in order.
  std::vector<std::string> Changes() const {
    std::vector<std::string> changes;
    for (const std::string& line : trace.lines()) {
      if (line.find(" ! ") == line.npos && IsChange(line)) changes.push_back(line);
    }
    return changes;
  }
  static bool IsChange(std::string_view line) {
    return line.find(" = ") != line.npos || line.find(".OnKey(") != line.npos ||
           line.find(".Activate(") != line.npos;
  }

  /// Of the calls of an operation, the changes that are lost when call `n` (from 0) fails: the change itself,
  /// or those that cannot be made without what the call would have given.
  static std::vector<std::string> LostBy(const std::vector<std::string>& lines, std::size_t n) {
    const std::string& line = lines[n];
    if (IsChange(line)) return {line};
    const auto under = [&](const std::string& path, std::size_t most) {
      std::vector<std::string> lost;
      for (const std::string& change : lines) {
        if (IsChange(change) && change.starts_with(path) && lost.size() < most) lost.push_back(change);
      }
      return lost;
    };
    constexpr std::size_t all = 1000;
    const std::string bars = "Application.CommandBars", names = "Application.ActiveWorkbook";
    // An object that carries settings is asked for again by the next of them.
    if (line == "Application.ActiveWindow") return under("Application.ActiveWindow.", 1);
    if (line == "Application.ActiveSheet" || line == "Application.ActiveSheet.PageSetup") {
      return under("Application.ActiveSheet.", 1);
    }
    if (line == bars || line.starts_with(bars + ".Count")) return under(bars + ".Item(", all);
    if (line == names || line == names + ".Names" || line.starts_with(names + ".Names.Count")) {
      return under(names, all);
    }
    // An element, or what was asked of it.
    const std::size_t item = line.find(".Item(");
    if (item != line.npos) return under(line.substr(0, line.find(')', item) + 1) + ".", all);
    return under(line.substr(0, line.find(" -> ")) + ".", all);
  }

  static std::vector<std::string> Without(std::vector<std::string> lines,
                                          const std::vector<std::string>& lost) {
    for (const std::string& line : lost) {
      const auto found = std::find(lines.begin(), lines.end(), line);
      EXPECT_NE(found, lines.end()) << line;
      if (found != lines.end()) lines.erase(found);
    }
    return lines;
  }

  MemberRefusal refusal;
  Interceptor refusing{&trace, &count, &failure, &refusal};
  ObjectPtr workbook;
  ObjectPtr observed = refusing.Wrap(excel, u"Application");
  ObjectPtr global = [this] {
    ObjectPtr object = Create(u"gExcelObject");
    Call(object, u"InitConnectEX", {observed, ObjectPtr()});
    return object;
  }();
};

/// What a snapshot does not bring back: the caption becomes Excel's own, the others stay.
inline const std::set<std::string> kNotPutBack = {"Caption",     "Calculation", "ReferenceStyle",
                                                  "WindowState", "ScrollRow",   "ScrollColumn",
                                                  "active cell", "name rMetai", "name Sheet2!Saved"};

/// Snapshots of that Excel.
class ExcelState : public ExcelStateTest {
 protected:
  /// What Excel is after a snapshot of `saved` was put back over `current`.
  static Settings PutBack(const Settings& saved, const Settings& current) {
    Settings result = current;
    for (const auto& [name, value] : saved) {
      if (!kNotPutBack.contains(name) && !name.starts_with("key ")) result[name] = value;
    }
    result["Caption"] = u"Microsoft Excel";
    return result;
  }

  Ref<CExcelState> state = MakeRef<CExcelState>();
};

}  // namespace qva
