#include "platform/calc/toolbars/BarDisplay.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/ui/DockingArea.hpp>
#include <com/sun/star/ui/ItemStyle.hpp>
#include <com/sun/star/ui/ItemType.hpp>
#include <com/sun/star/ui/XImageManager.hpp>
#include <com/sun/star/ui/XUIConfigurationManagerSupplier.hpp>
#include <com/sun/star/ui/XUIElement.hpp>
#include <com/sun/star/ui/theModuleUIConfigurationManagerSupplier.hpp>

#include "platform/calc/UnoText.h"
#include "platform/calc/UnoValue.h"
#include "platform/calc/toolbars/BarCommands.h"
#include "platform/calc/toolbars/Faces.h"
#include "platform/text.h"

namespace qva::calc {
namespace {

using commandbars::CommandBarApplication;
using commandbars::CommandBarControlData;
using commandbars::CommandBarData;

constexpr std::u16string_view kWorksheetMenuBar = u"Worksheet Menu Bar";
constexpr char kMenuBar[] = "private:resource/menubar/menubar";
/// Not "custom_…": LibreOffice would show such a bar at once and write its place into the user's settings.
constexpr char kToolbar[] = "private:resource/toolbar/qva_varnholt_";
/// Behind a control's command: the name of the menu that it stands in.
constexpr char kMenuOf[] = "-menu";

/// LibreOffice's bar in the place of one of Excel's.
struct OwnBar {
  std::u16string_view name;
  const char* resource;
};
constexpr OwnBar kOwnBars[] = {
    {u"Standard", "private:resource/toolbar/standardbar"},
    {u"Formatting", "private:resource/toolbar/formatobjectbar"},
    {kWorksheetMenuBar, "private:resource/menubar/menubar"},
};

constexpr sal_Int32 kRowOfItsOwn = 10;  ///< beyond the rows that LibreOffice's own toolbars take

bool IsVisible(const CommandBarData& bar) {
  return bar.enabled && bar.visible;
}

/// A caption as LibreOffice writes it: "~" in front of the letter that "&" marks.
OUString Label(std::u16string_view caption) {
  std::u16string label;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    const bool is_mark = caption[i] == u'&';
    if (is_mark && i + 1 < caption.size() && caption[i + 1] == u'&')
      ++i;
    else if (is_mark) {
      label += u'~';
      continue;
    }
    label += caption[i];
  }
  return ToUno(label);
}

template <class T>
css::beans::PropertyValue Property(const char* name, const T& value) {
  css::beans::PropertyValue property;
  property.Name = OUString::createFromAscii(name);
  property.Value <<= value;
  return property;
}

/// What LibreOffice writes down of an element's place and visibility, it writes while this is set.
void SetPersistent(const Reference<css::ui::XUIElement>& element, bool on) {
  const Reference<css::beans::XPropertySet> properties(element, UNO_QUERY);
  if (properties.is()) properties->setPropertyValue("Persistent", Any(on));
}

/// What decides on a button's icon; empty for none.
std::u16string FaceOf(const CommandBarControlData& control) {
  if (!control.pasted_face.empty()) return control.pasted_face;
  return control.face_id != 0 ? NumberText(control.face_id) : std::u16string();
}

/// What Excel's own bars hold of Excel's stands for LibreOffice's own, and is not shown.
bool IsShown(const CommandBarData& bar, const CommandBarControlData& control) {
  return !bar.built_in || control.id == 1;
}

template <class Visit>
void ForEachControl(const CommandBarApplication& bars, Visit visit) {
  for (const auto& bar : bars.command_bars) {
    for (const auto& control : bar->controls) {
      if (IsShown(*bar, *control)) visit(control);
    }
  }
}

}  // namespace

OUString BarDisplay::CommandOf(const CommandBarControlData& control) {
  return OUString(BarCommands::kProtocol) + OUString::number(control.instance_id);
}

