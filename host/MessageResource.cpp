#include "host/MessageResource.h"

#include <algorithm>

#include "host/HostError.h"
#include "host/ReadFile.h"
#include "platform/text.h"

namespace qva::embedded {
namespace {

/// A name that cannot lead out of the folder of the resource libraries.
bool IsLibraryName(std::u16string_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(),
                                      [](char16_t c) { return IsBasicLetter(c) || IsDigit(c) || c == u'_'; });
}

}  // namespace

ClassBuilder MessageResource::Describe() {
  return ClassBuilder(u"MessageResource", "The host's texts by number")
      .Method<&MessageResource::Init>(u"Init", {{u"Library"}}, "Takes the texts from a resource library")
      .Get<&MessageResource::Text>(u"Text", {{u"Number"}}, "The text of a number");
}

void MessageResource::Init(std::u16string library) {
  if (!IsLibraryName(library)) {
    throw HostError(Failure::NoResourceLibrary, kMessageLibrary,
                    u"There is no resource library \"" + library + u"\"");
  }
  const std::filesystem::path file = folder_ / (ToUtf8(library) + ".txt");
  const std::optional<std::string> bytes = ReadFile(file);
  if (!bytes) {
    throw HostError(
        Failure::NoResourceLibrary, kMessageLibrary,
        u"The resource library \"" + library + u"\" cannot be read from \"" + PathText(file) + u"\"");
  }
  texts_ = ParseResource(*bytes, library);
  library_ = std::move(library);
}

std::u16string MessageResource::Text(std::int32_t number) const {
  if (!texts_) {
    throw HostError(Failure::NotInitialised, kMessageLibrary,
                    u"MessageResource.Text was read before MessageResource.Init");
  }
  const auto found = texts_->find(number);
  if (found == texts_->end()) {
    throw AutomationError(
        kSubscriptOutOfRange, std::u16string(kMessageLibrary),
        u"The resource library \"" + library_ + u"\" has no text of the number " + NumberText(number));
  }
  return found->second;
}

}  // namespace qva::embedded
