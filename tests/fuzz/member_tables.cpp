// Macros gone wild: any members of any public objects, with any values, in an Excel, on a host and with
// files, registry and forms that fail now and then. Only automation errors come out, and all that was taken
// is given back.
#include <new>
#include <span>
#include <vector>

#include "global/Globals.h"
#include "global/StartUp.h"
#include "platform/memory/CallFailure.h"
#include "platform/memory/CallTime.h"
#include "platform/memory/Interceptor.h"
#include "platform/memory/MemoryHost.h"
#include "platform/memory/MemoryPlatform.h"
#include "platform/memory/excel/Application.h"
#include "server/PublicClasses.h"
#include "tests/fuzz/fuzz.h"

namespace qva {
namespace {

constexpr int kMostSteps = 60;
constexpr std::size_t kMostObjects = 12;
constexpr int kDeepest = 2;  // of macros that run while a form or a box is shown

constexpr std::u16string_view kHostSettings =
    u"Software\\VB and VBA Program Settings\\Quillon Enterprise\\Forms\\MDI";
constexpr std::u16string_view kOtherFile = u"C:\\Kita\\svarbu.txt";
constexpr std::u16string_view kOtherSetting = u"Software\\Kita";

/// What means something to some member.
constexpr std::u16string_view kTexts[] = {u"",          u"Sheet1",    u"Sheet2",      u"Book1",
                                          u"Book1.xls", u"Ataskaita", u"Print",       u"C:\\Ataskaitos\\",
                                          u"..\\..\\",  u"*.xls",     u"2024-01-31",  u"12,5",
                                          u"True",      u"^{s}",      u"{F1}",        u"Ataskaita(Book1)",
                                          u"#N/A",      u"=A1+1",     u"BookRepSave", u"Veiksmas"};

/// Cells of the sheet that describes a toolbar: headers of columns with what stands below them.
struct Column {
  std::u16string_view name;
  Value value;
};

class Macros {
 public:
  explicit Macros(FuzzInput& input) : input_(input) {
    host_.message_box = &platform_.message_box;
    host_.list_chooser = &platform_.list_chooser;
    for (const std::u16string_view identifier : host::kCreatableClasses) {
      platform_.object_factory.Register(identifier, [this, identifier] { return host_.Create(identifier); });
    }
    Services services = platform_.services();
    services.object_factory = &factory_;
    InstallServices(services);
    platform_.registry.SetText(kHostSettings, u"P0", "MEDVILNE");
    platform_.registry.SetText(kOtherSetting, u"a", "1");
    platform_.files.SetFile(kOtherFile, "1");
    platform_.files.SetFolder(u"C:\\Ataskaitos");
    platform_.forms.user = [this](MemoryForm& form) { WorkForm(form); };
    platform_.message_box.on_show = [this] { RunInBetween(); };
    excel_ = MakeRef<memory::Application>();
    PrepareWorkbook();
    for (const ObjectPtr& object :
         {ObjectPtr(excel_), GetObject(excel_, u"ActiveWorkbook"), GetObject(excel_, u"ActiveSheet"),
          GetObject(excel_, u"ActiveWindow"), GetObject(excel_, u"Range", {u"A1:C3"}),
          GetObject(excel_, u"Range", {u"B2"}), GetObject(excel_, u"CommandBars", {1})}) {
      things_.push_back(interceptor_.Wrap(object, u"Excel"));
    }
  }

  ~Macros() {
    failure_.Reset(0);
    objects_.clear();
    things_.clear();
    const memory::ApplicationData& excel = *excel_->data();
    Require(has_faults_ || may_freeze_ || excel.screen_updating, "the screen is live");
    Require(has_faults_ || excel.display_alerts, "Excel's alerts are on");
    for (const auto& [name, workbook] : excel.files) {
      Require(may_save_anywhere_ || name.starts_with(u"c:\\ataskaitos\\"), "reports stay in the archive");
    }
    excel_.reset();
    ResetGlobals();
    ShutDown();
    Require(platform_.files.FreeNumber() == 1, "every channel is closed");
    Require(platform_.files.Content(kOtherFile) == "1", "other files stay");
    Require(platform_.registry.Text(kHostSettings, u"P0") == "MEDVILNE", "the host's settings stay");
    Require(platform_.registry.Text(kOtherSetting, u"a") == "1", "other settings stay");
    // CWinRegistry leaves a key open where a step is refused, on purpose.
    Require(has_faults_ || platform_.registry.OpenHandles() == 0, "every registry key is closed");
    Require(Object::LiveCount() == live_before_, "every object is gone");
    InstallServices({});
  }

