#include "excelui/ExcelSettings.h"

namespace qva {

const excel::Settings& ActiveSettings::Owner(SettingOwner owner) {
  switch (owner) {
    case SettingOwner::Window:
      if (!window_) window_ = application_.ActiveWindow();
      return *window_;
    case SettingOwner::Sheet:
      return Sheet();
    case SettingOwner::PageSetup:
      if (!page_setup_) page_setup_ = Sheet().PageSetup();
      return *page_setup_;
    case SettingOwner::Application:
      break;
  }
  return application_;
}

const excel::CommandBars& ActiveSettings::CommandBars() {
  if (!command_bars_) command_bars_ = application_.CommandBars();
  return *command_bars_;
}

const excel::Worksheet& ActiveSettings::Sheet() {
  if (!sheet_) sheet_ = application_.ActiveSheet();
  return *sheet_;
}

}  // namespace qva
