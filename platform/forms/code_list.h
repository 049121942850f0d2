// The list of a combo box: codes with a text each, and what the field makes of either.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.h"

namespace qva {

class CodeList {
 public:
  void SetItems(std::vector<ui::ComboBox::Item> items) { items_ = std::move(items); }
  const std::vector<ui::ComboBox::Item>& items() const { return items_; }

  /// What list and field show for an item: its code and its text.
  static std::u16string Shown(const ui::ComboBox::Item& item);
  /// What the field shows for a code; one that is no item's stands there as it is.
  std::u16string Shown(std::u16string_view code) const;
  /// The code of what stands in the field: an item's, or what was typed, without the spaces around it.
  std::u16string CodeOf(std::u16string_view shown) const;

 private:
  std::vector<ui::ComboBox::Item> items_;
};

}  // namespace qva
