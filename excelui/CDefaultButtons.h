// The default buttons of every report toolbar.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "excelui/CButtonProperties.h"
#include "excelui/ConnectedExcel.h"
#include "platform/excel.h"
#include "platform/member_table.h"

namespace qva {

inline constexpr std::size_t kDefaultButtonCount = 7;

/// Adds the seven default buttons to a bar and finds them again: comment indicators, freeze panes, print,
/// print preview, a combo box, go to Excel and help. Takes their captions from the host when it is created
/// (and then raises what the host's resource object raises).
class CDefaultButtons : public Described<CDefaultButtons> {
 public:
  static ClassBuilder Describe();

  CDefaultButtons() : CDefaultButtons(ConnectedExcel()) {}
  explicit CDefaultButtons(ConnectedExcel excel);

  /// Appends the buttons to the list and puts each on the bar, at the position that it has in the list.
  /// Raises whatever Excel raises, and 6 (Overflow) beyond 255 buttons; the buttons before stay.
  void AddButtons();

  // The position on the bar, 0 when the button is not there. Print and print preview are found as Excel's own
  // controls: a button of the settings sheet that is the same control and comes earlier is found instead.
  std::int32_t cmdIndexComment() const { return IndexOf(u"Tag", u"TagComment"); }
  std::int32_t cmdIndexFreeze() const { return IndexOf(u"Tag", u"TagFreeze"); }
  std::int32_t cmdIndexPrintP() const { return IndexOf(u"Id", kPrintPreviewControl); }
  std::int32_t cmdIndexPrint() const { return IndexOf(u"Id", kPrintControl); }
  std::int32_t cmdIndexExcel() const { return IndexOf(u"Tag", u"TagExcel"); }
  std::int32_t cmdIndexHelp() const { return IndexOf(u"Tag", u"TagHelp"); }

  /// Takes the settings sheet (whose workbook runs the macros), the bar and the list of its buttons.
  void Init(excel::Worksheet pwsSeting, excel::CommandBar pCmdBar, Ref<CButtonProperties> pBProperties);

  static constexpr std::int32_t kPrintControl = 2521;
  static constexpr std::int32_t kPrintPreviewControl = 109;

 private:
  /// The bar to call on, which lasts as long as the call: what that sets off in Excel may reach Init.
  excel::CommandBar Bar() const { return bar_; }
  std::int32_t IndexOf(std::u16string_view property, Value value) const;

  ConnectedExcel excel_;
  excel::Worksheet sheet_;
  excel::CommandBar bar_;
  Ref<CButtonProperties> buttons_;
  std::array<std::u16string, kDefaultButtonCount> captions_;
};

}  // namespace qva
