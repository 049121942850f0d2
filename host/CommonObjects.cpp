#include "host/CommonObjects.h"

#include "host/HostError.h"
#include "host/ReadFile.h"
#include "platform/host.h"

namespace qva::embedded {

ClassBuilder CommonObjects::Describe() {
  return ClassBuilder(u"CommonObjects", "The host's common object")
      .Method<&CommonObjects::CreateBook>(u"CreateBook", {{u"BookCode"}}, "Opens a book")
      .Get<&CommonObjects::Books>(u"Books", {}, "The table of all books");
}

Ref<Book> CommonObjects::CreateBook(std::u16string book_code) {
  auto database = store_->Open();
  std::optional<BookRow> row = database->FindBook(book_code);
  if (!row) {
    throw HostError(Failure::UnknownBook, kCommonLibrary,
                    u"There is no book \"" + book_code + u"\" in the host database \"" +
                        PathText(store_->options().database) + u"\"");
  }
  return MakeRef<Book>(std::move(*row), std::move(database));
}

Ref<Table> CommonObjects::Books() {
  auto database = store_->Open();
  const TableReader& reader = *database->FindTable(host::kBookTable);
  return MakeRef<Table>(reader, std::u16string(), std::move(database));
}

}  // namespace qva::embedded
