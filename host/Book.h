// The host's open book: one company's books.
#pragma once

#include <memory>

#include "host/HostDatabase.h"
#include "host/Table.h"
#include "platform/member_table.h"

namespace qva::embedded {

class Book : public Described<Book> {
 public:
  static ClassBuilder Describe();
  Book(BookRow row, std::shared_ptr<const HostDatabase> database)
      : row_(std::move(row)), database_(std::move(database)) {}

  std::u16string BookCode() const { return row_.code; }
  std::u16string Name() const { return row_.name; }
  /// The table of a name in any letter case. Raises Failure::UnknownTable.
  Ref<embedded::Table> Table(std::u16string name) const;

 private:
  BookRow row_;
  std::shared_ptr<const HostDatabase> database_;  ///< the connection stays open while a book is
};

/// The code of a book that was given to a member of a component; `member` names it in the error.
/// Raises Failure::WrongParameters for no book, and what the book raises.
std::u16string CodeOfBook(const ObjectPtr& book, std::u16string_view source, std::u16string_view member);

}  // namespace qva::embedded
