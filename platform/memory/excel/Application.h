// Excel's Application object in memory.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/memory/excel/ModelObject.h"

namespace qva::memory {

/// An Excel without a screen, with the members listed in Application.cpp. A new one has no workbook open:
///
///   Ref<memory::Application> excel = MakeRef<memory::Application>();
///   ObjectPtr workbook = excel->AddWorkbook();
///   ObjectPtr cell = GetObject(GetObject(workbook, u"ActiveSheet"), u"Range", {u"A1"});
///
/// Where a member goes: a plain property into ApplicationData (or WindowData) and one line of the table; any
/// other member into the table of its class and a function beside it; a new class into its own pair of files.
class Application : public ModelObject<Application, ApplicationData> {
 public:
  /// A new Excel.
  Application();
  Application(std::shared_ptr<ApplicationData> application, std::shared_ptr<ApplicationData> data);

  static ClassBuilder Describe();

  // For tests: what cannot be asked for by automation, and shorter ways to what can.

  /// Opens a new workbook "Book<n>" with the sheets "Sheet1" to "Sheet3", and makes it the active one.
  ObjectPtr AddWorkbook();
  /// Puts an empty workbook file of one sheet there, which Workbooks.Open finds.
  void AddFile(std::u16string_view full_name);
  bool HasFile(std::u16string_view full_name) const;
  /// Says whose macros run: what ThisWorkbook gives. Otherwise that is the first open workbook.
  void SetThisWorkbook(const ObjectPtr& workbook);
  /// Makes it an Excel without FileSearch, as those after 2003 are: asking for it raises 445.
  void RemoveFileSearch() { data()->file_search.reset(); }
  /// Does what pressing a key does that is written as for OnKey: runs the macro that is bound to it. True
  /// when the key was bound to one; false when it does nothing or has Excel's own meaning.
  bool Press(std::u16string_view key);
  /// Says what a macro does, named as in OnAction ("Book1!cmdHelp"), in any letter case.
  void DefineMacro(std::u16string_view name, std::function<void()> macro);
  /// The macros that keys and controls ran, in order.
  const std::vector<std::u16string>& MacrosRun() const { return data()->macros_run; }
  /// What Help showed, in order.
  const std::vector<HelpShown>& HelpThatWasShown() const { return data()->help_shown; }
  /// The name of the shape whose picture is on the clipboard; empty when there is none.
  const std::u16string& ClipboardPicture() const { return data()->clipboard_picture; }
  /// What is left of bars, controls and keys when the user closes Excel and starts it again.
  void Restart();
  /// What the user answers from now on when Excel asks, which it does while DisplayAlerts is True; at first
  /// No.
  void LetUserAgree(bool agrees) { data()->user_agrees = agrees; }
  /// What Excel asked the user, in order.
  const std::vector<std::u16string>& Questions() const { return data()->questions; }
  /// Quit was called. The workbooks stay open, so that a test can look at them.
  bool HasQuit() const { return data()->has_quit; }
  /// Everything that was printed or previewed, in order.
  const std::vector<PrintJob>& PrintJobs() const { return data()->print_jobs; }
  /// The macro that OnKey bound to a key, empty for a key that does nothing; nothing where Excel's own
  /// meaning holds. The key as it was written ("^{s}" and "^{S}" are two).
  std::optional<std::u16string> KeyBinding(std::u16string_view key) const;
  /// All keys that OnKey changed.
  const std::map<std::u16string, std::u16string>& KeyBindings() const { return data()->key_bindings; }

 private:
  explicit Application(std::shared_ptr<ApplicationData> data);

  /// An XlCalculation; anything else raises 1004. Semiautomatic is automatic here: there are no data tables.
  std::int32_t Calculation();
  void SetCalculation(std::int32_t mode);
  /// Computes what is out of date in all open workbooks.
  void Calculate();
  Value Caption();
  void SetCaption(const Value& caption);
  void SetStatusBar(const Value& text);
  Value StatusBar();
  std::u16string Name();
  std::u16string Version();
  ObjectPtr This();

  ObjectPtr Workbooks();
  ObjectPtr Sheets();
  ObjectPtr Names();
  ObjectPtr CommandBars();
  ObjectPtr FileSearch();
  ObjectPtr ActiveWorkbook();
  ObjectPtr ActiveSheet();
  ObjectPtr ActiveWindow();
  ObjectPtr ActiveCell();
  ObjectPtr Selection();
  ObjectPtr ThisWorkbook();
  ObjectPtr Range(const Value& cell1, const Value& cell2);
  /// The areas of two ranges of one sheet, otherwise 1004. Excel takes up to 30 ranges.
  ObjectPtr Union(const Value& first, const Value& second);
  void OnKey(const std::u16string& key, const Value& procedure);
  /// Presses one key at once.
  void SendKeys(const std::u16string& keys, const Value& wait);
  void Help(const std::u16string& file, std::int32_t context);
  void Quit();
};

}  // namespace qva::memory
