// What a run tells programs of itself.
#include "tools/report-runner/ReportResult.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>

#include "tests/source_text.h"

namespace qva {
namespace {

using Json = nlohmann::json;

TEST(ReportStatus, IsKnownByItsNameAndNumber) {
  std::set<int> numbers;
  for (const StatusText& text : StatusTexts()) {
    EXPECT_TRUE(numbers.insert(static_cast<int>(text.status)).second) << text.name;
    EXPECT_EQ(NameOf(text.status), text.name);
    EXPECT_EQ(StatusNamed(text.name), text.status);
  }
  EXPECT_EQ(static_cast<int>(StatusNamed("ok").value()), 0);
  EXPECT_EQ(StatusNamed("never"), std::nullopt);
}

TEST(ReportStatus, StandsInThePageWithItsNumberNameAndText) {
  const std::string page = SourceText("docs/batch.md");
  for (const StatusText& text : StatusTexts()) {
    const std::string row = "| " + std::to_string(static_cast<int>(text.status)) + " | `" +
                            std::string(text.name) + "` | " + std::string(text.text) + " |";
    EXPECT_NE(page.find(row), page.npos) << row;
  }
}

TEST(ReportResult, AsJsonHasAllThatBecameOfTheRun) {
  ReportResult result;
  EXPECT_EQ(Json(ToJson(result)), Json::parse(R"({"status": "ok", "exit_status": 0, "text": "", "error": null,
      "period": null, "files": [], "messages": [], "steps": [], "seconds": 0.0})"));
  result = {.status = ReportStatus::Failed,
            .text = "The report failed",
            .error = ReportResult::Error{-2147221503, "šaltinis", "tekstas", 12},
            .period = std::pair("2025-01-01", "2025-12-31"),
            .files = {{"a.xls", 3, "ab"}},
            .steps = {{"Opening", 1.5}},
            .seconds = 2};
  EXPECT_EQ(Json(ToJson(result)), Json::parse(R"({"status": "failed", "exit_status": 1,
      "text": "The report failed",
      "error": {"number": -2147221503, "source": "šaltinis", "text": "tekstas", "line": 12},
      "period": {"from": "2025-01-01", "to": "2025-12-31"},
      "files": [{"name": "a.xls", "bytes": 3, "sha256": "ab"}],
      "messages": [], "steps": [{"step": "Opening", "seconds": 1.5}], "seconds": 2.0})"));
  result.error->line = 0;
  EXPECT_TRUE(ToJson(result)["error"]["line"].is_null());
}

TEST(ReportResult, AnyBytesBecomeJson) {
  EXPECT_NE(JsonText({{"text", "a\xFF"}}).find("a\xEF\xBF\xBD"), std::string::npos);
}

// As platform/forms writes it.
TEST(ReportResult, HasTheMessagesWithTheirAnswers) {
  const std::string log =
      "2026-11-22 19:36:25 form frmReportPeriod\n"
      "2026-11-22 19:36:25   txtYear = 2025\n"
      "2026-11-22 19:36:25   list: BIU-2025-01\n"
      "2026-11-22 19:36:26\n"
      "  title:   QVA_Varnholt\n"
      "  text:    Ar tęsti?\n"
      "           answer:  ne\n"
      "  buttons: 6 Taip | 7 Ne\n"
      "  answer:  6 Taip (line 2 of /x: y)\n"
      "2026-11-22 19:36:27 ERROR: There are no answers\n";
  EXPECT_EQ(Json(MessagesOf(log)), Json::parse(R"json([
      {"time": "2026-11-22 19:36:25", "form": "frmReportPeriod", "answers": ["txtYear = 2025", "list: BIU-2025-01"]},
      {"time": "2026-11-22 19:36:26", "title": "QVA_Varnholt", "text": "Ar tęsti?\nanswer:  ne",
       "buttons": "6 Taip | 7 Ne", "answer": "6 Taip (line 2 of /x: y)"
},
      {"time": "2026-11-22 19:36:27", "error": "There are no answers"}])json"));
  EXPECT_TRUE(MessagesOf("").empty());
  EXPECT_TRUE(MessagesOf("no entry\n  text: x\n").empty());
}

}  // namespace
}  // namespace qva
