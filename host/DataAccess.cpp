#include "host/DataAccess.h"

#include "host/Book.h"
#include "host/HostError.h"
#include "platform/host.h"
#include "platform/text.h"

namespace qva::embedded {

ClassBuilder PathKeyLookup::Describe() {
  return ClassBuilder(u"Lookup", "A lookup of the host's data")
      .Method<&PathKeyLookup::Run>(u"Run", {{u"Parameters"}}, "Looks a list of parameters up")
      .Get<&PathKeyLookup::Folder>(u"Value", {}, "What the last Run found");
}

bool PathKeyLookup::Run(Value parameters) {
  const Array& list = parameters.ToArray();
  if (list.dimensions.size() != 1 || list.elements.size() != 1) {
    throw HostError(Failure::WrongParameters, kCommonLibrary,
                    u"The lookup \"PathKey\" takes a list of one parameter, the path key");
  }
  const std::optional<std::u16string> folder =
      database_->FindFolder(list.elements.front().ToText(), book_code_);
  has_run_ = true;
  folder_ = folder.value_or(u"");
  return folder.has_value();
}

std::u16string PathKeyLookup::Folder() const {
  if (!has_run_) {
    throw HostError(Failure::NotInitialised, kCommonLibrary, u"Lookup.Value was read before Lookup.Run");
  }
  return folder_;
}

ClassBuilder DataAccess::Describe() {
  return ClassBuilder(u"DataAccess", "The host's data access")
      .Get<&DataAccess::Lookup>(u"Lookup", {{u"Name"}, Optional(u"Book")}, "The lookup of a name");
}

Ref<PathKeyLookup> DataAccess::Lookup(std::u16string name, ObjectPtr book) const {
  if (!EqualIgnoringCase(name, host::kPathKeyLookup)) {
    throw HostError(Failure::UnknownLookup, kCommonLibrary, u"There is no lookup \"" + name + u"\"");
  }
  std::u16string book_code = book ? CodeOfBook(book, kCommonLibrary, u"DataAccess.Lookup") : std::u16string();
  return MakeRef<PathKeyLookup>(store_->Open(), std::move(book_code));
}

}  // namespace qva::embedded
