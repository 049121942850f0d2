// What Excel is, below the automation objects (ownership: SheetData.h).
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/commandbars/CommandBarData.h"
#include "platform/excel_constants.h"
#include "platform/memory/excel/WorkbookData.h"
#include "platform/value.h"

namespace qva::memory {

/// What the user sees when he asked for help.
struct HelpShown {
  std::u16string file;
  std::int32_t context = 0;

  friend bool operator==(const HelpShown&, const HelpShown&) = default;
};

/// What the search for files looks for.
struct FileSearchData {
  Object* automation = nullptr;  ///< the FileSearch that is alive, not owned
  std::u16string look_in;        ///< a folder
  std::u16string file_name;      ///< "*" and "?" stand for any characters
};

/// A sheet as it was printed or previewed.
struct PrintJob {
  std::u16string sheet;
  std::u16string print_area;  ///< as PageSetup.PrintArea gives it
  bool is_preview = false;
  std::int32_t from = 0;  ///< first and last page; 0 where all are printed
  std::int32_t to = 0;
  std::int32_t copies = 1;

  friend bool operator==(const PrintJob&, const PrintJob&) = default;
};

struct ApplicationData : commandbars::CommandBarApplication {
  Object* automation = nullptr;  ///< the Application that is alive, not owned

  // Plain properties: each is a field here and a line in Application.cpp. The first values are those of an
  // Excel that the user has just started.
  bool visible = true;
  bool screen_updating = true;
  bool display_alerts = true;
  bool display_formula_bar = true;
  bool display_status_bar = true;
  bool enable_events = true;
  bool cell_drag_and_drop = true;
  bool edit_directly_in_cell = true;
  bool transition_navigation_keys = false;
  bool move_after_return = true;
  bool ask_to_update_links = true;
  bool copy_objects_with_cells = true;
  bool enable_animations = false;
  std::int32_t cursor = xlDefault;
  std::int32_t calculation = xlCalculationAutomatic;
  bool calculate_before_save = true;  ///< while it is manual
  std::int32_t reference_style = xlA1;
  std::int32_t display_comment_indicator = xlCommentIndicatorOnly;
  Value caption;             ///< Empty: Excel's own
  Value status_bar = false;  ///< False: Excel's own texts

  std::vector<std::shared_ptr<WorkbookData>> workbooks;  ///< the open ones in the order of opening
  std::shared_ptr<WorkbookData> active_workbook;         ///< one of them, null when there is none
  std::weak_ptr<WorkbookData> this_workbook;             ///< whose macros run; nothing: the first open one
  std::shared_ptr<FileSearchData> file_search = std::make_shared<FileSearchData>();  ///< null: has none

  /// Keys that OnKey changed, as written: the macro that a key runs, empty when it does nothing.
  std::map<std::u16string, std::u16string> key_bindings;
  /// What macros do, by lower-case name; one that is not here does nothing.
  std::map<std::u16string, std::function<void()>> macros;
  std::vector<std::u16string> macros_run;  ///< in order, as they were named
  std::vector<HelpShown> help_shown;       ///< in order
  std::vector<PrintJob> print_jobs;        ///< what was printed or previewed, in order
  bool has_quit = false;
  int workbooks_made = 0;
  std::vector<std::u16string> questions;  ///< what the user was asked, in order
  bool user_agrees = false;               ///< what he answers; No is the button that is there for haste

  /// The file system that Open and SaveAs see: saved workbooks by lower-case full name.
  std::map<std::u16string, std::shared_ptr<WorkbookData>> files;

  std::shared_ptr<SheetData> ActiveSheet() const {
    return active_workbook ? active_workbook->active_sheet : nullptr;
  }
  /// Null when no such workbook is open; names ignore letter case.
  std::shared_ptr<WorkbookData> FindWorkbook(std::u16string_view name) const;
  /// Knows macros of every name; those that nobody defined do nothing.
  void RunMacro(const std::u16string& name) override;
  /// Whether a file can be put into a folder: one of the machine (Services::files), Excel's own default
  /// folder, or one that holds a workbook already.
  bool HasFolder(std::u16string_view folder) const;
  /// What the user answers to a question; while alerts are off nobody is asked, and the answer is yes.
  bool Asks(std::u16string question);
};

// None goes before the program does.
inline void RequireAlive(const ApplicationData&) {
}
inline void RequireAlive(const FileSearchData&) {
}

// Nobody watches what changes.
inline void Changed(const ApplicationData&) {
}

/// Where Excel saves what the user gives no folder for.
inline constexpr std::u16string_view kDefaultFolder = u"C:\\My Documents";

/// Opens a workbook that belongs to no application yet, and makes it the active one.
void AddWorkbook(const std::shared_ptr<ApplicationData>& application,
                 const std::shared_ptr<WorkbookData>& workbook);
/// Takes a workbook out of its application and makes another one active. Its objects are gone from now on.
void CloseWorkbook(ApplicationData& application, const std::shared_ptr<WorkbookData>& workbook);

}  // namespace qva::memory
