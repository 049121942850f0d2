// The registry's file: what nobody changes stays as it stands, and what is written can be read back.
#include "platform/posix/RegistryText.h"

#include <algorithm>

#include "platform/registry.h"
#include "tests/fuzz/fuzz.h"

namespace qva {
namespace {

/// A key or name as the registry takes it: well formed, without control characters.
std::u16string NameFrom(FuzzInput& input) {
  std::u16string name = FromUtf8(ToUtf8(TextFrom(input, 20)));
  std::erase_if(name, [](char16_t c) { return c < 0x20 || c == 0x7F; });
  return name;
}

RegistryData DataFrom(FuzzInput& input) {
  RegistryData data{.type = input.ConsumeIntegralInRange<std::uint32_t>(0, 12)};
  if (IsRegistryText(data.type)) {
    data.text = TextFrom(input, 100) + u'\0';
  } else {
    data.bytes = input.ConsumeRandomLengthString(100);
  }
  return data;
}

bool Holds(const RegistryText& registry, std::u16string_view key, std::u16string_view name,
           const RegistryData& data) {
  const RegistryData* found = registry.Find(key, name);
  return found && *found == data;
}

void Change(RegistryText& registry, FuzzInput& input) {
  constexpr std::u16string_view kUntouched = u"HKEY_CURRENT_USER\\Kita";
  const RegistryData untouched{.type = kRegSz, .text = std::u16string(u"a;\"\\]\0", 6)};
  registry.Set(kUntouched, u"]=", untouched);
  while (input.remaining_bytes() > 0) {
    const std::u16string key =
        u"HKEY_CURRENT_USER\\" + (input.ConsumeBool() ? u"Environment" : NameFrom(input) + u"x");
    const std::u16string name = NameFrom(input);
    const bool deletes = input.ConsumeBool();
    const RegistryData data = DataFrom(input);
    if (deletes) {
      registry.Delete(key, name);
    } else {
      registry.Set(key, name, data);
    }
    const auto again = RegistryText::Parse(registry.Utf8());
    Require(again.has_value(), "a changed file can be read");
    const RegistryText* const both[] = {&registry, &*again};
    for (const RegistryText* there : both) {
      Require(deletes ? !there->Find(key, name) : Holds(*there, key, name, data), "a change is there");
      Require(deletes || there->HasKey(key), "a value has its key");
      Require(Holds(*there, kUntouched, u"]=", untouched), "other values stay");
    }
  }
}

}  // namespace
}  // namespace qva

/// The file up to a null character, and changes behind it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace qva;
  const std::string_view all = AsText(data, size);
  const std::string_view file = all.substr(0, all.find('\0'));
  int wrong_line = 0;
  auto registry = RegistryText::Parse(file, &wrong_line);
  if (!registry) {
    Require(wrong_line >= 1 && wrong_line <= 1 + std::ranges::count(file, '\n'), "the mistake has a line");
    return 0;
  }
  const std::string written = registry->Utf8();
  Require(written.starts_with(file) && (file.empty() || written.size() <= file.size() + 2),
          "nothing is lost");
  const std::size_t read = std::min(file.size() + 1, size);
  FuzzInput input(data + read, size - read);
  Change(*registry, input);
  return 0;
}