  void Run() {
    for (int step = 0; step < kMostSteps && input_.remaining_bytes() > 0; ++step) Step();
  }

 private:
  void PrepareWorkbook() {
    excel_->AddWorkbook();
    const ObjectPtr sheet = GetObject(excel_, u"ActiveSheet");
    const Column cells[] = {{u"nTotalButtons", 2}, {u"sToolBarCaption", u"Ataskaita"},
                            {u"bMenuBar", false},  {u"Print", u"Spauda"},
                            {u"RepYear", 2024},    {u"RepMon", 5}};
    const Column columns[] = {{u"Button_ID", 1},
                              {u"Button_FaceID", 59},
                              {u"Button_Captions", u"Mygtukas"},
                              {u"Button_Pictures", Value()},
                              {u"Button_Tag", u"cmdFreeze"},
                              {u"Button_TooltipText", u"Užuomina"},
                              {u"Button_OnKey", u"^{s}"},
                              {u"Button_Visible", true},
                              {u"Button_BeginGroup", false},
                              {u"Button_OnAction", u"Veiksmas"}};
    std::int32_t number = 0;
    for (const Column& cell : cells) Fill(sheet, 1, ++number, 0, cell);
    number = 0;
    for (const Column& column : columns) Fill(sheet, 4, ++number, 2, column);
    Put(GetObject(sheet, u"Cells", {10, 1}), u"Formula", u"=A1+1");
  }

  /// Names a cell; the value stands there, or in so many rows below it.
  static void Fill(const ObjectPtr& sheet, std::int32_t row, std::int32_t column, std::int32_t rows,
                   const Column& content) {
    Put(GetObject(sheet, u"Cells", {row, column}), u"Name", content.name);
    for (std::int32_t n = rows == 0 ? 0 : 1; n <= rows; ++n) {
      Put(GetObject(sheet, u"Cells", {row + n, column}), u"Value", content.value);
    }
  }

  void Step() {
    switch (input_.ConsumeIntegralInRange(0, 15)) {
      case 0:
        if (!objects_.empty()) objects_.erase(objects_.begin() + static_cast<std::ptrdiff_t>(Position()));
        break;
      case 1:
        Fail();
        break;
      case 2:
        ChangeWorld();
        break;
      case 3:
      case 4:
        CreateObject();
        break;
      default:
        if (objects_.empty()) {
          CreateObject();
        } else {
          CallMember();
        }
    }
  }

  std::size_t Position() { return input_.ConsumeIntegralInRange<std::size_t>(0, objects_.size() - 1); }

  /// What a macro does raises automation errors at most, and what was made to happen.
  template <class Code>
  void Try(Code&& code) {
    try {
      code();
    } catch (const AutomationError&) {
    } catch (const std::bad_alloc&) {
      Require(is_short_of_memory_, "there is memory");
    }
  }

  void CreateObject() {
    const auto classes = PublicClasses();
    const PublicClass& chosen = classes[input_.ConsumeIntegralInRange<std::size_t>(0, classes.size() - 1)];
    may_freeze_ |= chosen.description().name() == u"CLockScreen";
    Try([&] { Keep(CreatePublicObject(chosen)); });
  }

  void CallMember() {
    // The caller's own reference, as whoever calls has one.
    const ObjectPtr object = objects_[Position()];
    const std::vector<Member>& members = object->MemberTable()->members();
    if (members.empty()) return;  // such as those of a screen lock
    const Member& member = members[input_.ConsumeIntegralInRange<std::size_t>(0, members.size() - 1)];
    may_freeze_ |= member.name == u"LockScreen" || member.name == u"cmdFreeze";
    may_save_anywhere_ |= member.name == u"GeneralPath" && member.kind == MemberKind::Put;
    Arguments arguments;
    for (const Parameter& parameter : member.parameters) arguments.positional.push_back(ValueFor(parameter));
    switch (input_.ConsumeIntegralInRange(0, 15)) {
      case 0:
        arguments.positional.push_back(AnyValue());
        break;
      case 1:
        if (!arguments.positional.empty()) arguments.positional.pop_back();
        break;
      case 2:
        if (!arguments.positional.empty()) {
          arguments.Named(member.parameters.back().name, arguments.positional.back());
          arguments.positional.pop_back();
        }
        break;
      default:
        break;
    }
    Try([&] { Keep(object->Invoke(AccessOf(member.kind), member.name, arguments)); });
    for (const Value& value : arguments.positional) Keep(value);
  }

