// What the doctor finds on a machine, as plain data. Judgement.h says what it means.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qva::doctor {

/// Values are those that texts show.
enum class Bitness : std::uint8_t { x86 = 32, x64 = 64 };
/// The part of the registry: of all users, of the current one.
enum class Hive : std::uint8_t { Machine, User };

/// A file that is, or should be, a program or a library.
struct FileFacts {
  std::u16string path;
  bool is_there = false;
  bool has_folder = false;         ///< the folder of the path is there
  std::uint16_t machine = 0;       ///< the processor that it is for, as its header says; 0 for no program
  std::u16string version;          ///< "1.0.0.0"; empty when it tells none
  std::int32_t zone = kNoZone;     ///< where it came from, as Windows marks downloaded files
  std::int32_t load_code = kIdle;  ///< Windows' code for reading and loading it, 0 when it loads

  static constexpr std::int32_t kNoZone = -1;  ///< no mark
  static constexpr std::int32_t kIdle = -1;    ///< not tried
  static constexpr std::int32_t kInternetZone = 3;
};

/// The library's registration in one hive. None when nothing is present.
struct HiveFacts {
  Hive hive = Hive::Machine;
  std::uint32_t expected = 0;           ///< entries that a registration has
  std::uint32_t present = 0;            ///< those of them that are there
  std::uint32_t foreign = 0;            ///< names that lead to a class that is not the library's
  std::vector<std::u16string> servers;  ///< the files that classes name, each once
};

/// What a macro would get for one of the library's classes.
struct Creation {
  std::u16string identifier;
  std::uint32_t code = 0;    ///< HRESULT
  std::u16string class_id;   ///< empty when the identifier leads to none
  std::u16string type_name;  ///< of the object, as it tells itself
};

/// One of the accounting system's classes.
struct HostClass {
  std::u16string identifier;
  std::u16string class_id;      ///< empty: not registered
  std::u16string server;        ///< the file; empty: the class has none for this bitness
  std::uint32_t code = 0;       ///< HRESULT of loading its server
  bool is_for_other = false;    ///< there is a server for the other bitness
  bool is_behind_demo = false;  ///< the user's demo host comes first, and hands on to this one
};

/// A question to the accounting system.
struct Answer {
  bool is_asked = false;
  std::int32_t error = 0;  ///< the number that a macro would meet
  std::u16string text;     ///< the answer, or the error's description
};

/// Whether files can be written to a folder.
struct FolderFacts {
  bool is_there = false;
  std::uint32_t write_code = 0;  ///< Windows' code for making a file there
};

/// What programs of one bitness meet.
struct BitnessFacts {
  Bitness bitness = Bitness::x64;
  std::uint32_t start_code = 0;  ///< Windows' code for starting the part of the check that has this bitness
  bool is_complete = false;      ///< that part came to its end
  std::u16string doing;          ///< what it began last
  std::u16string beside;         ///< the library that lies with this program; empty when there is none
  std::vector<FileFacts> files;  ///< those that registrations name, and the one beside
  std::vector<HiveFacts> hives;
  std::vector<Creation> creations;
  std::vector<HostClass> host_classes;
  Answer book;     ///< asked for the book of the setting "P0"
  Answer archive;  ///< asked for the folder of the reports archive
  FolderFacts archive_folder;

  /// Null when nothing is known of it.
  const FileFacts* File(std::u16string_view path) const;
  /// The facts of a hive; those of an empty one when none are known.
  HiveFacts InHive(Hive hive) const;
};

/// An Excel that Windows names.
struct ExcelFacts {
  FileFacts file;
};

/// One version's macro settings. −1 stands for a value that is not set.
struct TrustFacts {
  std::u16string version;  ///< as Office's keys have it: "16.0"
  std::int32_t macros = -1;
  bool is_macros_policy = false;  ///< set by the administrator
  std::int32_t project_access = -1;
  bool is_project_access_policy = false;
};

struct MachineFacts {
  std::u16string doctor_version;
  std::u16string windows_version;
  bool is_64bit = true;
  bool is_elevated = false;  ///< this process sees the machine's registrations alone
  std::uint32_t code_page = 0;
  std::u16string book_setting;  ///< "P0"
  std::u16string call_log;      ///< file of the call log; empty: off
  std::vector<ExcelFacts> excels;
  std::vector<TrustFacts> trusts;
  std::vector<BitnessFacts> bitnesses;
};

/// Facts as text, a line each, in UTF-8: what one part of the check hands to the other, and what a report
/// ends with. Characters of control become blanks.
std::string FactsText(const BitnessFacts& facts);
std::string FactsText(const MachineFacts& facts);

/// Reads what FactsText wrote. Lines of other kinds are passed over.
void ReadFacts(std::string_view text, BitnessFacts& facts);

/// The processor of a bitness in a program's header.
inline constexpr std::uint16_t kMachineX64 = 0x8664;
inline constexpr std::uint16_t kMachineX86 = 0x014C;
inline constexpr std::uint16_t MachineOf(Bitness bitness) {
  return bitness == Bitness::x64 ? kMachineX64 : kMachineX86;
}

}  // namespace qva::doctor
