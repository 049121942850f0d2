#include "tools/report-runner/PeriodAnswers.h"

#include <chrono>
#include <cstddef>
#include <cstdio>

namespace qva {
namespace {

/// Whether a text is of a form in which "0" stands for any digit.
bool Fits(std::string_view text, std::string_view form) {
  if (text.size() != form.size()) return false;
  for (std::size_t n = 0; n < form.size(); ++n) {
    if (form[n] == '0' ? text[n] < '0' || text[n] > '9' : text[n] != form[n]) return false;
  }
  return true;
}

int Number(std::string_view digits) {
  int number = 0;
  for (const char digit : digits) number = number * 10 + (digit - '0');
  return number;
}

using Month = std::chrono::year_month;

/// The month of a text such as "2025-09".
std::optional<Month> MonthOf(std::string_view text) {
  if (!Fits(text, "0000-00")) return std::nullopt;
  const Month month(std::chrono::year(Number(text.substr(0, 4))),
                    std::chrono::month(static_cast<unsigned>(Number(text.substr(5)))));
  // No date of the dialog's is earlier.
  return month.ok() && month.year() >= std::chrono::year(101) ? std::optional(month) : std::nullopt;
}

std::string Text(std::chrono::year_month_day day) {
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
  return text;
}

std::string FirstDay(Month month) {
  return Text(month / 1);
}

std::string LastDay(Month month) {
  return Text(month / std::chrono::last);
}

/// In the order in which the outcome does not depend on what the workbook held.
std::optional<std::string> AnswersOf(std::string_view period) {
  if (const std::size_t slash = period.find('/'); slash != period.npos) {
    const auto from = MonthOf(period.substr(0, slash)), to = MonthOf(period.substr(slash + 1));
    if (!from || !to || *from > *to) return std::nullopt;
    // Compared with as many months before it. The dialog takes whole months alone.
    const Month before = *from - (*to - *from) - std::chrono::months(1);
    return "optUser\nedPrevBegDate = " + FirstDay(before) +
           "\nedPrevEndDate = " + LastDay(*from - std::chrono::months(1)) +
           "\nedCurrBegDate = " + FirstDay(*from) + "\nedCurrEndDate = " + LastDay(*to);
  }
  if (!Fits(period.substr(0, 4), "0000") || period < "0100") return std::nullopt;
  const std::string year = "optYear\ntxtYear = " + std::string(period.substr(0, 4)) + "\n";
  const std::string_view part = period.substr(4);
  if (part.empty()) return year + "optYear";
  if (part == "-H1") return year + "optHalfYearOwn";
  if (part == "-H2") return year + "optHalfYearTwo";
  if (Fits(part, "-Q0") && part >= "-Q1" && part <= "-Q4") {
    // The dialog refuses the fourth quarter as a quarter.
    return year + "txtQuater = " + part.back() + "\noptQuarter" + (part == "-Q4" ? "\noptUser" : "");
  }
  if (Fits(part, "-00") && part >= "-01" && part <= "-12") {
    return year + "txtMonth = " + std::to_string(Number(part.substr(1))) + "\noptMonth";
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> PeriodAnswers(std::string_view period) {
  const auto answers = AnswersOf(period);
  if (!answers) return std::nullopt;
  return "[frmReportPeriod]\n" + *answers + "\nbtOk\n";
}

}  // namespace qva
