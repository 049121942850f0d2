// Where the settings of Excel are that the library reads and writes.
#pragma once

#include <optional>
#include <string_view>

#include "platform/excel.h"

namespace qva {

/// The bar that Excel shows instead of a window's menu.
inline constexpr std::u16string_view kWorksheetMenuBar = u"WorkSheet Menu Bar";

/// What a setting belongs to.
enum class SettingOwner { Application, Window, Sheet, PageSetup };

/// The settings of an application, of its active window and sheet, and of that sheet's page setup; its
/// command bars, too. Each of these objects is asked for when it is first needed and held from then on: for
/// the length of one operation. One that Excel refused to give is asked for again when it is next needed.
class ActiveSettings {
 public:
  explicit ActiveSettings(excel::Application application) : application_(std::move(application)) {}

  /// Both raise what Excel raises, and 91 (Object variable not set) where nothing is active.
  Value Get(SettingOwner owner, std::u16string_view name) { return Owner(owner).Setting(name); }
  void Set(SettingOwner owner, std::u16string_view name, const Value& value) {
    Owner(owner).SetSetting(name, value);
  }
  const excel::CommandBars& CommandBars();

 private:
  const excel::Settings& Owner(SettingOwner owner);
  const excel::Worksheet& Sheet();

  excel::Application application_;
  // Nothing, too, is an answer that is kept.
  std::optional<excel::Window> window_;
  std::optional<excel::Worksheet> sheet_;
  std::optional<excel::PageSetup> page_setup_;
  std::optional<excel::CommandBars> command_bars_;
};

}  // namespace qva
