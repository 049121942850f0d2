#include "excelui/CEnvironment.h"

#include "excelui/ExcelSettings.h"

namespace qva {
namespace {

/// A setting and its value in either state.
struct FixedSetting {
  SettingOwner owner;
  std::u16string_view name;
  Value report;
  Value ordinary;
};

/// The settings in the order in which they are set.
const std::vector<FixedSetting>& FixedSettings() {
  using enum SettingOwner;
  const Value left_alone = Missing{};
  static const auto& settings = *new std::vector<FixedSetting>{
      {Application, u"DisplayAlerts", true, true},
      {Application, u"CellDragAndDrop", false, true},
      {Application, u"EditDirectlyInCell", true, true},
      {Application, u"TransitionNavigKeys", false, false},
      {Application, u"AskToUpdateLinks", false, true},
      {Application, u"CopyObjectsWithCells", true, true},
      {Application, u"EnableAnimations", false, false},
      {Application, u"DisplayStatusBar", true, true},
      {Application, u"DisplayFormulaBar", false, true},
      {Application, u"DisplayCommentIndicator", xlNoIndicator, xlCommentIndicatorOnly},
      {Window, u"DisplayWorkbookTabs", left_alone, true},
      {Window, u"DisplayFormulas", false, false},
      {Window, u"DisplayGridlines", false, true},
      {Window, u"DisplayHeadings", false, true},
      {Window, u"DisplayOutline", false, true},
      {Window, u"DisplayZeros", true, true},
      {Window, u"Zoom", 100, 100},
      {Window, u"WindowState", xlMaximized, left_alone},
      {Window, u"ScrollColumn", 1, left_alone},
      {Window, u"ScrollRow", 1, left_alone},
      {PageSetup, u"PrintGridlines", false, false},
      {Sheet, u"DisplayPageBreaks", false, false},
      {Application, u"Calculation", xlCalculationAutomatic, left_alone},
      {Application, u"ReferenceStyle", xlA1, left_alone},
  };
  return settings;
}

/// The keys that do nothing while a report is read. F2 is not among them, on purpose: cells stay editable.
constexpr std::u16string_view kFunctionKeys[] = {u"{F1}", u"{F3}", u"{F4}",  u"{F5}",  u"{F6}", u"{F7}",
                                                 u"{F8}", u"{F9}", u"{F10}", u"{F11}", u"{F12}"};

void Apply(ActiveSettings& settings, Value FixedSetting::*state) {
  for (const FixedSetting& setting : FixedSettings()) {
    const Value& value = setting.*state;
    if (value.Is(Value::Type::Missing)) continue;
    IgnoreErrors([&] { settings.Set(setting.owner, setting.name, value); });
  }
}

/// Visits the elements of one of Excel's collections by their positions. What Excel refuses of an element
/// does not keep `visit` from the others. Raises what the collection raises when it is asked for its count.
template <class Collection, class Visit>
void ForEach(const Collection& collection, Visit visit) {
  const std::int32_t count = collection.Count();
  for (std::int32_t position = 1; position <= count; ++position) {
    IgnoreErrors([&] { visit(collection.Item(position)); });
  }
}

/// Whether the bar is one of the report toolbars: all their controls carry the bar's name.
bool IsReportToolbar(const excel::CommandBar& bar) {
  const std::u16string name = bar.Name();
  return bar.Controls().Item(1).Parameter() == name;
}

void DisableExcelsBars(ActiveSettings& settings) {
  IgnoreErrors([&] {
    ForEach(settings.CommandBars(), [](const excel::CommandBar& bar) {
      if (!IsReportToolbar(bar)) bar.SetEnabled(false);
    });
  });
  IgnoreErrors([&] { settings.CommandBars().Item(kWorksheetMenuBar).SetEnabled(false); });
}

void ShowExcelsBars(ActiveSettings& settings) {
  for (const std::u16string_view name :
       {std::u16string_view(u"Standard"), std::u16string_view(u"Formatting"), kWorksheetMenuBar}) {
    IgnoreErrors([&] {
      const excel::CommandBar bar = settings.CommandBars().Item(name);
      IgnoreErrors([&] { bar.SetEnabled(true); });
      bar.SetVisible(true);
    });
  }
}

void SetNamesVisible(const excel::Application& application, bool visible) {
  IgnoreErrors([&] {
    ForEach(application.ActiveWorkbook().Names(),
            [&](const excel::DefinedName& name) { name.SetVisible(visible); });
  });
}

}  // namespace

ClassBuilder CEnvironment::Describe() {
  return ClassBuilder(u"CEnvironment", "Puts Excel into the report state or the ordinary state")
      .Method<&CEnvironment::SetDefaultAppState>(
          u"SetDefaultAppState", {Optional(u"bDisplayHorizontalScrollBar")}, "Sets the report state")
      .Method<&CEnvironment::SetDefaultExcelState>(u"SetDefaultExcelState", {}, "Sets the ordinary state");
}

void CEnvironment::SetDefaultAppState(bool) {
  // A copy: what a setting sets off in Excel may reset the connection.
  const excel::Application application = excel_.Application();
  IgnoreErrors([&] { application.SetCaption(u""); });
  IgnoreErrors([&] { application.Range(u"A1").Activate(); });
  ActiveSettings settings(application);
  Apply(settings, &FixedSetting::report);
  DisableExcelsBars(settings);
  for (const std::u16string_view key : kFunctionKeys) IgnoreErrors([&] { application.OnKey(key, u""); });
  SetNamesVisible(application, false);
}

void CEnvironment::SetDefaultExcelState() {
  const excel::Application application = excel_.Application();
  IgnoreErrors([&] { application.SetCaption(u""); });
  ActiveSettings settings(application);
  Apply(settings, &FixedSetting::ordinary);
  ShowExcelsBars(settings);
  for (const std::u16string_view key : kFunctionKeys) IgnoreErrors([&] { application.ResetKey(key); });
  SetNamesVisible(application, true);
}

}  // namespace qva
