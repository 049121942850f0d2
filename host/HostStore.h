// The one way to the host's database.
#pragma once

#include <memory>

#include "host/HostDatabase.h"
#include "host/HostOptions.h"
#include "platform/files.h"

namespace qva::embedded {

/// Opens the database for whichever object needs it. All of them share one connection, which closes with the
/// last of them, so that the file is free once no book is open.
class HostStore {
 public:
  /// Borrows the files, which may be null.
  HostStore(HostOptions options, Files* files) : options_(std::move(options)), files_(files) {}

  const HostOptions& options() const { return options_; }

  /// The database. Where there is none yet it is created from the sample: filled under another name and
  /// renamed when it is whole, so that nobody ever meets a half-filled one. File and folder are made for
  /// their owner alone. With one in a folder of ours come the folders in which its books keep their reports,
  /// as far as they can be made. Raises Failure::DatabaseNotCreated, which leaves nothing behind but the
  /// database's folder, and Failure::DatabaseUnusable.
  std::shared_ptr<const HostDatabase> Open();

 private:
  HostOptions options_;
  Files* files_;
  std::weak_ptr<const HostDatabase> open_;
};

}  // namespace qva::embedded
