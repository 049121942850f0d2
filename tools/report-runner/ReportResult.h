// What became of a run, for programs: exit status and JSON.
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qva {

/// Their numbers are the exit statuses of the program.
enum class ReportStatus {
  Ok = 0,
  Failed = 1,
  WrongCommandLine = 2,
  NoLibreOffice = 3,
  NoMacro = 4,
  WrongAnswer = 5,
  FileMissing = 6,
  FolderInUse = 7,
  TimeLimit = 8,
  Died = 9,
  MemoryLimit = 10,
  JobsFailed = 11,
  Interrupted = 130
};

struct StatusText {
  ReportStatus status;
  std::string_view name;  ///< in JSON and CSV
  std::string_view text;
};
/// All of them, by number.
std::span<const StatusText> StatusTexts();
/// The name of a status.
std::string_view NameOf(ReportStatus status);
/// What a status means.
std::string_view TextOf(ReportStatus status);
/// The status of a name; nothing when it names none.
std::optional<ReportStatus> StatusNamed(std::string_view name);

struct ReportResult {
  struct File {
    std::string name;  ///< in the output folder
    std::uintmax_t bytes = 0;
    std::string sha256;
  };
  struct Step {
    std::string name;
    double seconds = 0;
  };
  /// An error that the macro did not handle.
  struct Error {
    std::int32_t number = 0;
    std::string source;
    std::string text;
    int line = 0;  ///< of the macro's module, from 1; 0 when it is not known
  };

  ReportStatus status = ReportStatus::Ok;
  std::string text;  ///< why it failed
  std::optional<Error> error;
  std::optional<std::pair<std::string, std::string>> period;  ///< its first and last day, yyyy-mm-dd
  std::vector<File> files;
  std::string messages;  ///< the log of message boxes and dialogs (messages.txt)
  std::vector<Step> steps;
  double seconds = 0;  ///< of all
};

/// A result as it stands in the file of --result, which docs/batch.md describes.
nlohmann::ordered_json ToJson(const ReportResult& result);

/// The entries of a log of messages: an array of objects with the boxes' and dialogs' texts and answers.
nlohmann::ordered_json MessagesOf(const std::string& log);

/// A JSON document as the text of a file. What is no UTF-8 in it becomes U+FFFD.
std::string JsonText(const nlohmann::ordered_json& json);

}  // namespace qva
