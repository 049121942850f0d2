#include "period/BookCache.h"

#include "platform/services.h"

namespace qva {

host::Book BookCache::Get(std::u16string_view code) {
  if (code.empty()) return {};
  for (const host::Book& book : books_) {
    if (book.BookCode() == code) return book;
  }
  host::Book book = host::CommonObjects::Create(*GetServices().object_factory).CreateBook(code);
  if (book) books_.push_back(book);
  return book;
}

}  // namespace qva
