// The one way to the host's database.
#pragma once

#include <memory>

#include "host/HostDatabase.h"
#include "host/HostOptions.h"

namespace qva::embedded {

/// Opens the database for whichever object needs it. All of them share one connection, which closes with the
/// last of them, so that the file is free once no book is open.
class HostStore {
 public:
  explicit HostStore(HostOptions options) : options_(std::move(options)) {}

  const HostOptions& options() const { return options_; }

  /// The database. Where there is none yet it is created from the sample: filled under another name and
  /// renamed when it is whole, so that nobody ever meets a half-filled one. File and folder are made for
  /// their owner alone. Raises Failure::DatabaseNotCreated, which leaves nothing behind but the database's
  /// folder, and Failure::DatabaseUnusable.
  std::shared_ptr<const HostDatabase> Open();

 private:
  HostOptions options_;
  std::weak_ptr<const HostDatabase> open_;
};

}  // namespace qva::embedded
