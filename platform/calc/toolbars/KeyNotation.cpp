#include "platform/calc/toolbars/KeyNotation.h"

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>

#include "platform/text.h"

namespace qva::calc {
namespace {

namespace Key = css::awt::Key;
namespace KeyModifier = css::awt::KeyModifier;

struct NamedKey {
  std::u16string_view name;
  sal_Int16 code;
};

/// A key that LibreOffice binds no command to.
constexpr sal_Int16 kUnbound = 0;

constexpr NamedKey kNamedKeys[] = {
    {u"BACKSPACE", Key::BACKSPACE}, {u"BS", Key::BACKSPACE},  {u"BREAK", kUnbound},
    {u"CAPSLOCK", kUnbound},        {u"CLEAR", kUnbound},     {u"DELETE", Key::DELETE},
    {u"DEL", Key::DELETE},          {u"DOWN", Key::DOWN},     {u"END", Key::END},
    {u"ENTER", Key::RETURN},        {u"RETURN", Key::RETURN}, {u"ESCAPE", Key::ESCAPE},
    {u"ESC", Key::ESCAPE},          {u"HELP", Key::HELP},     {u"HOME", Key::HOME},
    {u"INSERT", Key::INSERT},       {u"LEFT", Key::LEFT},     {u"NUMLOCK", kUnbound},
    {u"PGDN", Key::PAGEDOWN},       {u"PGUP", Key::PAGEUP},   {u"RIGHT", Key::RIGHT},
    {u"SCROLLLOCK", kUnbound},      {u"TAB", Key::TAB},       {u"UP", Key::UP},
};

constexpr int kFunctionKeys = 15;

/// Nothing for what is no key.
std::optional<sal_Int16> CodeOf(std::u16string_view name) {
  if (name.size() == 1) {
    const char16_t c = ToLower(name)[0];
    if (c >= u'a' && c <= u'z') return static_cast<sal_Int16>(Key::A + (c - u'a'));
    if (IsDigit(c)) return static_cast<sal_Int16>(Key::NUM0 + (c - u'0'));
    return kUnbound;
  }
  for (const NamedKey& key : kNamedKeys) {
    if (EqualIgnoringCase(key.name, name)) return key.code;
  }
  for (int number = 1; number <= kFunctionKeys; ++number) {
    if (EqualIgnoringCase(u"F" + NumberText(number), name))
      return static_cast<sal_Int16>(Key::F1 + number - 1);
  }
  return std::nullopt;
}

}  // namespace

std::optional<css::awt::KeyEvent> ParseKey(std::u16string_view notation) {
  css::awt::KeyEvent key;
  for (; notation.size() > 1; notation.remove_prefix(1)) {
    const char16_t c = notation.front();
    const sal_Int16 modifier = c == u'^'   ? KeyModifier::MOD1
                               : c == u'+' ? KeyModifier::SHIFT
                               : c == u'%' ? KeyModifier::MOD2
                                           : sal_Int16{0};
    if (modifier == 0) break;
    key.Modifiers = static_cast<sal_Int16>(key.Modifiers | modifier);
  }
  const bool is_enter = notation == u"~";
  if (notation.size() > 2 && notation.front() == u'{' && notation.back() == u'}') {
    notation = notation.substr(1, notation.size() - 2);
  }
  const std::optional<sal_Int16> code = is_enter ? Key::RETURN : CodeOf(notation);
  if (!code) return std::nullopt;
  key.KeyCode = *code;
  return key;
}

}  // namespace qva::calc
