// Excel's notation of keys: modifiers add up, letter case and braces around a name change nothing.
#include "platform/calc/toolbars/KeyNotation.h"

#include <com/sun/star/awt/KeyModifier.hpp>

#include "tests/fuzz/fuzz.h"

namespace qva::calc {
namespace {

namespace Modifier = css::awt::KeyModifier;

bool IsModifier(char16_t c) {
  return c == u'^' || c == u'+' || c == u'%';
}

/// Whether both texts mean the same key, the second one with more modifiers.
bool IsSame(std::u16string_view one, std::u16string_view other, sal_Int16 more_modifiers = 0) {
  const auto key = ParseKey(one);
  const auto other_key = ParseKey(other);
  if (!key || !other_key) return !key && !other_key;
  return key->KeyCode == other_key->KeyCode && (key->Modifiers | more_modifiers) == other_key->Modifiers;
}

}  // namespace
}  // namespace qva::calc

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace qva;
  using namespace qva::calc;
  const std::u16string notation = FromUtf8(AsText(data, size));
  constexpr sal_Int16 kModifiers = Modifier::SHIFT | Modifier::MOD1 | Modifier::MOD2;
  if (const auto key = ParseKey(notation)) {
    Require((key->Modifiers & ~kModifiers) == 0, "there are three modifiers");
    Require(key->KeyCode >= 0, "a key has a code or 0");
  }
  Require(IsSame(notation, ToLower(notation)), "letter case does not count");
  if (notation.empty()) return 0;
  Require(IsSame(notation, u"^" + notation, Modifier::MOD1), "^ is Ctrl");
  Require(IsSame(notation, u"+" + notation, Modifier::SHIFT), "+ is Shift");
  Require(IsSame(notation, u"%" + notation, Modifier::MOD2), "% is Alt");
  if (notation == u"~") Require(ParseKey(u"{~}")->KeyCode == 0, "a sign in braces is that sign");
  const bool is_special = IsModifier(notation[0]) || notation[0] == u'{' || notation[0] == u'~';
  if (!is_special) Require(IsSame(notation, u"{" + notation + u"}"), "braces do not count");
  return 0;
}
