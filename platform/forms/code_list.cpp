#include "platform/forms/code_list.h"

#include <algorithm>

#include "platform/text.h"

namespace qva {

using Item = ui::ComboBox::Item;

std::u16string CodeList::Shown(const Item& item) {
  return item.text.empty() ? item.code : item.code + u" – " + item.text;
}

std::u16string CodeList::Shown(std::u16string_view code) const {
  const auto item = std::ranges::find(items_, code, &Item::code);
  return item == items_.end() ? std::u16string(code) : Shown(*item);
}

std::u16string CodeList::CodeOf(std::u16string_view shown) const {
  const auto item = std::ranges::find_if(items_, [&](const Item& each) { return Shown(each) == shown; });
  return item == items_.end() ? std::u16string(Trim(shown)) : item->code;
}

}  // namespace qva
