// The list of a toolbar's buttons.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/member_table.h"

namespace qva {

/// One button as the settings sheet describes it.
struct ButtonEntry {
  std::u16string caption;
  std::u16string tooltip_text;
  std::u16string picture;    ///< name of a shape on the settings sheet, used when face_id is 0
  std::int32_t id = 0;       ///< Excel's built-in control
  std::int32_t face_id = 0;  ///< Excel's built-in face; 0 takes the face from the picture
  std::u16string tag;        ///< the default buttons are found by it
  std::u16string on_key;     ///< key code for Application.OnKey; empty for no hot key
  bool visible = false;
  std::u16string on_action;  ///< workbook name, "!" and macro name
  bool begin_group = false;  ///< a separator stands before the button
};

/// The buttons, numbered from 1. Every index outside the list raises 9 (Subscript out of range).
class CButtonProperties : public Described<CButtonProperties> {
 public:
  static ClassBuilder Describe();

  /// The last button's number, 0 for an empty list.
  std::uint8_t TotalButtons() const { return static_cast<std::uint8_t>(buttons_.size()); }
  /// Counts `i` buttons more and sizes the list to the count, keeping what it holds. Raises 6 (Overflow)
  /// above 255. Whatever it raises, everything is as it was.
  void Add(std::uint8_t i);
  /// Empties the list but keeps the count, on purpose: a later Add(n) sizes the list to the old count plus n.
  void Reset() { buttons_.clear(); }

  /// The button of a number.
  ButtonEntry& Button(std::uint8_t i);

 private:
  /// The get and let of one column of the list.
  template <auto F>
  auto Field(std::uint8_t i) {
    return Button(i).*F;
  }
  template <auto F, class T = std::remove_cvref_t<decltype(std::declval<ButtonEntry>().*F)>>
  void SetField(std::uint8_t i, T value) {
    Button(i).*F = std::move(value);
  }

  template <auto F>
  static void AddField(ClassBuilder& builder, std::u16string_view name, std::string_view help) {
    builder.Property<&CButtonProperties::Field<F>, &CButtonProperties::SetField<F>>(name, {{u"i"}}, help);
  }

  std::vector<ButtonEntry> buttons_;
  std::uint8_t count_ = 0;
};

}  // namespace qva
