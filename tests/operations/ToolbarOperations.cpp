// The operations of toolbars, and of what stands on them.
#include "tests/operations/operation_parts.h"

namespace qva::operations {

std::vector<Operation> OneToolbar() {
  const auto on = [](Operation::Kind kind, std::u16string_view member, Arguments arguments, char undisturbed,
                     std::string_view when_a_call_fails) {
    return Operation{u"CToolbar",
                     member,
                     kind,
                     [arguments = std::move(arguments)](Stage& s) -> ReadyCall {
                       return {s.Toolbar(), arguments}; },
                     undisturbed,
                     when_a_call_fails};
  };
  // A key is bound or not, without an error: the save key by six calls, the second button's and the help
  // button's by five. Before that stand the look for the bar and whether it is shown.
  std::vector<Operation> operations = {
      Creation(u"CToolbar"),
      on(kGet, u"CmdEvent", {}, 'O', ""),
      {u"CToolbar", u"CmdEvent", kPutRef,
       [](Stage& s) -> ReadyCall {
         const ObjectPtr toolbar = s.Toolbar();
         return {toolbar, {GetObject(toolbar, u"CmdEvent")}};
       },
       '.'},
      on(kCall, u"iComment", {}, '3', "EE"),
      on(kCall, u"iFreeze", {}, '4', "EE"),
      on(kCall, u"iPrintP", {}, '6', "EE"),
      on(kCall, u"iPrint", {}, '5', "EE"),
      on(kCall, u"iExcel", {}, '8', "EE"),
      on(kCall, u"iHelp", {}, '9', "EE"),
      on(kCall, u"VisibleButton", {1, true}, '0', "11EE0{6}"),
      on(kCall, u"EnabledButton", {1, true}, 'X', "11EE"),
      on(kCall, u"ButtonFaceID", {1, 3}, '0', "11EE"),
      {u"CToolbar", u"ButtonFace", kCall,
       [](Stage& s) -> ReadyCall {
         const ObjectPtr picture = s.Observed(GetObject(s.Settings(), u"Shapes", {u"Picture02"}));
         return {s.Toolbar(), {1, picture}};
       },
       '0', "11EEE"},
      on(kCall, u"PositinTop", {}, '0', "E"),
      on(kCall, u"Refresh", {}, '.', "\\.\\.E\\.{16}"),
      on(kCall, u"ButtonToolTipText", {1, u"Užuomina"}, '0', "11EE"),
      on(kPut, u"VisibleToolbar", {true}, '.', "\\.\\.E\\.\\.E\\.{16}"),
      on(kGet, u"VisibleToolbar", {}, 'T', "ETTET{16}"),
      on(kGet, u"Caption", {}, 'S', "E"),
      on(kPut, u"Caption", {u"Ataskaita(Book1)"}, '.', "\\."),
      on(kCall, u"SetAction", {1, u"Veiksmas"}, '0', "11EEE"),
      // From the macro on, the key counts as bound.
      on(kCall, u"SetHotKey", {2, u"^{k}"}, '0', "1{5}00"),
      on(kGet, u"ToolbarID", {}, '4', "E"),
      on(kGet, u"TotalButtons", {}, '9', "EE"),
      on(kGet, u"IDCollection", {}, '1', ""),
      on(kPut, u"IDCollection", {1}, '.', ""),
      // What cannot be read of the settings makes no bar; a bar that cannot be set up raises; of its controls
      // each statement that fails is skipped.
      {.class_name = u"CToolbar",
       .member = u"Init",
       .kind = kCall,
       .prepare = [](Stage& s) -> ReadyCall {
         return {Stage::Create(u"CToolbar"), {s.Observed(s.workbook), s.Observed(s.Settings())}};
       },
       .undisturbed = '9',
       .when_a_call_fails = "0{47}9E{5}0{3}[1-9]+",
       .when_all_calls_fail_from_it_on = "0{47}E{6}[0-9]+",
       .outcome = u"TotalButtons",
       .tidies_up = true},
      {u"CToolbar", u"", kRelease,
       [](Stage& s) -> ReadyCall {
         const ObjectPtr toolbar = Stage::Create(u"CToolbar");
         Call(toolbar, u"Init", {s.Observed(s.workbook), s.Observed(s.Settings())});
         return {toolbar, {}};
       },
       '.', "\\.+", "", "\\.*"},
  };
  for (Operation& operation : operations) {
    if (operation.member == u"EnabledButton") operation.own_error = kUnsupportedMember;
  }
  return operations;
}

std::vector<Operation> ButtonProperties() {
  const auto get = [](std::u16string_view member, char undisturbed) {
    return Operation{u"CButtonProperties", member, kGet,
                     [](Stage&) -> ReadyCall {
                       return {Stage::Buttons(), {2}};
                     },
                     undisturbed};
  };
  const auto put = [](std::u16string_view member, Value value) {
    return Operation{u"CButtonProperties", member, kPut,
                     [value = std::move(value)](Stage&) -> ReadyCall {
                       return {Stage::Buttons(), {2, value}};
                     },
                     '.'};
  };
  std::vector<Operation> operations = {
      Creation(u"CButtonProperties"),
      {u"CButtonProperties", u"TotalButtons", kGet,
       [](Stage&) -> ReadyCall {
         return {Stage::Buttons(), {}};
       },
       '2'},
      {.class_name = u"CButtonProperties",
       .member = u"Add",
       .kind = kCall,
       .prepare = [](Stage&) -> ReadyCall {
         return {Stage::Buttons(), {3}};
       },
       .undisturbed = '5',
       .outcome = u"TotalButtons"},
      {.class_name = u"CButtonProperties",
       .member = u"Reset",
       .kind = kCall,
       .prepare = [](Stage&) -> ReadyCall {
         return {Stage::Buttons(), {}};
       },
       .undisturbed = '0',
       .outcome = u"TotalButtons"},
  };
  for (const auto* text :
       {u"sBCaption", u"sBTooltipText", u"sBPicture", u"sBTag", u"sBOnKey", u"sBOnAction"}) {
    operations.push_back(get(text, 's'));
    operations.push_back(put(text, u"Mygtuko antraštė"));
  }
  for (const auto* number : {u"nBID", u"nBFaceID"}) {
    operations.push_back(get(number, '0'));
    operations.push_back(put(number, 59));
  }
  for (const auto* flag : {u"bBVisible", u"bBGroup"}) {
    operations.push_back(get(flag, 'F'));
    operations.push_back(put(flag, true));
  }
  return operations;
}

std::vector<Operation> SetOfToolbars() {
  return {
      Creation(u"CToolbars"),
      // A toolbar without controls, and one whose settings cannot be read, is none: 0.
      {u"CToolbars", u"CreateToolbar", kCall,
       [](Stage& s) -> ReadyCall {
         // One that could not be deleted is no part of this call.
         s.DeleteBar(u"Ataskaita(Book1)");
         return {Stage::Create(u"CToolbars"), {s.Observed(s.Settings())}};
       },
       '1', "E0{47}1E{5}0{3}1+EE", "E0{47}E+", "M*", 0, u"", true},
      {u"CToolbars", u"Item", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Toolbars(), {1}};
       },
       'O'},
      {u"CToolbars", u"Count", kGet,
       [](Stage& s) -> ReadyCall {
         return {s.Toolbars(), {}};
       },
       '1'},
      {.class_name = u"CToolbars",
       .member = u"DeleteToolbar",
       .kind = kCall,
       .prepare = [](Stage& s) -> ReadyCall {
         const ObjectPtr toolbars = Stage::Create(u"CToolbars");
         Call(toolbars, u"CreateToolbar", {s.Observed(s.Settings())});
         return {toolbars, {1}};
       },
       .undisturbed = '0',
       .when_a_call_fails = "0+",
       .when_memory_is_short = "M*0+",
       .outcome = u"Count"},
      {u"CToolbars", u"Refresh", kCall,
       [](Stage& s) -> ReadyCall {
         Call(s.Toolbar(), u"Refresh");
         Call(s.Toolbars(), u"Item", {1});
         return {s.Toolbars(), {}};
       },
       '.', "E\\.\\.E\\.{16}\\.\\.E\\.{16}"},
      // Without the text nothing is done; a look for the command that fails has not found it.
      {u"CToolbars", u"cmdGoToAppShow", kCall,
       [](Stage& s) -> ReadyCall {
         Call(s.Toolbars(), u"cmdGoToAppDelete");
         return {s.Toolbars(), {u"RestoreApp"}};
       },
       '.', "E{3}\\.\\.E{11}", "E{16}"},
      {u"CToolbars", u"cmdGoToAppDelete", kCall,
       [](Stage& s) -> ReadyCall {
         Call(s.Toolbars(), u"cmdGoToAppShow");
         return {s.Toolbars(), {}};
       },
       '.', "E{3}\\.\\.EE"},
      {u"CToolbars", u"cmdGoToAppCaption", kGet,
       [](Stage& s) -> ReadyCall {
         return {s.Toolbars(), {}};
       },
       'S', "E{3}"},
      {u"CToolbars", u"", kRelease,
       [](Stage& s) -> ReadyCall {
         const ObjectPtr toolbars = Stage::Create(u"CToolbars");
         Call(toolbars, u"CreateToolbar", {s.Observed(s.Settings())});
         Call(toolbars, u"cmdGoToAppShow");
         return {toolbars, {}};
       },
       '.', "\\.+", "", "\\.*"},
  };
}