  static Access AccessOf(MemberKind kind) {
    switch (kind) {
      case MemberKind::Method:
        return Access::Call;
      case MemberKind::Get:
        return Access::Get;
      case MemberKind::Put:
        return Access::Put;
      default:
        return Access::PutRef;
    }
  }

  /// What a macro holds from now on.
  void Keep(const Value& value) {
    if (!value.Is(Value::Type::Object) || value.IsNothing()) return;
    const auto& object = value.As<ObjectPtr>();
    std::vector<ObjectPtr>& kept = IsPublicObject(*object) ? objects_ : things_;
    if (kept.size() < kMostObjects) kept.push_back(object);
  }

  void Fail() {
    has_faults_ = true;
    switch (input_.ConsumeIntegralInRange(0, 6)) {
      case 0:
        is_short_of_memory_ = true;
        failure_.Reset(input_.ConsumeIntegralInRange(1, 60), CallFailure::Kind::NoMemory);
        break;
      case 1:
        platform_.faults.files.FailAt(input_.ConsumeIntegralInRange(0, 10), kDiskFull);
        break;
      case 2: {
        using Operation = FaultyRegistry::Operation;
        const auto operation = static_cast<Operation>(input_.ConsumeIntegralInRange(0, 5));
        if (input_.ConsumeBool()) {
          platform_.faults.registry.Refuse(operation);
        } else {
          platform_.faults.registry.Allow(operation);
        }
        break;
      }
      case 3:
        if (input_.ConsumeBool()) {
          platform_.faults.forms.Refuse();
        } else {
          platform_.faults.forms.Allow();
        }
        break;
      case 4: {
        const auto identifier = input_.PickValueInArray(host::kCreatableClasses);
        if (input_.ConsumeBool()) {
          platform_.faults.object_factory.Refuse(identifier);
        } else {
          platform_.faults.object_factory.Allow(identifier);
        }
        break;
      }
      default:
        failure_.Reset(input_.ConsumeIntegralInRange(1, 60));
    }
  }

  /// What a user or a host does meanwhile.
  void ChangeWorld() {
    switch (input_.ConsumeIntegralInRange(0, 8)) {
      case 0:
        platform_.message_box.Answer(input_.ConsumeIntegralInRange(0, 4));
        break;
      case 1:
        call_time_.PerCall(std::chrono::milliseconds(input_.ConsumeIntegralInRange(0, 2000)));
        break;
      case 2:
        host_.refuses_tables = input_.ConsumeBool();
        break;
      case 3:
        excel_->RemoveFileSearch();
        break;
      case 4:
        Keep(interceptor_.Wrap(excel_->AddWorkbook(), u"Book"));
        break;
      case 5:
        Try([&] { Call(GetObject(excel_, u"ActiveWorkbook"), u"Close", {false}); });
        break;
      case 6:
        platform_.locale.short_date_pattern = TextFrom(input_, 12);
        break;
      case 7:
        platform_.clock.Set(Date{input_.ConsumeFloatingPointInRange(-657434.0, 2958465.0)});
        break;
      default:
        Try([&] {
          const ObjectPtr cell = GetObject(excel_, u"Cells", {1 + Small(), 1 + Small()});
          Put(cell, u"Value", PlainValue());
        });
    }
  }

  std::int32_t Small() { return input_.ConsumeIntegralInRange(0, 11); }

  /// The user at a form; macros may run meanwhile.
  void WorkForm(MemoryForm& form) {
    for (int left = input_.ConsumeIntegralInRange(0, 8); left > 0 && form.Visible(); --left) {
      Try([&] { Gesture(form); });
    }
    RunInBetween();
  }

  void Gesture(MemoryForm& form) {
    const auto& controls = form.description().controls;
    const ui::ControlDescription& control =
        controls[input_.ConsumeIntegralInRange<std::size_t>(0, controls.size() - 1)];
    const std::u16string& name = control.name;
    const auto row = static_cast<std::size_t>(input_.ConsumeIntegralInRange(0, 3));
    switch (control.kind) {
      case ui::ControlKind::TextBox:
      case ui::ControlKind::ComboBox:
        form.Type(name, AnyText());
        break;
      case ui::ControlKind::DatePicker:
        form.PickDate(name, Date{DoubleFrom(input_)});
        break;
      case ui::ControlKind::MonthView:
        if (row == 0) form.PressKey(name, Small() + 5);
        if (row == 1) form.DoubleClickDay(name, Date{DoubleFrom(input_)});
        if (row >= 2) form.PickDate(name, Date{DoubleFrom(input_)});
        break;
      case ui::ControlKind::Grid: {
        const auto& columns = form.Columns(name);
        const std::u16string column =
            columns.empty() ? u"" : columns[static_cast<std::size_t>(Small()) % columns.size()].name;
        if (input_.ConsumeBool()) {
          form.TypeCell(name, row, column, AnyText());
        } else {
          form.PressCellButton(name, row, column);
        }
        break;
      }
      default:
        form.Click(name);
    }
  }

