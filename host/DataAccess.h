// The host's data access and its lookups.
#pragma once

#include <memory>

#include "host/HostStore.h"
#include "platform/member_table.h"

namespace qva::embedded {

/// The lookup "PathKey": the folder that the host stores under a path key.
class PathKeyLookup : public Described<PathKeyLookup> {
 public:
  static ClassBuilder Describe();
  PathKeyLookup(std::shared_ptr<const HostDatabase> database, std::u16string book_code)
      : database_(std::move(database)), book_code_(std::move(book_code)) {}

  /// Looks the one element of the array, a path key, up; true when it has a folder. Raises 13 for anything
  /// but an array and Failure::WrongParameters for another number of elements.
  bool Run(Value parameters);
  /// The folder that the last Run found, empty when it found none. Raises Failure::NotInitialised before.
  std::u16string Folder() const;

 private:
  std::shared_ptr<const HostDatabase> database_;
  std::u16string book_code_;  ///< empty for the common data
  bool has_run_ = false;
  std::u16string folder_;
};

class DataAccess : public Described<DataAccess> {
 public:
  static ClassBuilder Describe();
  explicit DataAccess(std::shared_ptr<HostStore> store) : store_(std::move(store)) {}

  /// The lookup of a name (any letter case; "PathKey" is the one there is) on a book or, without one, on the
  /// common data. Raises Failure::UnknownLookup and what HostStore::Open raises.
  Ref<PathKeyLookup> Lookup(std::u16string name, ObjectPtr book) const;

 private:
  std::shared_ptr<HostStore> store_;
};

}  // namespace qva::embedded
