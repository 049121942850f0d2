// The host's resource file: what was read, written out, reads the same; anything else is malformed.
#include "host/ResourceFile.h"

#include "host/HostError.h"
#include "tests/fuzz/fuzz.h"

namespace qva::embedded {
namespace {

constexpr std::int32_t kMalformed = kObjectErrorBase + static_cast<std::int32_t>(Failure::MalformedResource);

std::string Written(const ResourceTexts& texts) {
  std::string file;
  for (const auto& [number, text] : texts) {
    const std::u16string escaped = ReplaceAll(ReplaceAll(text, u"\\", u"\\\\"), u"\n", u"\\n");
    file += std::to_string(number) + "\t" + ToUtf8(escaped) + "\r\n";
  }
  return file;
}

}  // namespace
}  // namespace qva::embedded

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace qva;
  using namespace qva::embedded;
  ResourceTexts texts;
  const std::int32_t error = RaisedBy([&] { texts = ParseResource(AsText(data, size), u"QVAFormRes"); });
  Require(error == 0 || error == kMalformed, "a file that cannot be read is malformed");
  for (const auto& [number, text] : texts) Require(number >= 1 && !text.empty(), "numbers from 1 have texts");
  Require(RaisedBy([&] { Require(ParseResource(Written(texts), u"") == texts, "texts survive"); }) == 0,
          "what was read can be read again");
  const std::u16string any = FromUtf8(AsText(data, size));
  if (any.find(u'\uFFFD') != any.npos) return 0;
  const ResourceTexts made{{1, u"a" + any + u"b"}};
  Require(ParseResource(Written(made), u"") == made, "any text can be written");
  return 0;
}
