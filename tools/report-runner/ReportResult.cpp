#include "tools/report-runner/ReportResult.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "server/calc/job_protocol.h"

namespace qva {
namespace {

using Json = nlohmann::ordered_json;

constexpr StatusText kStatusTexts[] = {
    {ReportStatus::Ok, kJobOk, "the macro went through"},
    {ReportStatus::Failed, kJobFailed,
     "the macro failed, or the library told of a failure (no such book, a report that could not be saved)"},
    {ReportStatus::WrongCommandLine, "wrong-command-line",
     "a wrong command line or jobs file, or a path that is not there"},
    {ReportStatus::NoLibreOffice, "no-libreoffice",
     "LibreOffice or what belongs to it is missing, or LibreOffice does not start"},
    {ReportStatus::NoMacro, kJobNoMacro,
     "the workbook cannot be opened, has no such macro, or the macro does not compile"},
    {ReportStatus::WrongAnswer, kJobWrongAnswer, "an answer fits no window, or none is left for a question"},
    {ReportStatus::FileMissing, "file-missing", "the macro did not leave the file of --expect"},
    {ReportStatus::FolderInUse, "folder-in-use",
     "another run or program has the output folder or the workbook there"},
    {ReportStatus::TimeLimit, "time-limit", "LibreOffice was stopped at the time limit"},
    {ReportStatus::Died, "died", "LibreOffice died while it ran the report"},
    {ReportStatus::MemoryLimit, "memory-limit", "LibreOffice was stopped at the limit of memory"},
    {ReportStatus::JobsFailed, "jobs-failed", "some jobs of the batch failed"},
    {ReportStatus::Interrupted, "interrupted", "interrupted by Ctrl+C or a signal"}};

/// The field of a box' entry that a line holds; nothing when it is no such line.
std::optional<std::pair<std::string, std::string>> Field(const std::string& line) {
  const std::size_t colon = line.find(':');
  if (!line.starts_with("  ") || line[2] == ' ' || colon == line.npos) return std::nullopt;
  const std::string key = line.substr(2, colon - 2);
  if (key != "title" && key != "text" && key != "buttons" && key != "answer") return std::nullopt;
  const std::size_t text = line.find_first_not_of(' ', colon + 1);
  return std::pair(key, text == line.npos ? std::string() : line.substr(text));
}

/// Whether a line begins with a time such as "2026-11-22 11:05:38".
bool BeginsEntry(const std::string& line) {
  constexpr std::string_view kForm = "0000-00-00 00:00:00";
  return line.size() >= kForm.size() &&
         std::equal(kForm.begin(), kForm.end(), line.begin(),
                    [](char form, char c) { return form == '0' ? c >= '0' && c <= '9' : c == form; });
}

}  // namespace

std::span<const StatusText> StatusTexts() {
  return kStatusTexts;
}

std::string_view NameOf(ReportStatus status) {
  return std::ranges::find(kStatusTexts, status, &StatusText::status)->name;
}

std::string_view TextOf(ReportStatus status) {
  return std::ranges::find(kStatusTexts, status, &StatusText::status)->text;
}

std::optional<ReportStatus> StatusNamed(std::string_view name) {
  const auto* found = std::ranges::find(kStatusTexts, name, &StatusText::name);
  if (found == std::end(kStatusTexts)) return std::nullopt;
  return found->status;
}

Json MessagesOf(const std::string& log) {
  constexpr std::size_t kTimeLength = 19;
  constexpr std::string_view kContinued = "           ";  // as wide as "  buttons: "
  constexpr std::string_view kForm = "form ", kError = "ERROR: ";
  Json messages = Json::array();
  std::string key;  // of a box' line before
  std::istringstream lines(log);
  for (std::string line; std::getline(lines, line);) {
    if (BeginsEntry(line)) {
      key.clear();
      const Json time = line.substr(0, kTimeLength);
      const std::string entry = line.substr(std::min(kTimeLength + 1, line.size()));
      if (entry.starts_with("  ") && !messages.empty() && messages.back().contains("form")) {
        messages.back()["answers"].push_back(entry.substr(2));
      } else if (entry.starts_with(kForm)) {
        messages.push_back(
            {{"time", time}, {"form", entry.substr(kForm.size())}, {"answers", Json::array()}});
      } else if (entry.starts_with(kError)) {
        messages.push_back({{"time", time}, {"error", entry.substr(kError.size())}});
      } else {
        messages.push_back({{"time", time}});
      }
    } else if (messages.empty()) {
      continue;
    } else if (auto field = Field(line)) {
      key = field->first;
      messages.back()[key] = std::move(field->second);
    } else if (!key.empty() && line.starts_with(kContinued)) {
      messages.back()[key] = messages.back()[key].get<std::string>() + '\n' + line.substr(kContinued.size());
    }
  }
  return messages;
}

Json ToJson(const ReportResult& result) {
  Json json = {{"status", NameOf(result.status)}, {"exit_status", static_cast<int>(result.status)}};
  json["text"] = result.text;
  json["error"] = nullptr;
  if (const auto& error = result.error) {
    json["error"] = {{"number", error->number}, {"source", error->source}, {"text", error->text}};
    json["error"]["line"] = error->line ? Json(error->line) : Json(nullptr);
  }
  json["period"] = nullptr;
  if (result.period) json["period"] = {{"from", result.period->first}, {"to", result.period->second}};
  json["files"] = Json::array();
  for (const ReportResult::File& file : result.files) {
    json["files"].push_back({{"name", file.name}, {"bytes", file.bytes}, {"sha256", file.sha256}});
  }
  json["messages"] = MessagesOf(result.messages);
  json["steps"] = Json::array();
  for (const ReportResult::Step& step : result.steps) {
    json["steps"].push_back({{"step", step.name}, {"seconds", step.seconds}});
  }
  json["seconds"] = result.seconds;
  return json;
}

std::string JsonText(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace qva
