#include "host/HostStore.h"

#include "host/HostError.h"
#include "host/OwnersFiles.h"
#include "host/ReadFile.h"
#include "platform/filesystem/folders.h"
#include "platform/filesystem/temporary_name.h"
#include "platform/text.h"

namespace qva::embedded {
namespace {

/// A new, empty file beside another one, for its owner alone, deleted unless it was renamed.
class TemporaryFile {
 public:
  /// The file is not there when none can be created in the folder.
  explicit TemporaryFile(const std::filesystem::path& beside) {
    for (int i = 0; i < kTemporaryNameTries && !is_there_; ++i) {
      path_ = beside.parent_path() / TemporaryName(beside.filename().string().size());
      const NewFile created = CreateOwnersFile(path_);
      is_there_ = created == NewFile::Created;
      if (created == NewFile::NotCreated) return;
    }
  }
  ~TemporaryFile() {
    std::error_code ignored;
    if (is_there_) std::filesystem::remove(path_, ignored);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  bool is_there() const { return is_there_; }
  const std::filesystem::path& path() const { return path_; }

  /// Renames the file; false leaves it as it is.
  bool RenameTo(const std::filesystem::path& name) {
    std::error_code error;
    std::filesystem::rename(path_, name, error);
    if (error) return false;
    is_there_ = false;
    return true;
  }

 private:
  std::filesystem::path path_;
  bool is_there_ = false;
};

void Fill(const std::filesystem::path& file, const std::string& script) {
  const Database database(file, Database::Mode::Write);
  database.Execute("PRAGMA foreign_keys = ON");
  database.Execute("BEGIN");
  database.Execute(script);
  database.Execute("COMMIT");
}

void CreateFromSample(const HostOptions& options) {
  const auto not_created = [&](std::u16string_view cause) {
    return HostError(Failure::DatabaseNotCreated, kCommonLibrary,
                     u"The host database \"" + PathText(options.database) + u"\" cannot be created: " +
                         std::u16string(cause));
  };
  const std::optional<std::string> script = ReadFile(options.sample);
  if (!script) throw not_created(u"the sample \"" + PathText(options.sample) + u"\" cannot be read");

  CreateOwnersFolder(options.database.parent_path());
  // Whatever became of the folder, the file shows whether it can be used.
  TemporaryFile file(options.database);
  if (!file.is_there()) throw not_created(u"its folder cannot be written");
  try {
    Fill(file.path(), *script);
    HostDatabase{file.path()};  // a sample that gives no database of ours must not take its name
  } catch (const AutomationError& cause) {
    throw not_created(cause.description());
  }
  if (!file.RenameTo(options.database)) throw not_created(u"the finished file cannot be renamed");
}

}  // namespace

std::shared_ptr<const HostDatabase> HostStore::Open() {
  std::shared_ptr<const HostDatabase> database = open_.lock();
  if (database) return database;
  std::error_code error;
  const auto type = std::filesystem::status(options_.database, error).type();
  const bool is_new = type == std::filesystem::file_type::not_found;
  if (is_new) CreateFromSample(options_);
  if (type == std::filesystem::file_type::directory) {
    throw HostError(
        Failure::DatabaseUnusable, kCommonLibrary,
        u"The host database \"" + PathText(options_.database) + u"\" cannot be used: it is a folder");
  }
  if (options_.is_own_folder) {
    // An earlier version let everybody read them.
    TakeFromOthers(options_.database.parent_path());
    TakeFromOthers(options_.database);
  }
  database = std::make_shared<const HostDatabase>(options_.database);
  open_ = database;
  if (is_new && options_.is_own_folder && files_) {
    for (const std::u16string& folder : database->ArchiveFolders()) {
      IgnoreErrors([&] { MakeFolders(*files_, folder); });
    }
  }
  return database;
}

}  // namespace qva::embedded
