// Command bars as LibreOffice's toolbars and menu bar.
#pragma once

#include <com/sun/star/container/XIndexContainer.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XLayoutManager2.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/graphic/XGraphic.hpp>
#include <com/sun/star/ui/XUIConfigurationManager.hpp>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/calc/Uno.h"
#include "platform/commandbars/CommandBarData.h"

namespace qva::calc {

/// Shows the bars of one document in its windows. All that is set up for it belongs to the document in memory
/// and goes with it: neither the user's settings nor the document's file ever get anything of it.
///
/// A bar of a macro's is a toolbar, or the menu bar while one that is a menu bar is visible. Controls that
/// were added to Excel's worksheet menu bar come behind LibreOffice's own menus, each in a menu. Excel's bars
/// "Standard", "Formatting" and "Worksheet Menu Bar" stand for LibreOffice's own, which are hidden while
/// those are not visible.
class BarDisplay {
 public:
  explicit BarDisplay(const Reference<css::frame::XModel>& document) : document_(document) {}

  /// Makes the document's windows show what the bars are now. Raises css::uno::Exception where LibreOffice
  /// refuses.
  void Show(const commandbars::CommandBarApplication& bars,
            const std::vector<Reference<css::frame::XFrame>>& frames);

  /// The command of a control (BarCommands), and the control of a command; null for any other one.
  static OUString CommandOf(const commandbars::CommandBarControlData& control);
  static std::shared_ptr<commandbars::CommandBarControlData> ControlOf(
      const commandbars::CommandBarApplication& bars, const OUString& command);

  /// A picture that a button may show from now on as its face, by a name; gives the name.
  std::u16string AddPicture(std::u16string_view name, const Reference<css::graphic::XGraphic>& picture);

 private:
  /// An entry of a toolbar or menu bar; without a command, a line between groups.
  struct Item {
    OUString command;
    OUString label;
    OUString tooltip;
    sal_Int16 style = 0;

    friend bool operator==(const Item&, const Item&) = default;
  };
  /// A toolbar or menu bar as it was last set up.
  struct Shown {
    OUString title;
    std::vector<Item> items;
    std::int32_t position = 0;

    friend bool operator==(const Shown&, const Shown&) = default;
  };

  /// One of the document's windows.
  struct Window {
    Reference<css::frame::XFrame> frame;
    Reference<css::frame::XLayoutManager2> layout;
    std::map<OUString, std::int32_t> positions;  ///< of the toolbars that we put there, by resource
    std::set<OUString> hidden;                   ///< LibreOffice's own bars that we hid
  };

  void FindWindows(const std::vector<Reference<css::frame::XFrame>>& frames);
  static Shown Describe(const commandbars::CommandBarData& bar);
  static std::vector<Item> ItemsOf(const commandbars::CommandBarData& bar, bool is_menu);
  void ShowToolbar(const OUString& resource, const Shown& toolbar);
  static void ShowIn(Window& window, const OUString& resource, std::int32_t position);
  static void Place(Window& window, const OUString& resource, std::int32_t position);
  void RemoveToolbar(const OUString& resource);
  void ShowMenuBar(const commandbars::CommandBarApplication& bars);
  void ShowOwnBars(Window& window, const commandbars::CommandBarApplication& bars) const;
  void SetFaces(const commandbars::CommandBarApplication& bars);
  void Fill(const Reference<css::container::XIndexContainer>& settings, const std::vector<Item>& items);
  /// LibreOffice runs no command that stands on a menu bar itself: each gets a menu of its own.
  void FillMenuBar(const Reference<css::container::XIndexContainer>& settings,
                   const std::vector<Item>& items);
  void Configure(const OUString& resource, const Reference<css::container::XIndexContainer>& settings);

  Reference<css::frame::XModel> document_;
  std::vector<Window> windows_;
  Reference<css::ui::XUIConfigurationManager> configuration_;

  std::map<OUString, Shown> toolbars_;        ///< by resource
  Shown menu_bar_;                            ///< without items: LibreOffice's own
  std::map<OUString, std::u16string> faces_;  ///< by command: what its icon shows
  std::map<std::u16string, Reference<css::graphic::XGraphic>> pictures_;
};

}  // namespace qva::calc
