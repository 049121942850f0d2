// Findings as text for the console, as a page, and as the table of the page about installing.
#pragma once

#include <string>
#include <vector>

#include "tools/doctor/Judgement.h"

namespace qva::doctor {

/// What stands above the findings.
struct ReportHead {
  std::u16string version;  ///< of the doctor
  std::u16string time;     ///< of the check, for the reader
};

/// For the console; lines end in "\n".
std::u16string TextReport(const ReportHead& head, const std::vector<Finding>& findings, Language language);

/// A page of its own, in UTF-8, that needs no other file. At its end stand the facts, for who gives help.
std::string HtmlReport(const ReportHead& head, const std::vector<Finding>& findings,
                       const MachineFacts& facts, Language language);

/// Every kind of finding as a table in Markdown, in UTF-8: its code, its level, its cause and what to do.
std::string FindingsTable(Language language);

/// A page in Markdown with that table, in English, between the marks "<!-- findings -->" and
/// "<!-- end of findings -->", in place of what stood there. Raises std::runtime_error where a mark is
/// missing.
std::string WithFindingsTable(std::string page);

}  // namespace qva::doctor