  void RunInBetween() {
    if (depth_ == kDeepest || !input_.ConsumeBool()) return;
    ++depth_;
    Step();
    --depth_;
  }

  Value ValueFor(const Parameter& parameter) {
    if (input_.ConsumeIntegralInRange(0, 7) == 0) return AnyValue();
    switch (parameter.type) {
      case ParameterType::Boolean:
        return input_.ConsumeBool();
      case ParameterType::Byte:
      case ParameterType::Int16:
      case ParameterType::Int32:
        return input_.ConsumeBool() ? Small() : input_.ConsumeIntegral<std::int32_t>();
      case ParameterType::Double:
      case ParameterType::Currency:
        return DoubleFrom(input_);
      case ParameterType::Date:
        return Date{DoubleFrom(input_)};
      case ParameterType::Text:
        return AnyText();
      case ParameterType::Object:
        // A macro that gives the library its own object for Excel's ties it to itself.
        return AnyObject(parameter.object_class.empty() ? things_ : objects_);
      default:
        return AnyValue();
    }
  }

  std::u16string AnyText() {
    return input_.ConsumeBool() ? std::u16string(input_.PickValueInArray(kTexts)) : TextFrom(input_, 30);
  }

  Value AnyObject(const std::vector<ObjectPtr>& from) {
    const auto position = input_.ConsumeIntegralInRange<std::size_t>(0, from.size());
    return position == from.size() ? ObjectPtr() : from[position];
  }

  Value AnyValue() {
    switch (input_.ConsumeIntegralInRange(0, 4)) {
      case 0:
        return AnyObject(things_);
      case 1: {
        std::vector<Value> elements;
        for (int left = input_.ConsumeIntegralInRange(0, 3); left > 0; --left)
          elements.push_back(PlainValue());
        return Array::Of(std::move(elements), input_.ConsumeIntegral<std::int32_t>());
      }
      default:
        return PlainValue();
    }
  }

  Value PlainValue() {
    switch (static_cast<Value::Type>(input_.ConsumeIntegralInRange(0, 11))) {
      case Value::Type::Empty:
        return {};
      case Value::Type::Null:
        return Null{};
      case Value::Type::Missing:
        return Missing{};
      case Value::Type::Error:
        return ErrorValue{input_.ConsumeIntegral<std::int32_t>()};
      case Value::Type::Boolean:
        return input_.ConsumeBool();
      case Value::Type::Byte:
        return input_.ConsumeIntegral<std::uint8_t>();
      case Value::Type::Int16:
        return input_.ConsumeIntegral<std::int16_t>();
      case Value::Type::Int32:
        return input_.ConsumeIntegral<std::int32_t>();
      case Value::Type::Double:
        return DoubleFrom(input_);
      case Value::Type::Currency:
        return Currency{input_.ConsumeIntegral<std::int64_t>()};
      case Value::Type::Date:
        return Date{DoubleFrom(input_)};
      default:
        return AnyText();
    }
  }

  FuzzInput& input_;
  const long live_before_ = Object::LiveCount();
  bool has_faults_ = false;
  bool is_short_of_memory_ = false;
  bool may_freeze_ = false;         ///< the screen, for longer than a call
  bool may_save_anywhere_ = false;  ///< the macro named an archive of its own
  int depth_ = 0;
  MemoryPlatform platform_;
  MemoryHost host_ = MemoryHost::Sample();
  CallFailure failure_{0, AutomationError(kApplicationDefined, u"Excel", u"Refused")};
  CallTime call_time_{platform_.clock};
  Interceptor interceptor_{&failure_, &call_time_};
  InterceptedFactory factory_{interceptor_, platform_.faults.object_factory};
  Ref<memory::Application> excel_;
  std::vector<ObjectPtr> objects_;  ///< of the library
  std::vector<ObjectPtr> things_;   ///< of Excel and the host
};

}  // namespace
}  // namespace qva

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  qva::FuzzInput input(data, size);
  qva::Macros(input).Run();
  return 0;
}