std::vector<Operation> ButtonsAndCommands() {
  const auto index = [](std::u16string_view member, char place) {
    return Operation{u"CDefaultButtons",
                     member,
                     kGet,
                     [](Stage& s) -> ReadyCall {
                       return {s.DefaultButtons(), {}};
                     },
                     place,
                     "EE"};
  };
  return {
      // The captions are the texts of seven messages.
      {u"CDefaultButtons", u"", kCreate, [](Stage&) -> ReadyCall { return {}; }, 'O', "OOOE{7}", "E{10}"},
      // The buttons in front of the one that fails stay, on the bar and in the list.
      {.class_name = u"CDefaultButtons",
       .member = u"AddButtons",
       .kind = kCall,
       .prepare = [](Stage& s) -> ReadyCall {
         const ObjectPtr buttons = Stage::Create(u"CDefaultButtons");
         Call(buttons, u"Init",
              {s.Observed(s.Settings()), s.Observed(s.EmptyBar(u"Juosta")),
               Stage::Create(u"CButtonProperties")});
         return {buttons, {}};
       },
       .undisturbed = '.',
       .when_a_call_fails = "E+",
       .begins_anew = true},
      index(u"cmdIndexComment", '1'),
      index(u"cmdIndexFreeze", '2'),
      index(u"cmdIndexPrintP", '4'),
      index(u"cmdIndexPrint", '3'),
      index(u"cmdIndexExcel", '6'),
      index(u"cmdIndexHelp", '7'),
      {u"CDefaultButtons", u"Init", kCall,
       [](Stage& s) -> ReadyCall {
         return {Stage::Create(u"CDefaultButtons"),
                 {s.Observed(s.Settings()), s.Observed(s.EmptyBar(u"Juosta")), Stage::Buttons()}};
       },
       '.'},
      Creation(u"CCommandsEvent"),
      {u"CCommandsEvent", u"cmdHelp", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Commands(), {u"", 0}};
       },
       '.', "E"},
      {u"CCommandsEvent", u"cmdComment", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Commands(), {}};
       },
       '.', "E{6}"},
      {u"CCommandsEvent", u"cmdFreeze", kCall,
       [](Stage& s) -> ReadyCall {
         return {s.Commands(), {s.ObservedCells(u"A5")}};
       },
       '.', "E+"},
      {u"CCommandsEvent", u"Init", kCall,
       [](Stage& s) -> ReadyCall {
         return {Stage::Create(u"CCommandsEvent"), {s.Observed(s.EmptyBar(u"Juosta")), s.DefaultButtons()}};
       },
       '.'},
      Creation(u"CEnvironment"),
      {u"CEnvironment", u"SetDefaultAppState", kCall,
       [](Stage&) -> ReadyCall {
         return {Stage::Create(u"CEnvironment"), {}};
       },
       '.', "\\.+"},
      {u"CEnvironment", u"SetDefaultExcelState", kCall,
       [](Stage&) -> ReadyCall {
         return {Stage::Create(u"CEnvironment"), {}};
       },
       '.', "\\.+"},
  };
}

}  // namespace qva::operations