std::shared_ptr<CommandBarControlData> BarDisplay::ControlOf(const CommandBarApplication& bars,
                                                             const OUString& command) {
  std::shared_ptr<CommandBarControlData> found;
  ForEachControl(bars, [&](const auto& control) {
    if (CommandOf(*control) == command) found = control;
  });
  return found;
}

std::u16string BarDisplay::AddPicture(std::u16string_view name,
                                      const Reference<css::graphic::XGraphic>& picture) {
  std::u16string key = std::u16string(name) + u'#' + NumberText(static_cast<long long>(pictures_.size()));
  pictures_[key] = picture;
  return key;
}

void BarDisplay::FindWindows(const std::vector<Reference<css::frame::XFrame>>& frames) {
  std::vector<Window> windows;
  for (const Reference<css::frame::XFrame>& frame : frames) {
    const auto known = std::ranges::find(windows_, frame, &Window::frame);
    Window& window = windows.emplace_back(known != windows_.end() ? *known : Window{frame, {}, {}, {}});
    window.layout.set(
        Reference<css::beans::XPropertySet>(frame, UNO_QUERY_THROW)->getPropertyValue("LayoutManager"),
        UNO_QUERY_THROW);
  }
  windows_ = std::move(windows);
}

void BarDisplay::Show(const CommandBarApplication& bars,
                      const std::vector<Reference<css::frame::XFrame>>& frames) {
  FindWindows(frames);
  if (windows_.empty()) return;
  configuration_ = Reference<css::ui::XUIConfigurationManagerSupplier>(document_, UNO_QUERY_THROW)
                       ->getUIConfigurationManager();

  SetFaces(bars);
  std::map<OUString, Shown> wanted;
  for (const auto& bar : bars.command_bars) {
    if (bar->built_in || bar->is_menu_bar || !IsVisible(*bar)) continue;
    wanted[OUString(kToolbar) + OUString::number(bar->instance_id)] = Describe(*bar);
  }
  const std::map<OUString, Shown> before = toolbars_;
  for (const auto& [resource, toolbar] : before) {
    if (!wanted.contains(resource)) RemoveToolbar(resource);
  }
  for (const auto& [resource, toolbar] : wanted) ShowToolbar(resource, toolbar);
  ShowMenuBar(bars);
  for (Window& window : windows_) ShowOwnBars(window, bars);
}

BarDisplay::Shown BarDisplay::Describe(const CommandBarData& bar) {
  return {ToUno(bar.name), ItemsOf(bar, false), bar.position};
}

std::vector<BarDisplay::Item> BarDisplay::ItemsOf(const CommandBarData& bar, bool is_menu) {
  std::vector<Item> items;
  for (const auto& control : bar.controls) {
    if (!control->visible || !IsShown(bar, *control)) continue;
    if (control->begin_group && !items.empty() && !is_menu) items.emplace_back();
    sal_Int16 style = 0;
    if (!is_menu) {
      style = control->style == msoButtonCaption ? css::ui::ItemStyle::TEXT : css::ui::ItemStyle::ICON;
      if (control->style == msoButtonIconAndCaption) style |= css::ui::ItemStyle::TEXT;
    }
    items.push_back({CommandOf(*control), Label(control->caption),
                     ToUno(control->tooltip.empty() ? control->caption : control->tooltip), style});
  }
  return items;
}

void BarDisplay::ShowToolbar(const OUString& resource, const Shown& toolbar) {
  const auto known = toolbars_.find(resource);
  if (known == toolbars_.end() || !(known->second == toolbar)) {
    const Reference<css::container::XIndexContainer> settings(configuration_->createSettings(),
                                                              UNO_QUERY_THROW);
    Reference<css::beans::XPropertySet>(settings, UNO_QUERY_THROW)
        ->setPropertyValue("UIName", Any(toolbar.title));
    Fill(settings, toolbar.items);
    // A toolbar follows its settings only while it is persistent.
    for (const Window& window : windows_) SetPersistent(window.layout->getElement(resource), true);
    Configure(resource, settings);
    for (const Window& window : windows_) SetPersistent(window.layout->getElement(resource), false);
    toolbars_[resource] = toolbar;
  }
  for (Window& window : windows_) ShowIn(window, resource, toolbar.position);
}

