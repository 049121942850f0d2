#include "tools/doctor/Report.h"

#include <algorithm>
#include <stdexcept>

#include "platform/text.h"

namespace qva::doctor {
namespace {

/// Texts of the report itself.
struct ReportWords {
  std::u16string_view title, whole, ok, warning, error, what_to_do, errors, warnings, finding, facts;
};

constexpr ReportWords kWords[kLanguageCount] = {
    {u"Check of QVA_Varnholt", u"This computer", u"ok", u"WARNING", u"ERROR", u"What to do:", u"errors",
     u"warnings", u"Finding", u"For those who help"},
    {u"QVA_Varnholt patikra", u"Šis kompiuteris", u"gerai", u"ĮSPĖJIMAS", u"KLAIDA", u"Ką daryti:", u"klaidų",
     u"įspėjimų", u"Radinys", u"Padedančiajam"},
};

const ReportWords& WordsOf(Language language) {
  return kWords[static_cast<std::size_t>(language)];
}

std::u16string_view LevelWord(Level level, Language language) {
  const ReportWords& words = WordsOf(language);
  return level == Level::Error ? words.error : level == Level::Warning ? words.warning : words.ok;
}

std::u16string GroupTitle(int bitness, Language language) {
  if (bitness == 0) return std::u16string(WordsOf(language).whole);
  return BitnessWords(static_cast<Bitness>(bitness)).in[static_cast<std::size_t>(language)] + u" Excel";
}

std::u16string Sum(const std::vector<Finding>& findings, Language language) {
  const ReportWords& words = WordsOf(language);
  const auto errors = std::ranges::count(findings, Level::Error, &Finding::level);
  const auto warnings = std::ranges::count(findings, Level::Warning, &Finding::level);
  std::u16string sum(words.errors);
  sum += u": " + NumberText(errors) + u", ";
  sum.append(words.warnings) += u": " + NumberText(warnings);
  return sum;
}

std::u16string Title(const ReportHead& head, Language language) {
  return std::u16string(WordsOf(language).title) + u" " + head.version + u", " + head.time;
}

std::string Escaped(std::u16string_view text) {
  std::string escaped;
  for (const char c : ToUtf8(text)) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

constexpr std::string_view kStyle =
    "body{font:15px/1.45 Segoe UI,sans-serif;margin:2em auto;max-width:60em;padding:0 1em;color:#222}"
    "table{border-collapse:collapse;width:100%}td{border-top:1px solid #ddd;padding:.5em;vertical-align:top}"
    "td:first-child{white-space:nowrap;font-weight:bold}.l0{color:#1a7f37}.l1{color:#9a6700}.l2{color:#"
    "cf222e}"
    "p{margin:.3em 0}code,pre{font-size:85%;color:#666}pre{white-space:pre-wrap;overflow-wrap:anywhere}";

std::string HtmlRow(const Finding& finding, Language language) {
  const auto level = static_cast<char>('0' + static_cast<int>(finding.level));
  std::string row = std::string("<tr><td class=\"l") + level + "\">";
  row += Escaped(LevelWord(finding.level, language)) + "</td><td><p>" + Escaped(finding.Cause(language));
  row += " <code>" + std::string(finding.kind->code) + "</code></p>";
  if (const std::u16string action = finding.Action(language); !action.empty()) {
    row += "<p><b>" + Escaped(WordsOf(language).what_to_do) + "</b> " + Escaped(action) + "</p>";
  }
  return row + "</td></tr>\n";
}

/// A text without the values that may be nothing.
std::u16string WithoutOptional(std::u16string_view text) {
  std::u16string rest(text);
  for (const std::u16string_view value : {u"{policy}", u"{others}", u"{result}"})
    rest = ReplaceAll(rest, value, u"");
  return rest;
}

/// A cell of a table in Markdown, with the names of values set off; those that may be nothing are left out.
std::string Cell(std::u16string_view text) {
  std::string cell;
  for (const char c : ToUtf8(WithoutOptional(text))) {
    cell += c == '{' || c == '}' ? '*' : c;
  }
  return cell;
}

}  // namespace

std::u16string TextReport(const ReportHead& head, const std::vector<Finding>& findings, Language language) {
  std::u16string text = Title(head, language) + u"\n";
  int group = -1;
  for (const Finding& finding : findings) {
    if (finding.bitness != group) {
      group = finding.bitness;
      text += u"\n" + GroupTitle(group, language) + u"\n";
    }
    text.append(u"[").append(LevelWord(finding.level, language)).append(u"] ");
    text += finding.Cause(language) + u" (" + FromUtf8(finding.kind->code) + u")\n";
    if (const std::u16string action = finding.Action(language); !action.empty()) {
      text.append(u"    ").append(WordsOf(language).what_to_do).append(u" ").append(action).append(u"\n");
    }
  }
  return text + u"\n" + Sum(findings, language) + u"\n";
}

std::string HtmlReport(const ReportHead& head, const std::vector<Finding>& findings,
                       const MachineFacts& facts, Language language) {
  const std::string title = Escaped(Title(head, language));
  std::string page = "<!DOCTYPE html>\n<html lang=\"";
  page += language == Language::Lithuanian ? "lt" : "en";
  page += "\"><head><meta charset=\"utf-8\"><title>" + title + "</title><style>";
  page.append(kStyle) += "</style></head><body>\n<h1>" + title + "</h1>\n<p>";
  page += Escaped(Sum(findings, language)) + "</p>\n";
  int group = -1;
  for (const Finding& finding : findings) {
    if (finding.bitness != group) {
      if (group != -1) page += "</table>\n";
      group = finding.bitness;
      page += "<h2>" + Escaped(GroupTitle(group, language)) + "</h2>\n<table>\n";
    }
    page += HtmlRow(finding, language);
  }
  if (group != -1) page += "</table>\n";
  page += "<h2>" + Escaped(WordsOf(language).facts) + "</h2>\n<pre>";
  return page + Escaped(FromUtf8(FactsText(facts))) + "</pre>\n</body></html>\n";
}

std::string FindingsTable(Language language) {
  const auto index = static_cast<std::size_t>(language);
  const ReportWords& words = WordsOf(language);
  std::string table = "| | " + Cell(words.finding) + " | " + Cell(words.what_to_do) + " |\n|---|---|---|\n";
  for (const FindingKind& kind : FindingKinds()) {
    table += "| `" + std::string(kind.code) + "`, " + Cell(LevelWord(kind.level, language)) + " | ";
    table += Cell(kind.cause[index]) + " | " + Cell(kind.action[index]) + " |\n";
  }
  return table;
}

std::string WithFindingsTable(std::string page) {
  constexpr std::string_view kBegin = "<!-- findings -->\n";
  const std::size_t begin = page.find(kBegin);
  const std::size_t end = page.find("<!-- end of findings -->");
  if (begin == page.npos || end == page.npos || end < begin) {
    throw std::runtime_error("the page has no place for the findings");
  }
  const std::size_t from = begin + kBegin.size();
  return page.replace(from, end - from, "\n" + FindingsTable(Language::English) + "\n");
}

}  // namespace qva::doctor
