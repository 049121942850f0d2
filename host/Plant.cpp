#include "host/Plant.h"

#include "host/HostError.h"

namespace qva::embedded {

ClassBuilder Plant::Describe() {
  return ClassBuilder(u"Plant", "The host's plant object")
      .Method<&Plant::Init>(u"Init", {{u"Book"}}, "Gives it its book")
      .Get<&Plant::Book>(u"Book", {}, "The book that Init gave");
}

void Plant::Init(ObjectPtr book) {
  if (!book) throw HostError(Failure::WrongParameters, kCommonLibrary, u"Plant.Init needs a book");
  book_ = std::move(book);
}

ObjectPtr Plant::Book() const {
  if (!book_) {
    throw HostError(Failure::NotInitialised, kCommonLibrary, u"Plant was used before Plant.Init");
  }
  return book_;
}

}  // namespace qva::embedded