void BarDisplay::ShowIn(Window& window, const OUString& resource, std::int32_t position) {
  // In the print preview its macros would find no cells.
  if (!Reference<css::sheet::XSpreadsheetView>(window.frame->getController(), UNO_QUERY).is()) return;
  const auto known = window.positions.find(resource);
  const bool is_there = known != window.positions.end() && known->second == position;
  // It is gone after LibreOffice showed something else in the window, such as the print preview.
  if (is_there && window.layout->getElement(resource).is()) return;
  window.layout->createElement(resource);
  const Reference<css::ui::XUIElement> element = window.layout->getElement(resource);
  if (!element.is()) return;
  SetPersistent(element, false);
  window.layout->showElement(resource);
  Place(window, resource, position);
  window.positions[resource] = position;
}

void BarDisplay::Place(Window& window, const OUString& resource, std::int32_t position) {
  window.layout->unlockWindow(resource);
  using css::ui::DockingArea;
  DockingArea area = css::ui::DockingArea_DOCKINGAREA_TOP;
  switch (position) {
    case msoBarFloating:
      window.layout->floatWindow(resource);
      return;
    case msoBarLeft:
      area = css::ui::DockingArea_DOCKINGAREA_LEFT;
      break;
    case msoBarRight:
      area = css::ui::DockingArea_DOCKINGAREA_RIGHT;
      break;
    case msoBarBottom:
      area = css::ui::DockingArea_DOCKINGAREA_BOTTOM;
      break;
    default:
      break;
  }
  const bool is_row = position != msoBarLeft && position != msoBarRight;
  window.layout->dockWindow(resource, area,
                            is_row ? css::awt::Point(0, kRowOfItsOwn) : css::awt::Point(kRowOfItsOwn, 0));
}

void BarDisplay::RemoveToolbar(const OUString& resource) {
  toolbars_.erase(resource);
  for (Window& window : windows_) {
    window.positions.erase(resource);
    window.layout->destroyElement(resource);
  }
  if (configuration_->hasSettings(resource)) configuration_->removeSettings(resource);
}

void BarDisplay::ShowMenuBar(const CommandBarApplication& bars) {
  const CommandBarData* added_to = nullptr;
  const CommandBarData* in_its_place = nullptr;
  for (const auto& bar : bars.command_bars) {
    if (bar->built_in && bar->name == kWorksheetMenuBar) added_to = bar.get();
    if (!bar->built_in && bar->is_menu_bar && IsVisible(*bar)) in_its_place = bar.get();
  }
  Shown wanted;
  if (in_its_place)
    wanted = {ToUno(in_its_place->name), ItemsOf(*in_its_place, true), 0};
  else if (added_to)
    wanted.items = ItemsOf(*added_to, true);
  if (wanted == menu_bar_) return;
  menu_bar_ = wanted;
  if (wanted.items.empty()) {
    if (configuration_->hasSettings(kMenuBar)) configuration_->removeSettings(kMenuBar);
    return;
  }
  Reference<css::container::XIndexContainer> settings;
  if (in_its_place) {
    settings.set(configuration_->createSettings(), UNO_QUERY_THROW);
  } else {
    settings.set(css::ui::theModuleUIConfigurationManagerSupplier::get(Context())
                     ->getUIConfigurationManager("com.sun.star.sheet.SpreadsheetDocument")
                     ->getSettings(kMenuBar, true),
                 UNO_QUERY_THROW);
  }
  FillMenuBar(settings, wanted.items);
  // A menu bar that is hidden would not follow its settings, and be the old one when it is shown again.
  for (const Window& window : windows_) SetPersistent(window.layout->getElement(kMenuBar), true);
  Configure(kMenuBar, settings);
  for (const Window& window : windows_) {
    if (window.hidden.contains(kMenuBar)) SetPersistent(window.layout->getElement(kMenuBar), false);
  }
}

