#include "tests/corpus/MemoryEngine.h"

#include <filesystem>

#include "platform/date.h"
#include "tests/corpus/Corpus.h"
#include "tests/corpus/interpreter/Parser.h"
#include "tests/files.h"

namespace qva::corpus {
namespace {

namespace fs = std::filesystem;
using Type = Value::Type;
using ArgumentList = std::vector<Value>;

std::u16string OneLine(std::u16string_view text) {
  return ReplaceAll(ReplaceAll(text, u"\r\n", u"\\n"), u"\n", u"\\n");
}

std::u16string ArgumentText(const ArgumentList& arguments, std::size_t index) {
  return arguments.at(index).ToText();
}

std::u16string Day(const Value& value) {
  return FormatByWindowsPattern(value.ToDate(), u"yyyy-MM-dd");
}

/// The name of the value's kind, as TypeName gives it.
std::u16string KindOf(const Value& value) {
  switch (value.type()) {
    case Type::Boolean:
      return u"Boolean";
    case Type::Byte:
      return u"Byte";
    case Type::Int16:
      return u"Integer";
    case Type::Int32:
      return u"Long";
    case Type::Double:
      return u"Double";
    case Type::Currency:
      return u"Currency";
    case Type::Date:
      return u"Date";
    case Type::Text:
      return u"String";
    case Type::Object:
      return value.IsNothing() ? u"Nothing" : u"Object";
    default:
      return DescribeValue(value);
  }
}

/// The answers to the dialogs that a macro opens stand beside it.
std::string AnswersOf(const std::string& name) {
  const fs::path answers = Folder() / "macros" / (name + ".answers");
  return fs::exists(answers) ? answers.string() : "";
}

}  // namespace

std::u16string Show(const Value& value) {
  switch (value.type()) {
    case Type::Text:
      return u"\"" + OneLine(value.As<std::u16string>()) + u"\"";
    case Type::Date:
      return u"#" + Day(value) + u"#";
    case Type::Boolean:
    case Type::Byte:
    case Type::Int16:
    case Type::Int32:
    case Type::Double:
    case Type::Currency:
      return value.ToText();
    default:
      return KindOf(value);
  }
}

MemoryEngine::MemoryEngine(std::string name)
    : name_(std::move(name)), forms_(AnswersOf(name_), form_log_.string(), platform.clock, platform.locale) {
  platform.locale.decimal_separator = u".";
  host.list_chooser = &forms_;
  Services services = GetServices();
  services.forms = &forms_;
  InstallServices(services);
  platform.files.SetFolder(u"C:\\Corpus");
  const ObjectPtr workbook = excel->AddWorkbook();
  Call(workbook, u"SaveAs", {u"C:\\Corpus\\Corpus.xls"});
}

std::string MemoryEngine::Run() {
  return Run(SourceOf(name_));
}

std::string MemoryEngine::Run(const std::string& source) {
  const Block macro = ParseMacro(FromUtf8(source));
  Interpreter interpreter(PreludeFunctions(),
                          [this](const Object& object, Access access, std::u16string_view member) {
                            Watch(object, access, member);
                          });
  interpreter_ = &interpreter;
  try {
    interpreter.Run(macro);
  } catch (const AutomationError& error) {
    interpreter.error()->Set(error);
  }
  LogForgottenError();
  LogNewBoxes(u"forgotten");
  interpreter_ = nullptr;
  return log_;
}

std::string MemoryEngine::FormProblems() const {
  const std::string log = FileContent(form_log_, "");
  const std::string path = AnswersOf(name_);
  const std::string answers = path.empty() ? "" : "\n" + FileContent(path);
  const auto count = [](const std::string& text, const std::string& what) {
    int found = 0;
    for (std::size_t at = text.find(what); at != text.npos; at = text.find(what, at + 1)) ++found;
    return found;
  };
  const bool is_complete = count(log, " form frm") == count(answers, "\n[frm");
  // A form that refuses an answer is left, which may be what the macro is about.
  const bool is_well = count(log, "ERROR") == count(log, "The form refuses what it was given");
  if (is_complete && is_well) return "";
  return log + "of the showings in the answers file\n" + answers;
}

Functions MemoryEngine::PreludeFunctions() {
  Functions functions = {
      {u"note", [this](const auto& a) { return LogForgottenError(), Log(ArgumentText(a, 0)), Value(); }},
      {u"logfact", [this](const auto& a) { return LogOutcome(ArgumentText(a, 0), Show(a.at(1))), Value(); }},
      {u"logstatement", [this](const auto& a) { return LogOutcome(ArgumentText(a, 0), u"done"), Value(); }},
      {u"typename", [](const auto& a) { return Value(KindOf(a.at(0))); }},
      {u"ubound",
       [](const auto& a) {
         const auto& dimensions = a.at(0).ToArray().dimensions;
         const Array::Dimension& asked = dimensions.at(static_cast<std::size_t>(a.at(1).ToInt32()) - 1);
         return Value(asked.lower + asked.count - 1);
       }},
      {u"logerror", [this](const auto& a) { return LogError(ArgumentText(a, 0)), Value(); }},
      {u"logboxes", [this](const auto& a) { return LogBoxes(ArgumentText(a, 0)), Value(); }},
      {u"show", [](const auto& a) { return Value(Show(a.at(0))); }},
      {u"kind", [](const auto& a) { return Value(KindOf(a.at(0))); }},
      {u"format",
       [](const auto& a) { return Value(FormatByWindowsPattern(a.at(0).ToDate(), u"yyyy-MM-dd")); }},
      {u"showdate", [](const auto& a) { return Value(a.at(0).Is(Type::Empty) ? u"" : Day(a.at(0))); }},
      {u"sameobject",
       [](const auto& a) { return Value(Unwrap(a.at(0).ToObject()) == Unwrap(a.at(1).ToObject())); }},
      {u"createobject", [this](const auto& a) { return CreateByIdentifier(ArgumentText(a, 0)); }},
  };
  AddExcelFunctions(functions);
  AddWorldFunctions(functions);
  return functions;
}

void MemoryEngine::AddExcelFunctions(Functions& functions) {
  functions[u"theapplication"] = [this](const auto&) { return Value(application); };
  functions[u"theworkbook"] = [this](const auto&) {
    return Value(GetObject(application, u"ActiveWorkbook"));
  };
  // By these names the guide's examples call them.
  functions[u"application"] = functions[u"theapplication"];
  functions[u"thisworkbook"] = functions[u"theworkbook"];
  functions[u"thesheet"] = [this](const auto& a) { return Value(Sheet(a.at(0).ToInt32())); };
  functions[u"definename"] = [this](const auto& a) {
    DefineName(ArgumentText(a, 0), a.at(1).ToInt32(), ArgumentText(a, 2));
    return Value();
  };
  functions[u"describetoolbar"] = [this](const auto& a) {
    DescribeToolbar(a.at(0).ToInt32(), a.at(1).ToInt32());
    return Value();
  };
  functions[u"presskey"] = [this](const auto& a) { return Value(excel->Press(ArgumentText(a, 0))); };
  functions[u"macrosrun"] = [this](const auto&) {
    std::u16string names;
    for (const std::u16string& name : excel->MacrosRun()) names += (names.empty() ? u"" : u",") + name;
    return Value(names);
  };
  functions[u"cleartrace"] = [this](const auto&) { return trace.Clear(), Value(); };
  functions[u"logtrace"] = [this](const auto& a) {
    LogForgottenError();
    // Over COM a property that is read cannot be told from a method without arguments.
    for (const std::string& line : trace.lines()) {
      Log(ArgumentText(a, 0) + u": " + ReplaceAll(FromUtf8(line), u"()", u""));
    }
    if (trace.lines().empty()) Log(ArgumentText(a, 0) + u": no call");
    trace.Clear();
    return Value();
  };
  functions[u"failcall"] = [this](const auto& a) {
    failure =
        CallFailure(a.at(0).ToInt32(), AutomationError(kApplicationDefined, u"Microsoft Excel", u"Refused"));
    return Value();
  };
}

void MemoryEngine::AddWorldFunctions(Functions& functions) {
  functions[u"setsetting"] = [this](const auto& a) {
    SetSetting(ArgumentText(a, 0), ArgumentText(a, 1), ArgumentText(a, 2));
    return Value();
  };
  functions[u"setuserpath"] = [this](const auto& a) {
    platform.registry.SetText(u"Environment", u"PATH", platform.locale.ToAnsi(ArgumentText(a, 0)));
    return Value();
  };
  functions[u"userpath"] = [this](const auto&) {
    const auto path = platform.registry.Text(u"Environment", u"PATH");
    return Value(platform.locale.FromAnsi(path.value_or("")));
  };
  functions[u"answer"] = [this](const auto& a) {
    platform.message_box.Answer(a.at(0).ToInt32());
    return Value();
  };
  functions[u"makefolder"] = [this](const auto& a) {
    return platform.files.SetFolder(ArgumentText(a, 0)), Value();
  };
  functions[u"makefile"] = [this](const auto& a) {
    return platform.files.SetFile(ArgumentText(a, 0), ""), Value();
  };
  functions[u"folderexists"] = [this](const auto& a) {
    return Value(platform.files.FolderExists(ArgumentText(a, 0)));
  };
  // Objects go when the last reference does; only LibreOffice needs a hand.
  functions[u"settle"] = [](const auto&) { return Value(); };
}

void MemoryEngine::Log(std::u16string_view text) {
  log_ += ToUtf8(OneLine(text)) + "\n";
}

void MemoryEngine::LogForgottenError() {
  if (interpreter_->error()->Number() != 0) LogError(u"forgotten");
}

void MemoryEngine::LogError(const std::u16string& what) {
  ErrorObject& error = *interpreter_->error();
  std::u16string text = u"no error";
  if (error.Number() != 0) {
    text = u"error " + NumberText(error.Number());
    // The texts of Basic's own errors are the engine's.
    if (error.Number() < 0) text += u" | " + error.Source() + u" | " + error.Text();
  }
  Log(what + u": " + text);
  error.Clear();
}

void MemoryEngine::LogOutcome(const std::u16string& what, const std::u16string& outcome) {
  ErrorObject& error = *interpreter_->error();
  Log(what + u" => " + (error.Number() == 0 ? outcome : u"error " + NumberText(error.Number())));
  error.Clear();
}

void MemoryEngine::LogBoxes(const std::u16string& what) {
  LogForgottenError();
  if (!LogNewBoxes(what)) Log(what + u": no box");
}

bool MemoryEngine::LogNewBoxes(const std::u16string& what) {
  const auto& boxes = platform.message_box.boxes();
  const bool any = boxes_logged_ < boxes.size();
  for (; boxes_logged_ < boxes.size(); ++boxes_logged_) {
    const auto& box = boxes[boxes_logged_];
    Log(what + u": box " + Show(box.text) + u" -> " + NumberText(box.answer));
  }
  return any;
}

ObjectPtr MemoryEngine::Sheet(std::int32_t number) {
  return GetObject(GetObject(application, u"ActiveWorkbook"), u"Sheets", {number});
}

void MemoryEngine::DefineName(const std::u16string& name, std::int32_t sheet, const std::u16string& address) {
  const ObjectPtr names = GetObject(GetObject(application, u"ActiveWorkbook"), u"Names");
  Call(names, u"Add", {name, u"=Sheet" + NumberText(sheet) + u"!" + address});
}

void MemoryEngine::DescribeToolbar(std::int32_t sheet, std::int32_t buttons) {
  const ObjectPtr target = Sheet(sheet);
  const auto put = [&](std::int32_t row, std::int32_t column, Value value) {
    Put(GetObject(target, u"Cells", {row, column}), u"Value", std::move(value));
  };
  put(1, 1, buttons);
  put(1, 2, u"Ataskaita");
  put(1, 3, false);
  DefineName(u"nTotalButtons", sheet, u"$A$1");
  DefineName(u"sToolBarCaption", sheet, u"$B$1");
  DefineName(u"bMenuBar", sheet, u"$C$1");
  std::u16string column = u"A";
  for (const std::u16string_view name : {u"ID", u"FaceID", u"Captions", u"Pictures", u"Tag", u"TooltipText",
                                         u"OnKey", u"Visible", u"BeginGroup", u"OnAction"}) {
    DefineName(u"Button_" + std::u16string(name), sheet, u"$" + column + u"$3");
    ++column[0];
  }
  for (std::int32_t i = 1; i <= buttons; ++i) {
    put(3 + i, 1, 1);
    put(3 + i, 2, 59);
    put(3 + i, 3, u"Mygtukas Nr. " + NumberText(i));
    put(3 + i, 6, u"Užuomina");
    if (i == 1) put(3 + i, 7, u"^{b}");
    put(3 + i, 8, true);
    put(3 + i, 9, false);
    put(3 + i, 10, u"Veiksmas" + NumberText(i));
  }
}

Value MemoryEngine::CreateByIdentifier(const std::u16string& identifier) {
  if (const PublicClass* found = FindPublicClass(identifier)) return CreatePublicObject(*found);
  return platform.object_factory.Create(identifier);
}

void MemoryEngine::Watch(const Object& object, Access access, std::u16string_view member) {
  for (const PublicClass& public_class : PublicClasses()) {
    const ClassDescription& table = public_class.description();
    if (object.MemberTable() != &table) continue;
    if (const Member* found = table.Find(access, member))
      members_.emplace(ToUtf8(table.name()), static_cast<std::size_t>(found - table.members().data()));
  }
}

}  // namespace qva::corpus
