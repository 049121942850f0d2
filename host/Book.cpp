#include "host/Book.h"

#include "host/HostError.h"
#include "platform/host.h"

namespace qva::embedded {

ClassBuilder Book::Describe() {
  return ClassBuilder(u"Book", "One company's books")
      .Get<&Book::BookCode>(u"BookCode", {}, "The code that names the book")
      .Get<&Book::Name>(u"Name", {}, "The book's name")
      .Get<&Book::Table>(u"Table", {{u"Name"}}, "The table of a name")
      .Default(u"BookCode");
}

Ref<Table> Book::Table(std::u16string name) const {
  const TableReader* reader = database_->FindTable(name);
  if (!reader) throw HostError(Failure::UnknownTable, kCommonLibrary, u"There is no table \"" + name + u"\"");
  return MakeRef<embedded::Table>(*reader, row_.code, database_);
}

std::u16string CodeOfBook(const ObjectPtr& book, std::u16string_view source, std::u16string_view member) {
  if (!book) {
    throw HostError(Failure::WrongParameters, source, std::u16string(member) + u" needs a book");
  }
  // Asked through automation, since the book may come back from a caller inside a wrapper of its own.
  return host::Book(book).BookCode();
}

}  // namespace qva::embedded
