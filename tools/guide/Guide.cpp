#include "tools/guide/Guide.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "global/PublicClasses.h"
#include "platform/text.h"

namespace qva {
namespace {

std::string ReadText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  if (!(text << file.rdbuf())) throw std::runtime_error("cannot read " + path.string());
  return text.str();
}

void Replace(std::string& text, std::string_view what, std::string_view with) {
  for (std::size_t at = text.find(what); at != text.npos; at = text.find(what, at + with.size())) {
    text.replace(at, what.size(), with);
  }
}

/// A type's name in Basic.
std::string BasicType(ParameterType type, std::u16string_view object_class) {
  switch (type) {
    case ParameterType::None:
      return "";
    case ParameterType::Boolean:
      return "Boolean";
    case ParameterType::Byte:
      return "Byte";
    case ParameterType::Int16:
      return "Integer";
    case ParameterType::Int32:
      return "Long";
    case ParameterType::Double:
      return "Double";
    case ParameterType::Currency:
      return "Currency";
    case ParameterType::Date:
      return "Date";
    case ParameterType::Text:
      return "String";
    case ParameterType::Object:
      return object_class.empty() ? "Object" : ToUtf8(object_class);
    case ParameterType::Any:
      return "Variant";
  }
  return "";
}

/// The default value of an optional argument, when it is more than the zero of its type.
std::string DefaultOf(const Parameter& parameter) {
  const Value& value = parameter.default_value;
  if (value.Is(Value::Type::Text) && !value.ToText().empty()) return " = \"" + ToUtf8(value.ToText()) + "\"";
  return "";
}

/// A member as Basic declares it.
std::string Signature(const Member& member) {
  std::string text = ToUtf8(member.name);
  std::string arguments;
  const bool is_put = member.kind == MemberKind::Put || member.kind == MemberKind::PutRef;
  const std::size_t count = member.parameters.size() - (is_put ? 1 : 0);
  for (std::size_t i = 0; i < count; ++i) {
    const Parameter& parameter = member.parameters[i];
    std::string one = (parameter.by_reference ? "ByRef " : "") + ToUtf8(parameter.name) + " As " +
                      BasicType(parameter.type, parameter.object_class) + DefaultOf(parameter);
    if (parameter.optional) one.insert(0, 1, '[').append(1, ']');
    arguments += (i ? ", " : "") + one;
  }
  if (count > 0 || member.kind == MemberKind::Method) text += "(" + arguments + ")";
  std::string type = BasicType(member.result, member.result_class);
  if (is_put) type = BasicType(member.parameters.back().type, member.parameters.back().object_class);
  return type.empty() ? text : text + " As " + type;
}

/// A property that is read and written has two members; the table names it once.
std::string MemberRows(const ClassDescription& description) {
  const std::vector<Member>& members = description.members();
  if (members.empty()) return "It has no members.\n";
  std::string rows = "| member | what it is |\n|---|---|\n";
  for (std::size_t i = 0; i < members.size(); ++i) {
    const Member& member = members[i];
    bool is_second = false;
    bool has_put = false;
    bool has_get = false;
    for (std::size_t j = 0; j < members.size(); ++j) {
      if (members[j].name != member.name) continue;
      if (j < i) is_second = true;
      if (members[j].kind == MemberKind::Get) has_get = true;
      if (members[j].kind == MemberKind::Put || members[j].kind == MemberKind::PutRef) has_put = true;
    }
    if (is_second) continue;
    rows += "| `" + Signature(member) + "` | " + std::string(member.help);
    if (has_get || has_put)
      rows += has_get && has_put ? "; read and written" : has_get ? "; read" : "; written";
    rows += " |\n";
  }
  return rows;
}

/// Puts the comments behind lines of code into one column.
std::string AlignComments(const std::string& code) {
  constexpr std::string_view kComment = "  ' ";
  std::istringstream lines(code);
  std::vector<std::pair<std::string, std::string>> parts;
  std::size_t width = 0;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t comment = line.find(kComment);
    std::string statement = line.substr(0, comment);
    if (comment == line.npos) {
      parts.emplace_back(statement, "");
      continue;
    }
    statement.erase(statement.find_last_not_of(' ') + 1);
    width = std::max(width, statement.size());
    parts.emplace_back(statement, line.substr(comment));
  }
  std::string aligned;
  for (auto& [statement, comment] : parts) {
    if (!comment.empty()) statement.resize(width, ' ');
    aligned += statement + comment + "\n";
  }
  return aligned;
}

/// What a macro of the corpus shows, in the words of a workbook's own code.
std::string Example(const std::filesystem::path& macro) {
  const std::string text = ReadText(macro);
  const std::string begin = "' shown:\n";
  const std::string end = "' end of what is shown\n";
  const std::size_t first = text.find(begin);
  const std::size_t last = text.find(end);
  if (first == text.npos || last == text.npos) throw std::runtime_error("no example in " + macro.string());
  std::string shown = text.substr(first + begin.size(), last - first - begin.size());
  Replace(shown, "TheApplication()", "Application");
  Replace(shown, "TheWorkbook()", "ThisWorkbook");
  Replace(shown, "TheSheet(", "ThisWorkbook.Worksheets(");
  Replace(shown, "Note ", "Debug.Print ");
  for (std::size_t at = shown.find("Show("); at != shown.npos; at = shown.find("Show(", at)) {
    if (at > 0 && shown[at - 1] == '.') {
      at += 5;
      continue;
    }
    shown.erase(shown.find_last_of(')', shown.find('\n', at)), 1);
    shown.erase(at, 5);
  }
  return "```vb\n" + AlignComments(shown) + "```\n";
}

}  // namespace

std::string MakeGuide(const std::filesystem::path& source_folder) {
  const std::filesystem::path prose = source_folder / "docs" / "guide";
  std::string guide = ReadText(prose / "introduction.md");
  for (const PublicClass& public_class : PublicClasses()) {
    const ClassDescription& description = public_class.description();
    const std::string name = ToUtf8(description.name());
    guide += "\n## " + name + "\n\n" + std::string(description.help()) + ".\n\n" +
             Example(source_folder / "tests" / "corpus" / "macros" / ("guide_" + name + ".macro")) + "\n" +
             MemberRows(description) + "\n" + ReadText(prose / (name + ".md"));
  }
  return guide;
}

}  // namespace qva