void BarDisplay::ShowOwnBars(Window& window, const CommandBarApplication& bars) const {
  const bool has_other_menu_bar = !menu_bar_.title.isEmpty();
  for (const OwnBar& own : kOwnBars) {
    const OUString resource = OUString::createFromAscii(own.resource);
    const bool is_menu_bar = resource == kMenuBar;
    bool is_wanted = is_menu_bar && has_other_menu_bar;
    for (const auto& bar : bars.command_bars) {
      if (bar->built_in && bar->name == own.name) is_wanted = is_wanted || IsVisible(*bar);
    }
    const Reference<css::ui::XUIElement> element = window.layout->getElement(resource);
    if (!is_wanted && window.layout->isElementVisible(resource)) {
      SetPersistent(element, false);
      window.layout->hideElement(resource);
      window.hidden.insert(resource);
    } else if (is_wanted && window.hidden.erase(resource) > 0) {
      window.layout->showElement(resource);
      SetPersistent(element, true);
    }
  }
}

void BarDisplay::SetFaces(const CommandBarApplication& bars) {
  const Reference<css::ui::XImageManager> images(configuration_->getImageManager(), UNO_QUERY_THROW);
  std::map<OUString, std::u16string> wanted;
  ForEachControl(bars, [&](const auto& control) {
    if (std::u16string face = FaceOf(*control); !face.empty()) wanted[CommandOf(*control)] = std::move(face);
  });
  const auto remove = [&](const OUString& command) {
    for (sal_Int16 size = 0; size < 3; ++size) {
      if (images->hasImage(size, command)) images->removeImages(size, SequenceOf({command}));
    }
  };
  for (const auto& [command, face] : faces_) {
    if (!wanted.contains(command)) remove(command);
  }
  for (const auto& [command, face] : wanted) {
    if (const auto known = faces_.find(command); known != faces_.end() && known->second == face) continue;
    remove(command);
    const auto picture = pictures_.find(face);
    const IconSizes icon = picture != pictures_.end()
                               ? IconSizes(3, picture->second)
                               : FaceIcon(static_cast<std::int32_t>(OUString(ToUno(face)).toInt32()));
    for (std::size_t size = 0; size < icon.size(); ++size) {
      images->insertImages(static_cast<sal_Int16>(size), SequenceOf({command}), SequenceOf({icon[size]}));
    }
  }
  faces_ = std::move(wanted);
}

void BarDisplay::Fill(const Reference<css::container::XIndexContainer>& settings,
                      const std::vector<Item>& items) {
  for (const Item& item : items) {
    const auto properties =
        item.command.isEmpty()
            ? SequenceOf({Property("Type", css::ui::ItemType::SEPARATOR_LINE)})
            : SequenceOf({Property("CommandURL", item.command), Property("Label", item.label),
                          Property("Tooltip", item.tooltip), Property("Style", item.style),
                          Property("Type", css::ui::ItemType::DEFAULT), Property("IsVisible", true)});
    settings->insertByIndex(settings->getCount(), Any(properties));
  }
}

void BarDisplay::FillMenuBar(const Reference<css::container::XIndexContainer>& settings,
                             const std::vector<Item>& items) {
  for (const Item& item : items) {
    const Reference<css::container::XIndexContainer> menu(configuration_->createSettings(), UNO_QUERY_THROW);
    Fill(menu, {item});
    const auto properties = SequenceOf(
        {Property("CommandURL", item.command + kMenuOf), Property("Label", item.label),
         Property("Type", css::ui::ItemType::DEFAULT), Property("IsVisible", true),
         Property("ItemDescriptorContainer", Reference<css::container::XIndexAccess>(menu, UNO_QUERY))});
    settings->insertByIndex(settings->getCount(), Any(properties));
  }
}

void BarDisplay::Configure(const OUString& resource,
                           const Reference<css::container::XIndexContainer>& settings) {
  const Reference<css::container::XIndexAccess> content(settings, UNO_QUERY_THROW);
  if (configuration_->hasSettings(resource)) {
    configuration_->replaceSettings(resource, content);
  } else {
    configuration_->insertSettings(resource, content);
  }
}

}  // namespace qva::calc
