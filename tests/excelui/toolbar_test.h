// What tests of toolbars share: a connected library, a workbook with a settings sheet, and short ways to the
// bars that come of it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/excel_constants.h"
#include "tests/library_fixture.h"

namespace qva {

/// A row of the settings sheet.
struct TestButton {
  Value id = 1;
  Value face_id = 59;
  Value caption = u"Mygtukas";
  Value picture = {};
  Value tag = {};
  Value tooltip = u"Užuomina";
  Value key = {};
  Value visible = true;
  Value begin_group = false;
  Value action = u"Veiksmas";
};

/// Columns of the settings sheet, in the order of TestButton.
inline constexpr std::u16string_view kColumnNames[] = {
    u"Button_ID",          u"Button_FaceID", u"Button_Captions", u"Button_Pictures",   u"Button_Tag",
    u"Button_TooltipText", u"Button_OnKey",  u"Button_Visible",  u"Button_BeginGroup", u"Button_OnAction"};
/// The other named cells.
inline constexpr std::u16string_view kCellNames[] = {u"nTotalButtons", u"sToolBarCaption", u"bMenuBar"};

/// Names and fills the single cells of a settings sheet, in row 1.
inline void DescribeToolbarCells(const ObjectPtr& sheet, const Value& total, bool is_menu_bar) {
  const Value values[] = {total, u"Ataskaita", is_menu_bar};
  for (std::int32_t column = 1; column <= 3; ++column) {
    const ObjectPtr cell = GetObject(sheet, u"Cells", {1, column});
    Put(cell, u"Value", values[column - 1]);
    Put(cell, u"Name", kCellNames[column - 1]);
  }
}

/// Fills a settings sheet: the single cells, the headers in row 3, and the buttons below them.
inline void DescribeToolbar(const ObjectPtr& sheet, const std::vector<TestButton>& buttons,
                            bool is_menu_bar = false) {
  DescribeToolbarCells(sheet, static_cast<std::int32_t>(buttons.size()), is_menu_bar);
  std::int32_t row = 3;
  for (std::int32_t column = 1; column <= 10; ++column) {
    const ObjectPtr header = GetObject(sheet, u"Cells", {row, column});
    Put(header, u"Value", u"Antraštė");
    Put(header, u"Name", kColumnNames[column - 1]);
  }
  for (const TestButton& b : buttons) {
    ++row;
    std::int32_t column = 0;
    for (const Value& value : {b.id, b.face_id, b.caption, b.picture, b.tag, b.tooltip, b.key, b.visible,
                               b.begin_group, b.action}) {
      ++column;
      if (!value.Is(Value::Type::Empty)) Put(GetObject(sheet, u"Cells", {row, column}), u"Value", value);
    }
  }
}

/// A shape of the name on a sheet, whose picture can be a button's face.
inline void AddPicture(const ObjectPtr& sheet, std::u16string_view name) {
  const ObjectPtr shape = Call(GetObject(sheet, u"Shapes"), u"AddShape", {1, 0, 0, 16, 16}).ToObject();
  Put(shape, u"Name", name);
}

/// An object of Excel's, and all that comes of it, before which a function is asked for what a member gives.
class OtherwiseAnswered : public Object {
 public:
  using Answer = std::function<std::optional<Value>(std::u16string_view member)>;
  OtherwiseAnswered(ObjectPtr object, Answer answer)
      : object_(std::move(object)), answer_(std::move(answer)) {}

  Value Invoke(Access access, std::u16string_view member, Arguments& arguments) override {
    if (std::optional<Value> answer = answer_(member)) return *std::move(answer);
    const Value result = object_->Invoke(access, member, arguments);
    if (!result.Is(Value::Type::Object) || !result.ToObject()) return result;
    return ObjectPtr(MakeRef<OtherwiseAnswered>(result.ToObject(), answer_));
  }
  std::u16string TypeName() const override { return object_->TypeName(); }

 private:
  ObjectPtr object_;
  Answer answer_;
};

/// The workbook is "Book1", its settings sheet "Sheet2"; a toolbar of it is called "Ataskaita(Book1)".
class ToolbarTest : public LibraryTest {
 protected:
  static constexpr std::u16string_view kBar = u"Ataskaita(Book1)";
  static constexpr int kDefaults = 7;

  ToolbarTest() {
    // A first object, so that the host's objects that stay are there.
    global = Connected();
    trace.Clear();
    count.Reset();
  }
  ~ToolbarTest() override {
    toolbar.reset();
    toolbars.reset();
  }

