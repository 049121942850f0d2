// The host's common object: opens books.
#pragma once

#include <memory>

#include "host/Book.h"
#include "host/HostStore.h"

namespace qva::embedded {

class CommonObjects : public Described<CommonObjects> {
 public:
  static ClassBuilder Describe();
  explicit CommonObjects(std::shared_ptr<HostStore> store) : store_(std::move(store)) {}

  /// Opens the book of a code, creating the sample database on first use. Raises Failure::UnknownBook and
  /// what HostStore::Open raises.
  Ref<Book> CreateBook(std::u16string book_code);
  /// The table of all books. Raises what HostStore::Open raises.
  Ref<Table> Books();

 private:
  std::shared_ptr<HostStore> store_;
};

}  // namespace qva::embedded
