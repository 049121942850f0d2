#include "platform/memory/excel/Application.h"

#include "platform/commandbars/CommandBars.h"
#include "platform/memory/excel/Calculation.h"
#include "platform/memory/excel/FileSearch.h"
#include "platform/memory/excel/Names.h"
#include "platform/memory/excel/Range.h"
#include "platform/memory/excel/Sheets.h"
#include "platform/memory/excel/Window.h"
#include "platform/memory/excel/Workbook.h"
#include "platform/memory/excel/Workbooks.h"
#include "platform/memory/excel/Worksheet.h"
#include "platform/text.h"

namespace qva::memory {
namespace {

constexpr std::u16string_view kName = u"Microsoft Excel";
constexpr std::u16string_view kVersion = u"11.0";  // the last one with this grid and with command bars

}  // namespace

ClassBuilder Application::Describe() {
  using Data = ApplicationData;
  ClassBuilder builder(u"Application", "Excel");
  builder.Get<&Application::Name>(u"Name")
      .Get<&Application::Version>(u"Version")
      .Get<&Application::This>(u"Application");
  AddProperty<&Data::visible>(builder, u"Visible");
  AddProperty<&Data::screen_updating>(builder, u"ScreenUpdating");
  AddProperty<&Data::display_alerts>(builder, u"DisplayAlerts");
  AddProperty<&Data::display_formula_bar>(builder, u"DisplayFormulaBar");
  AddProperty<&Data::display_status_bar>(builder, u"DisplayStatusBar");
  AddProperty<&Data::enable_events>(builder, u"EnableEvents");
  AddProperty<&Data::cell_drag_and_drop>(builder, u"CellDragAndDrop");
  AddProperty<&Data::edit_directly_in_cell>(builder, u"EditDirectlyInCell");
  AddProperty<&Data::transition_navigation_keys>(builder, u"TransitionNavigKeys");
  AddProperty<&Data::move_after_return>(builder, u"MoveAfterReturn");
  AddProperty<&Data::ask_to_update_links>(builder, u"AskToUpdateLinks");
  AddProperty<&Data::copy_objects_with_cells>(builder, u"CopyObjectsWithCells");
  AddProperty<&Data::enable_animations>(builder, u"EnableAnimations");
  AddProperty<&Data::cursor, xlDefault, xlNorthwestArrow, xlWait, xlIBeam>(builder, u"Cursor");
  AddProperty<&Data::calculate_before_save>(builder, u"CalculateBeforeSave");
  builder.Property<&Application::Calculation, &Application::SetCalculation>(u"Calculation")
      .Method<&Application::Calculate>(u"Calculate");
  AddProperty<&Data::reference_style, xlA1, xlR1C1>(builder, u"ReferenceStyle");
  AddProperty<&Data::display_comment_indicator, xlNoIndicator, xlCommentIndicatorOnly, xlCommentAndIndicator>(
      builder, u"DisplayCommentIndicator");
  builder.Property<&Application::Caption, &Application::SetCaption>(u"Caption");
  builder.Property<&Application::StatusBar, &Application::SetStatusBar>(u"StatusBar");
  builder.Get<&Application::Workbooks>(u"Workbooks")
      .Get<&Application::Sheets>(u"Sheets")
      .Get<&Application::Sheets>(u"Worksheets")
      .Get<&Application::Names>(u"Names")
      .Get<&Application::CommandBars>(u"CommandBars")
      .Get<&Application::FileSearch>(u"FileSearch")
      .Get<&Application::ActiveWorkbook>(u"ActiveWorkbook")
      .Get<&Application::ActiveSheet>(u"ActiveSheet")
      .Get<&Application::ActiveWindow>(u"ActiveWindow")
      .Get<&Application::ActiveCell>(u"ActiveCell")
      .Get<&Application::Selection>(u"Selection")
      .Get<&Application::ThisWorkbook>(u"ThisWorkbook")
      .Get<&Application::Range>(u"Range", {{u"Cell1"}, Optional(u"Cell2")})
      .Method<&Application::Union>(u"Union", {{u"Arg1"}, {u"Arg2"}});
  builder.Method<&Application::OnKey>(u"OnKey", {{u"Key"}, Optional(u"Procedure")})
      .Method<&Application::SendKeys>(u"SendKeys", {{u"Keys"}, Optional(u"Wait")})
      .Method<&Application::Help>(u"Help", {Optional(u"HelpFile"), Optional(u"HelpContextID")})
      .Method<&Application::Quit>(u"Quit");
  return std::move(builder).Default(u"Name");
}

Application::Application() : Application(std::make_shared<ApplicationData>()) {
}

Application::Application(std::shared_ptr<ApplicationData> data) : ModelObject(data, data) {
}

Application::Application(std::shared_ptr<ApplicationData> application, std::shared_ptr<ApplicationData> data)
    : ModelObject(std::move(application), std::move(data)) {
}

ObjectPtr Application::AddWorkbook() {
  return Call(Workbooks(), u"Add").ToObject();
}

void Application::AddFile(std::u16string_view full_name) {
  const std::size_t slash = full_name.find_last_of(u"\\/");
  const auto workbook =
      NewWorkbook(std::u16string(slash == full_name.npos ? full_name : full_name.substr(slash + 1)), 1);
  if (slash != full_name.npos) workbook->path = full_name.substr(0, slash);
  data()->files[ToLower(full_name)] = workbook;
}

bool Application::HasFile(std::u16string_view full_name) const {
  return data()->files.contains(ToLower(full_name));
}

void Application::SetThisWorkbook(const ObjectPtr& workbook) {
  const auto* object = dynamic_cast<const Workbook*>(workbook.get());
  data()->this_workbook = object ? object->data() : nullptr;
}

std::optional<std::u16string> Application::KeyBinding(std::u16string_view key) const {
  const auto found = data()->key_bindings.find(std::u16string(key));
  if (found == data()->key_bindings.end()) return std::nullopt;
  return found->second;
}

bool Application::Press(std::u16string_view key) {
  const auto macro = KeyBinding(key);
  if (!macro || macro->empty()) return false;
  data()->RunMacro(*macro);
  return true;
}

void Application::DefineMacro(std::u16string_view name, std::function<void()> macro) {
  data()->macros[ToLower(name)] = std::move(macro);
}

void Application::Restart() {
  DropTemporaryBars(*data());
  data()->key_bindings.clear();
}

std::int32_t Application::Calculation() {
  return data()->calculation;
}

void Application::SetCalculation(std::int32_t mode) {
  const bool is_known =
      mode == xlCalculationAutomatic || mode == xlCalculationManual || mode == xlCalculationSemiautomatic;
  if (!is_known) throw Refusal(u"Unable to set the Calculation property of the Application class");
  // What is computed when it is asked for is as Excel computed it at once; afterwards it stays.
  if (mode == xlCalculationManual && data()->calculation != mode) Calculate();
  data()->calculation = mode;
}

void Application::Calculate() {
  for (const auto& workbook : data()->workbooks) memory::Calculate(*workbook);
}

Value Application::Caption() {
  return data()->caption.Is(Value::Type::Empty) ? Value(kName) : data()->caption;
}

void Application::SetCaption(const Value& caption) {
  // Empty and the empty text give Excel its own caption back.
  const std::u16string text = caption.ToText();
  data()->caption = text.empty() ? Value() : Value(text);
}

Value Application::StatusBar() {
  return data()->status_bar;
}

void Application::SetStatusBar(const Value& text) {
  const bool gives_back = text.Is(Value::Type::Boolean) && !text.As<bool>();
  data()->status_bar = gives_back ? text : Value(text.ToText());
}

std::u16string Application::Name() {
  return std::u16string(kName);
}

std::u16string Application::Version() {
  return std::u16string(kVersion);
}

ObjectPtr Application::This() {
  return ObjectPtr(this);
}

ObjectPtr Application::Workbooks() {
  return MakeRef<memory::Workbooks>(data());
}

ObjectPtr Application::Sheets() {
  if (!data()->active_workbook) throw Refusal();
  return MakeRef<memory::Sheets>(data(), data()->active_workbook);
}

ObjectPtr Application::Names() {
  if (!data()->active_workbook) throw Refusal();
  return MakeRef<memory::Names>(data(), data()->active_workbook, nullptr);
}

ObjectPtr Application::CommandBars() {
  return MakeRef<commandbars::CommandBars>(data());
}

ObjectPtr Application::FileSearch() {
  if (!data()->file_search) throw AutomationError(kUnsupportedAction);
  return ObjectOf<memory::FileSearch>(data(), data()->file_search);
}

ObjectPtr Application::ActiveWorkbook() {
  return ObjectOf<Workbook>(data(), data()->active_workbook);
}

ObjectPtr Application::ActiveSheet() {
  return ObjectOf<Worksheet>(data(), data()->ActiveSheet());
}

ObjectPtr Application::ActiveWindow() {
  return data()->active_workbook ? ObjectOf<Window>(data(), data()->active_workbook->window) : ObjectPtr();
}

ObjectPtr Application::ActiveCell() {
  const auto sheet = data()->ActiveSheet();
  if (!sheet) return {};
  return MakeRef<memory::Range>(data(), Reference{sheet, {{sheet->active_row, sheet->active_column, 1, 1}}});
}

ObjectPtr Application::Selection() {
  const auto sheet = data()->ActiveSheet();
  if (!sheet) return {};
  return MakeRef<memory::Range>(data(), Reference{sheet, sheet->selection});
}

ObjectPtr Application::ThisWorkbook() {
  auto workbook = data()->this_workbook.lock();
  if (!workbook && !data()->workbooks.empty()) workbook = data()->workbooks.front();
  return ObjectOf<Workbook>(data(), workbook);
}

ObjectPtr Application::Range(const Value& cell1, const Value& cell2) {
  const auto sheet = data()->ActiveSheet();
  const auto cells = sheet ? FindCells(*data()->active_workbook, sheet, cell1, cell2) : std::nullopt;
  if (!cells) throw Refusal(u"Method 'Range' of object '_Application' failed");
  return MakeRef<memory::Range>(data(), *cells);
}

ObjectPtr Application::Union(const Value& first, const Value& second) {
  const auto cells = UnionOf(first, second);
  if (!cells) throw Refusal(u"Method 'Union' of object '_Application' failed");
  return MakeRef<memory::Range>(data(), *cells);
}

void Application::OnKey(const std::u16string& key, const Value& procedure) {
  if (procedure.Is(Value::Type::Missing)) {
    data()->key_bindings.erase(key);
  } else {
    data()->key_bindings[key] = procedure.ToText();
  }
}

void Application::SendKeys(const std::u16string& keys, const Value&) {
  Press(keys);
}

void Application::Help(const std::u16string& file, std::int32_t context) {
  data()->help_shown.push_back({file, context});
}

void Application::Quit() {
  data()->has_quit = true;
}

}  // namespace qva::memory