  ObjectPtr Cell(std::int32_t row, std::int32_t column) const {
    return GetObject(sheet, u"Cells", {row, column});
  }
  static void Name(const ObjectPtr& cell, std::u16string_view name) { Put(cell, u"Name", name); }

  void Describe(const std::vector<TestButton>& buttons, bool is_menu_bar = false) const {
    DescribeToolbar(sheet, buttons, is_menu_bar);
  }
  void DescribeCells(const Value& total, bool is_menu_bar = false) const {
    DescribeToolbarCells(sheet, total, is_menu_bar);
  }
  void AddShape(std::u16string_view name) const { AddPicture(sheet, name); }

  /// A toolbar of the settings sheet, outside of any collection.
  ObjectPtr NewToolbar() const {
    const ObjectPtr created = qva::LibraryTest::Create(u"CToolbar");
    Call(created, u"Init", {observed_workbook, observed_sheet});
    return created;
  }
  /// Another Excel, without a workbook, that another report connects.
  void ConnectAnother() {
    other_global = qva::LibraryTest::Create(u"gExcelObject");
    Call(other_global, u"InitConnectEX", {MakeRef<memory::Application>(), ObjectPtr()});
  }
  /// The toolbar of the settings sheet, with these buttons.
  void Build(const std::vector<TestButton>& buttons) {
    Describe(buttons);
    toolbar = NewToolbar();
    trace.Clear();
    count.Reset();
  }

  // Of Excel, past all observers.
  bool HasBar(std::u16string_view name = kBar) const {
    return RaisedBy([&] { GetObject(excel, u"CommandBars", {name}); }) == 0;
  }
  ObjectPtr Bar(std::u16string_view name = kBar) const { return GetObject(excel, u"CommandBars", {name}); }
  ObjectPtr Control(std::int32_t index) const { return GetObject(Bar(), u"Controls", {index}); }
  std::int32_t ControlCount() const { return Get(GetObject(Bar(), u"Controls"), u"Count").ToInt32(); }
  Value Of(std::int32_t index, std::u16string_view property) const { return Get(Control(index), property); }
  std::int32_t BarCount() const { return Get(GetObject(excel, u"CommandBars"), u"Count").ToInt32(); }
  std::u16string PastedFace(std::int32_t index) const {
    return excel->data()->command_bars.back()->controls[static_cast<std::size_t>(index) - 1]->pasted_face;
  }
  /// The macro that a key runs, "off" for none, "Excel" for Excel's own meaning.
  std::string Key(std::u16string_view key) const {
    const auto macro = excel->KeyBinding(key);
    if (!macro) return "Excel";
    return macro->empty() ? "off" : ToUtf8(*macro);
  }

  /// Lines of a trace with the long path of the bar as BAR.
  static std::vector<std::string> Shortened(std::vector<std::string> lines) {
    const std::string bar =
        R"~(Application.CommandBars.Add(Name:="Ataskaita(Book1)", MenuBar:=False, Temporary:=True))~";
    for (std::string& line : lines) {
      for (const std::string& path : {bar, std::string(R"~(Application.CommandBars("Ataskaita(Book1)"))~")}) {
        if (line.starts_with(path + ".")) line.replace(0, path.size(), "BAR");
      }
    }
    return lines;
  }

  /// The byte result of an operation.
  int Result(std::u16string_view member, Arguments arguments) const {
    return Call(toolbar, member, std::move(arguments)).As<std::uint8_t>();
  }
  int Create(const ObjectPtr& settings) const {
    return Call(toolbars, u"CreateToolbar", {settings}).As<std::uint8_t>();
  }

  static std::vector<TestButton> Buttons(int number) {
    return std::vector<TestButton>(static_cast<std::size_t>(number));
  }

  ObjectPtr global;
  ObjectPtr other_global;
  ObjectPtr workbook = excel->AddWorkbook();
  ObjectPtr sheet = GetObject(workbook, u"Sheets", {u"Sheet2"});
  ObjectPtr observed_workbook = interceptor.Wrap(workbook, u"Book");
  ObjectPtr observed_sheet = interceptor.Wrap(sheet, u"Sheet");
  ObjectPtr toolbar;
  ObjectPtr toolbars = qva::LibraryTest::Create(u"CToolbars");
};

}  // namespace qva
