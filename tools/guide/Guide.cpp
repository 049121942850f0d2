#include "tools/guide/Guide.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "platform/host.h"
#include "platform/text.h"
#include "server/PublicClasses.h"

namespace qva {
namespace {

/// What the generator itself says.
struct Words {
  bool is_first;  ///< which half of an example's comments
  std::string_view example;
  std::string_view member, meaning, no_members, read, written, read_and_written;
  std::string_view number, text, class_word, error, when, every_class;
};

constexpr Words kEnglish = {true,
                            "Example",
                            "member",
                            "what it is",
                            "It has no members.",
                            "read",
                            "written",
                            "read and written",
                            "number",
                            "text",
                            "class",
                            "error",
                            "when",
                            "every class"};
constexpr Words kLithuanian = {
    false,     "Pavyzdys", "narys", "kas tai", "Narių nėra.", "skaitoma",    "rašoma", "skaitoma ir rašoma",
    "numeris", "tekstas",  "klasė", "klaida",  "kada",        "visos klasės"};

std::string ReadPage(const std::filesystem::path& path) {
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

/// A page's prose, whose links lead to files where the prose stands, with links as pages have them: all pages
/// in one folder, pictures in one below it, and the introduction the first page.
std::string ReadProse(const std::filesystem::path& path) {
  std::string text = ReadPage(path);
  Replace(text, "](../../", "](");
  Replace(text, "](../", "](");
  Replace(text, "](introduction.md)", "](index.md)");
  return text;
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

/// The lines of a reference table that tells of errors, "| error | when |", without its head.
std::string ErrorRows(const std::string& prose) {
  std::string rows;
  bool is_in_table = false;
  std::istringstream lines(prose);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("| error |") || line.starts_with("| klaida |")) {
      is_in_table = true;
      std::getline(lines, line);
    } else if (!line.starts_with("|")) {
      is_in_table = false;
    } else if (is_in_table) {
      rows += line + "\n";
    }
  }
  return rows;
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

/// The classes' and members' one-line descriptions of a language by "Class" and "Class.Member", taken out as
/// they are used, so that those of members that are no more show at the end.
class Texts {
 public:
  /// An empty path means the member tables' own, which are English.
  explicit Texts(const std::filesystem::path& file) : is_own_(file.empty()) {
    if (is_own_) return;
    std::istringstream lines(ReadPage(file));
    for (std::string line; std::getline(lines, line);) {
      const std::size_t tab = line.find('\t');
      if (tab == line.npos || tab + 1 == line.size()) throw std::runtime_error(file.string() + ": " + line);
      if (!texts_.emplace(line.substr(0, tab), line.substr(tab + 1)).second)
        throw std::runtime_error(file.string() + " has twice: " + line);
    }
  }

  std::string Take(const std::string& key, std::string_view own) {
    if (is_own_) return std::string(own);
    auto text = texts_.extract(key);
    if (text.empty()) throw std::runtime_error("no text for " + key);
    return text.mapped();
  }

  void CheckAllTaken() const {
    if (!texts_.empty()) throw std::runtime_error("no such member: " + texts_.begin()->first);
  }

 private:
  bool is_own_;
  std::map<std::string, std::string> texts_;
};

/// A property that is read and written has two members; the table names it once.
std::string MemberRows(const ClassDescription& description, Texts& texts, const Words& words) {
  const std::vector<Member>& members = description.members();
  if (members.empty()) return std::string(words.no_members) + "\n";
  std::string rows =
      "| " + std::string(words.member) + " | " + std::string(words.meaning) + " |\n|---|---|\n";
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
    const std::string key = ToUtf8(description.name()) + "." + ToUtf8(member.name);
    rows += "| `" + Signature(member) + "` | " + texts.Take(key, member.help);
    if (has_get || has_put) {
      rows += "; ";
      rows += has_get && has_put ? words.read_and_written : has_get ? words.read : words.written;
    }
    rows += " |\n";
  }
  return rows;
}

/// Prose may begin with a warning, a paragraph in bold, which belongs in front of the example: taken out of
/// the prose, with the empty line below it. Empty where there is none.
std::string TakeWarning(std::string& prose) {
  if (!prose.starts_with("**")) return "";
  const std::size_t end = prose.find("\n\n") + 2;
  std::string warning = prose.substr(0, end);
  prose.erase(0, end);
  return warning;
}

/// Puts the comments behind lines of code into one column. A comment that has its line to itself stays where
/// it is.
std::string AlignComments(const std::string& code) {
  constexpr std::string_view kComment = "  ' ";
  std::istringstream lines(code);
  std::vector<std::pair<std::string, std::string>> parts;
  std::size_t width = 0;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t comment = line.find(kComment);
    std::string statement = line.substr(0, comment);
    if (comment == line.npos || statement.find_first_not_of(' ') == line.npos) {
      parts.emplace_back(line, "");
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

/// A line of code with its comment in the language: "' English | lietuviškai".
std::string InLanguage(const std::string& line, bool is_first) {
  const std::size_t comment = line.find("' ");
  const std::size_t bar = line.find(" | ", comment == line.npos ? line.size() : comment);
  if (bar == line.npos) return line;
  return is_first ? line.substr(0, bar) : line.substr(0, comment + 2) + line.substr(bar + 3);
}

/// What a macro of the corpus shows, as a procedure to be pasted into a module.
std::string Example(const std::filesystem::path& macro, const std::string& class_name, const Words& words) {
  const std::string text = ReadPage(macro);
  const std::string begin = "' shown:\n";
  const std::string end = "' end of what is shown\n";
  const std::size_t first = text.find(begin);
  const std::size_t last = text.find(end);
  if (first == text.npos || last == text.npos) throw std::runtime_error("no example in " + macro.string());
  std::istringstream lines(text.substr(first + begin.size(), last - first - begin.size()));
  std::string shown = "Sub " + std::string(words.example) + class_name + "()\n";
  for (std::string line; std::getline(lines, line);) {
    shown += line.empty() ? "\n" : "    " + InLanguage(line, words.is_first) + "\n";
  }
  return "```vb\n" + AlignComments(shown + "End Sub\n") + "```\n";
}

/// The host's texts by number, as a table.
std::string MessageRows(const std::filesystem::path& file, const Words& words) {
  std::istringstream lines(ReadPage(file));
  std::string rows = "| " + std::string(words.number) + " | " + std::string(words.text) + " |\n|---|---|\n";
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.starts_with("#")) continue;
    const std::size_t end = line.find_first_of(" \t");
    rows += "| " + line.substr(0, end) + " | " + line.substr(line.find_first_not_of(" \t", end)) + " |\n";
  }
  Replace(rows, "\\n", " ");
  return rows;
}

/// A page's name in a link becomes that of its heading where all pages are one.
std::string Anchor(std::string_view title) {
  std::u16string anchor;
  for (const char16_t letter : ToLower(FromUtf8(title))) {
    if (letter == u' ')
      anchor += u'-';
    else if (letter > 0x7f || letter == u'-' || std::isalnum(static_cast<unsigned char>(letter)))
      anchor += letter;
  }
  return ToUtf8(anchor);
}

std::string TitleOf(const std::string& page) {
  return page.substr(page.find(' ') + 1, page.find('\n') - page.find(' ') - 1);
}

}  // namespace

std::vector<GuidePage> MakeGuidePages(const std::filesystem::path& source_folder, GuideLanguage language) {
  const Words& words = language == GuideLanguage::English ? kEnglish : kLithuanian;
  const std::filesystem::path english = source_folder / "docs" / "guide";
  const std::filesystem::path prose = words.is_first ? english : english / "lt";
  const std::filesystem::path macros = source_folder / "tests" / "corpus" / "macros";
  Texts texts(words.is_first ? std::filesystem::path() : prose / "members.tsv");

  std::vector<GuidePage> pages;
  const auto add = [&](std::string name, std::string text) {
    pages.push_back({std::move(name), TitleOf(text), std::move(text)});
  };
  add("index", ReadProse(prose / "introduction.md"));
  for (const char* name : {"tutorial"}) {
    if (std::filesystem::exists(english / (std::string(name) + ".md")))
      add(name, ReadProse(prose / (std::string(name) + ".md")));
  }
  std::string errors = "| " + std::string(words.class_word) + " | " + std::string(words.error) + " | " +
                       std::string(words.when) + " |\n|---|---|---|\n";
  const auto add_errors = [&](const std::string& who, const std::string& text) {
    std::istringstream rows(ErrorRows(text));
    for (std::string row; std::getline(rows, row);)
      errors.append("| ").append(who).append(" ").append(row).append("\n");
  };
  add_errors(std::string(words.every_class), pages.front().text);
  for (const PublicClass& public_class : PublicClasses()) {
    const ClassDescription& description = public_class.description();
    const std::string name = ToUtf8(description.name());
    std::string text = ReadProse(prose / (name + ".md"));
    std::string page = "# " + name + "\n\n";
    page.append(texts.Take(name, description.help())).append(".\n\n");
    page.append(TakeWarning(text));
    page.append(Example(macros / ("guide_" + name + ".macro"), name, words)).append("\n");
    page.append(MemberRows(description, texts, words)).append("\n").append(text);
    add(name, page);
    add_errors("`" + name + "`", text);
  }
  texts.CheckAllTaken();
  std::string reference = ReadProse(prose / "reference.md");
  Replace(reference, "<!-- messages -->\n",
          MessageRows(source_folder / "host" / (ToUtf8(host::kMessageResourceLibrary) + ".txt"), words));
  Replace(reference, "<!-- errors -->\n", errors);
  add("reference", std::move(reference));
  return pages;
}

std::string MakeGuide(const std::filesystem::path& source_folder, GuideLanguage language) {
  const std::vector<GuidePage> pages = MakeGuidePages(source_folder, language);
  std::string guide;
  for (const GuidePage& page : pages) {
    std::istringstream lines(page.text);
    bool is_code = false;
    if (!guide.empty()) guide += "\n";
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("```")) is_code = !is_code;
      if (!is_code && line.starts_with("#") && page.name != "index") guide += "#";
      guide += line + "\n";
    }
  }
  for (const GuidePage& page : pages) {
    Replace(guide, "](" + page.name + ".md)", "](#" + Anchor(page.title) + ")");
  }
  return guide;
}

}  // namespace qva
