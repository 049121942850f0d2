#include "tools/doctor/Facts.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <type_traits>

#include "platform/text.h"

namespace qva::doctor {
namespace {

/// The first word of each kind of line.
constexpr std::string_view kDoing = "doing", kComplete = "complete", kBeside = "beside", kFile = "file",
                           kHive = "hive", kServer = "server", kCreation = "creation", kHost = "host",
                           kBook = "book", kArchive = "archive", kFolder = "folder";

/// A field of a line.
struct Field {
  std::string text;

  Field(std::string_view word) : text(word) {}
  Field(const char* word) : text(word) {}
  Field(std::u16string_view value) : text(ToUtf8(value)) {
    std::ranges::replace_if(
        text, [](unsigned char c) { return c < ' '; }, ' ');
  }
  Field(const std::u16string& value) : Field(std::u16string_view(value)) {}
  template <class Number>
  requires std::is_integral_v<Number> Field(Number value) : text(std::to_string(+value)) {}
};

std::string Line(std::initializer_list<Field> fields) {
  std::string line;
  for (const Field& field : fields) line += (line.empty() ? "" : "\t") + field.text;
  return line + "\n";
}

std::string FileLine(const FileFacts& file) {
  return Line({kFile, file.path, file.is_there, file.has_folder, file.machine, file.version, file.zone,
               file.load_code});
}

/// The fields of a line, taken from left to right. Those that are missing are empty and 0.
class Fields {
 public:
  explicit Fields(std::string_view line) : rest_(line) {}

  std::string_view Word() {
    const std::size_t end = std::min(rest_.find('\t'), rest_.size());
    const std::string_view word = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return word;
  }
  std::u16string Text() { return FromUtf8(Word()); }
  template <class T>
  void Take(T& field) {
    if constexpr (std::is_same_v<T, std::u16string>) {
      field = Text();
    } else {
      const std::string_view word = Word();
      std::int64_t number = 0;
      std::from_chars(word.data(), word.data() + word.size(), number);
      field = static_cast<T>(number);
    }
  }

 private:
  std::string_view rest_;
};

template <class... Members>
void TakeAll(Fields& fields, Members&... members) {
  (fields.Take(members), ...);
}

void ReadLine(std::string_view line, BitnessFacts& facts) {
  Fields fields(line);
  const std::string_view kind = fields.Word();
  if (kind == kDoing) {
    fields.Take(facts.doing);
  } else if (kind == kComplete) {
    facts.is_complete = true;
  } else if (kind == kBeside) {
    fields.Take(facts.beside);
  } else if (kind == kFile) {
    FileFacts& file = facts.files.emplace_back();
    TakeAll(fields, file.path, file.is_there, file.has_folder, file.machine, file.version, file.zone,
            file.load_code);
  } else if (kind == kHive) {
    HiveFacts& hive = facts.hives.emplace_back();
    TakeAll(fields, hive.hive, hive.expected, hive.present, hive.foreign);
  } else if (kind == kServer && !facts.hives.empty()) {
    fields.Take(facts.hives.back().servers.emplace_back());
  } else if (kind == kCreation) {
    Creation& creation = facts.creations.emplace_back();
    TakeAll(fields, creation.identifier, creation.code, creation.class_id, creation.type_name);
  } else if (kind == kHost) {
    HostClass& host = facts.host_classes.emplace_back();
    TakeAll(fields, host.identifier, host.class_id, host.server, host.code, host.is_for_other,
            host.is_behind_demo);
  } else if (kind == kBook) {
    TakeAll(fields, facts.book.is_asked, facts.book.error, facts.book.text);
  } else if (kind == kArchive) {
    TakeAll(fields, facts.archive.is_asked, facts.archive.error, facts.archive.text);
  } else if (kind == kFolder) {
    TakeAll(fields, facts.archive_folder.is_there, facts.archive_folder.write_code);
  }
}

}  // namespace

const FileFacts* BitnessFacts::File(std::u16string_view path) const {
  const auto found =
      std::ranges::find_if(files, [&](const FileFacts& file) { return EqualIgnoringCase(file.path, path); });
  return found == files.end() ? nullptr : &*found;
}

HiveFacts BitnessFacts::InHive(Hive hive) const {
  const auto found = std::ranges::find(hives, hive, &HiveFacts::hive);
  return found == hives.end() ? HiveFacts{.hive = hive} : *found;
}

std::string FactsText(const BitnessFacts& facts) {
  std::string text;
  text += Line({kBeside, facts.beside});
  for (const FileFacts& file : facts.files) text += FileLine(file);
  for (const HiveFacts& hive : facts.hives) {
    text += Line({kHive, static_cast<int>(hive.hive), hive.expected, hive.present, hive.foreign});
    for (const std::u16string& server : hive.servers) text += Line({kServer, server});
  }
  for (const Creation& creation : facts.creations) {
    text += Line({kCreation, creation.identifier, creation.code, creation.class_id, creation.type_name});
  }
  for (const HostClass& host : facts.host_classes) {
    text += Line({kHost, host.identifier, host.class_id, host.server, host.code, host.is_for_other,
                  host.is_behind_demo});
  }
  text += Line({kBook, facts.book.is_asked, facts.book.error, facts.book.text});
  text += Line({kArchive, facts.archive.is_asked, facts.archive.error, facts.archive.text});
  text += Line({kFolder, facts.archive_folder.is_there, facts.archive_folder.write_code});
  if (!facts.doing.empty()) text += Line({kDoing, facts.doing});
  if (facts.is_complete) text += Line({kComplete});
  return text;
}

std::string FactsText(const MachineFacts& facts) {
  std::string text = Line({"doctor", facts.doctor_version});
  text += Line({"windows", facts.windows_version, facts.is_64bit ? 64 : 32, facts.is_elevated});
  text += Line({"code page", facts.code_page});
  text += Line({"P0", facts.book_setting});
  text += Line({"call log", facts.call_log});
  for (const ExcelFacts& excel : facts.excels) text += "excel " + FileLine(excel.file);
  for (const TrustFacts& trust : facts.trusts) {
    text += Line({"trust", trust.version, trust.macros, trust.is_macros_policy, trust.project_access,
                  trust.is_project_access_policy});
  }
  for (const BitnessFacts& bitness : facts.bitnesses) {
    text += Line({"bitness", static_cast<int>(bitness.bitness), bitness.start_code}) + FactsText(bitness);
  }
  return text;
}

void ReadFacts(std::string_view text, BitnessFacts& facts) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    ReadLine(line, facts);
  }
}

}  // namespace qva::doctor
