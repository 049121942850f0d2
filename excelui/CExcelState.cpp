#include "excelui/CExcelState.h"

#include <limits>

#include "excelui/ExcelSettings.h"

namespace qva {

/// A setting of a snapshot.
struct SavedSetting {
  SettingOwner owner;
  std::u16string_view name;
  bool is_put_back = true;
};

namespace {

constexpr std::size_t kDeepest = std::numeric_limits<std::int16_t>::max();

/// The settings in the order in which they are saved and put back.
constexpr SavedSetting kSavedSettings[] = {
    {SettingOwner::Application, u"DisplayAlerts"},
    {SettingOwner::Application, u"CellDragAndDrop"},
    {SettingOwner::Application, u"EditDirectlyInCell"},
    {SettingOwner::Application, u"TransitionNavigKeys"},
    {SettingOwner::Application, u"MoveAfterReturn"},
    {SettingOwner::Application, u"AskToUpdateLinks"},
    {SettingOwner::Application, u"CopyObjectsWithCells"},
    {SettingOwner::Application, u"EnableAnimations"},
    {SettingOwner::Application, u"DisplayStatusBar"},
    {SettingOwner::Application, u"DisplayFormulaBar"},
    {SettingOwner::Application, u"DisplayCommentIndicator"},
    {SettingOwner::Window, u"DisplayHorizontalScrollBar"},
    {SettingOwner::Window, u"DisplayVerticalScrollBar"},
    {SettingOwner::Window, u"DisplayWorkbookTabs"},
    {SettingOwner::Window, u"DisplayFormulas"},
    {SettingOwner::Window, u"DisplayGridlines"},
    {SettingOwner::Window, u"DisplayHeadings"},
    {SettingOwner::Window, u"DisplayOutline"},
    {SettingOwner::Window, u"DisplayZeros"},
    {SettingOwner::Window, u"Zoom"},
    {SettingOwner::PageSetup, u"PrintGridlines"},
    {SettingOwner::Sheet, u"DisplayPageBreaks"},
    // Saved, but not put back, on purpose: they stay as the report set them.
    {SettingOwner::Application, u"Calculation", false},
    {SettingOwner::Application, u"ReferenceStyle", false},
};

}  // namespace

void CExcelState::SaveExcelState() {
  Snapshot snapshot = TakeSnapshot();
  if (stack_.size() < kDeepest) {
    stack_.push_back(std::move(snapshot));
  } else {
    // Counting further fails, and as every step that fails it keeps none of the others from being done.
    stack_.back() = std::move(snapshot);
  }
}

void CExcelState::RestoreExcelState() {
  if (stack_.empty()) return;
  // A copy: what a setting sets off in Excel may save or restore in between.
  const Snapshot snapshot = stack_.back();
  PutBack(snapshot);
  if (!stack_.empty()) stack_.pop_back();
}

CExcelState::Snapshot CExcelState::TakeSnapshot() const {
  const excel::Application application = excel_.Application();
  if (!application) return {};

  Snapshot snapshot;
  ActiveSettings settings(application);
  for (const SavedSetting& setting : kSavedSettings) {
    IgnoreErrors([&] { snapshot.settings.push_back({&setting, settings.Get(setting.owner, setting.name)}); });
  }

  std::int32_t count = 0;
  IgnoreErrors([&] { count = settings.CommandBars().Count(); });
  for (std::int32_t position = 1; position <= count; ++position) {
    IgnoreErrors([&] {
      const excel::CommandBar bar = settings.CommandBars().Item(position);
      SavedBar& saved = snapshot.bars.emplace_back(SavedBar{bar.Name(), {}, {}});
      IgnoreErrors([&] { saved.visible = bar.Visible(); });
      IgnoreErrors([&] { saved.enabled = bar.Enabled(); });
    });
  }
  IgnoreErrors([&] { snapshot.menu_bar_enabled = settings.CommandBars().Item(kWorksheetMenuBar).Enabled(); });
  return snapshot;
}

void CExcelState::PutBack(const Snapshot& snapshot) const {
  const excel::Application application = excel_.Application();
  IgnoreErrors([&] { application.SetCaption(snapshot.caption); });

  ActiveSettings settings(application);
  for (const SavedValue& saved : snapshot.settings) {
    if (!saved.setting->is_put_back) continue;
    IgnoreErrors([&] { settings.Set(saved.setting->owner, saved.setting->name, saved.value); });
  }

  for (const SavedBar& saved : snapshot.bars) {
    IgnoreErrors([&] {
      const excel::CommandBar bar = settings.CommandBars().Item(saved.name);
      IgnoreErrors([&] {
        if (saved.enabled) bar.SetEnabled(*saved.enabled);
      });
      if (saved.visible) bar.SetVisible(*saved.visible);
    });
  }
  IgnoreErrors([&] {
    if (!snapshot.menu_bar_enabled) return;
    settings.CommandBars().Item(kWorksheetMenuBar).SetEnabled(*snapshot.menu_bar_enabled);
  });
}

Value CExcelState::Invoke(Access, std::u16string_view, Arguments&) {
  throw AutomationError(kUnsupportedMember);
}

}  // namespace qva
