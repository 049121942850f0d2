// The command bars and hot keys of a workbook in LibreOffice.
#pragma once

#include <com/sun/star/frame/XFrameActionListener.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <cppuhelper/weakref.hxx>
#include <map>
#include <memory>
#include <rtl/ref.hxx>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/calc/Uno.h"
#include "platform/calc/toolbars/BarCommands.h"
#include "platform/calc/toolbars/BarDisplay.h"
#include "platform/commandbars/CommandBarData.h"
#include "platform/object.h"

namespace qva::calc {

/// What Application.CommandBars and Application.OnKey stand for. Excel has one set of bars; here each
/// workbook has a set of its own, that of its windows, from the first question for it until the workbook is
/// closed. What changes is shown when LibreOffice next handles its events.
class DocumentBars : public commandbars::CommandBarApplication,
                     public CommandTarget,
                     public std::enable_shared_from_this<DocumentBars> {
 public:
  /// The bars of the workbook whose macros an Application is for. Raises 1004 when the workbook is known to
  /// be closed, and what LibreOffice raises.
  static std::shared_ptr<DocumentBars> Of(const ObjectPtr& application);
  /// Takes note of an object that a macro passes, as long as its workbook is surely open: should it be an
  /// Application, `Of` can tell later that its workbook is closed. Raises nothing.
  static void Notice(const ObjectPtr& object);

  explicit DocumentBars(const Reference<css::frame::XModel>& document);
  /// Follows the document's windows and its end.
  void Watch();

  const Reference<css::frame::XModel>& document() const { return document_; }

  void RunMacro(const std::u16string& name) override;
  void CommandBarsChanged() override;
  /// A macro that is missing is told to the user.
  void Execute(const OUString& command, const Reference<css::frame::XFrame>& frame) override;
  CommandState StateOf(const OUString& command) override;

  /// Lets a key run a macro, or do nothing when `macro` is empty; without effect for a key that LibreOffice
  /// binds no command to. Raises 1004 for what is no key.
  void BindKey(std::u16string_view key, const std::u16string& macro);
  /// Gives a key its meaning in LibreOffice back. Raises as BindKey.
  void ResetKey(std::u16string_view key);

  /// Puts a picture on the bars' clipboard.
  void CopyPicture(std::u16string_view name, const Reference<css::graphic::XGraphic>& picture);

  /// Shows what changed.
  void Show();
  /// The workbook was closed: all bars and controls are gone.
  void Close();

 private:
  /// Code and modifiers.
  using Key = std::pair<sal_Int16, sal_Int16>;
  struct Binding {
    std::u16string macro;
    OUString former;  ///< the command that the document itself had for the key
  };

  static OUString CommandOf(const Key& key);
  /// Takes part in the dispatching of the windows that the document is in now, and in no other one's.
  void EnterFrames();

  Reference<css::frame::XModel> document_;  ///< null once it was closed
  std::set<std::u16string> names_;          ///< that the document's file has had
  std::vector<css::uno::WeakReference<css::uno::XInterface>> applications_;  ///< of the document's macros
  std::vector<rtl::Reference<BarCommands>> commands_;                        ///< one for each window
  Reference<css::frame::XFrameActionListener> watcher_;
  BarDisplay display_;
  std::map<Key, Binding> keys_;
  bool is_waiting_ = false;  ///< to be shown
};

}  // namespace qva::calc
