#include "period/BookCache.h"

#include "platform/services.h"

namespace qva {

host::Book BookCache::Get(std::u16string_view code) {
  if (code.empty()) return {};
  for (const host::Book& book : books_) {
    if (book.BookCode() == code) return book;
  }
  books_.push_back(host::CommonObjects::Create(*GetServices().object_factory).CreateBook(code));
  return books_.back();
}

}  // namespace qva
