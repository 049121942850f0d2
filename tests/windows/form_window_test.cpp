// Native forms as windows: modality, keys, and what is left of them.
#include "tests/windows/form_test.h"

#include <commctrl.h>

#include <new>
#include <thread>

#include "period/frmReportPeriod.h"
#include "platform/windows/WindowsClock.h"
#include "platform/windows/forms/UiScale.h"
#include "platform/windows/forms/WindowsMessageBox.h"
#include "tests/raised_error.h"
#include "tests/temporary_environment.h"
#include "tests/windows/grid_test.h"

namespace qva::windows {
namespace {

using testing::ElementsAre;

class FormWindowTest : public FormTest {
 protected:
  /// The controls that the focus goes through by one key.
  std::vector<std::u16string> Walk(int steps, WORD key) {
    std::vector<std::u16string> names;
    std::vector<std::function<void()>> actions;
    for (int i = 0; i < steps; ++i) {
      actions.emplace_back([key] { PressKey(key); });
      actions.emplace_back([&] { names.push_back(Focus()); });
    }
    Show(std::move(actions));
    return names;
  }
};

// --- Modality ----------------------------------------------------------------------------------------------

TEST_F(FormWindowTest, StandsAboveTheWindowThatTheUserWorksIn) {
  MakeHere(FormWithAllKinds());
  EXPECT_EQ(GetWindow(form->window(), GW_OWNER), below->window);
  {
    const PerDisplayPixels pixels;
    RECT owner;
    GetWindowRect(below->window, &owner);
    ExpectInTheMiddle(form->window(), owner);
  }
  EXPECT_FALSE(form->Visible());
  EXPECT_FALSE(IsWindowVisible(form->window()));
  Show({[&] {
    EXPECT_TRUE(form->Visible());
    EXPECT_TRUE(IsWindowVisible(form->window()));
    EXPECT_FALSE(IsWindowEnabled(below->window));
    EXPECT_EQ(GetActiveWindow(), form->window());
  }});
  EXPECT_FALSE(IsWindowVisible(form->window()));
  EXPECT_TRUE(IsWindowEnabled(below->window));
  EXPECT_EQ(GetActiveWindow(), below->window);
}

TEST_F(FormWindowTest, ComesToTheFrontWithoutAWindowBelow) {
  form.reset();
  below.reset();
  MakeHere(FormWithAllKinds());
  EXPECT_EQ(GetWindow(form->window(), GW_OWNER), nullptr);
  Show({[&] {
    EXPECT_EQ(GetForegroundWindow(), form->window());
    EXPECT_EQ(Focus(), u"cbPlan") << "the first field, which is not the row of tabs";
  }});
}

TEST_F(FormWindowTest, EnablesTheWindowBelowBeforeItGoes) {
  std::vector<std::pair<bool, bool>> told;  // enabled or not, while the form is to be seen or not
  below->on_enable = [&](bool enabled) {
    told.emplace_back(enabled, IsWindowVisible(form->window()) != FALSE);
  };
  Show({});
  EXPECT_THAT(told, ElementsAre(std::pair(false, false), std::pair(true, true)));
}

TEST_F(FormWindowTest, DisablesEveryWindowOfTheThreadAndLeavesThoseThatWereDisabled) {
  WindowBelow second;
  WindowBelow disabled;
  EnableWindow(disabled.window, FALSE);
  Show({[&] { EXPECT_FALSE(IsWindowEnabled(second.window)); }});
  EXPECT_TRUE(IsWindowEnabled(second.window));
  EXPECT_FALSE(IsWindowEnabled(disabled.window));
}

TEST_F(FormWindowTest, RaisesWhatAHandlerRaisesWhenItIsGone) {
  Get<ui::Button>(u"btDelete").on_click = [] { throw std::bad_alloc(); };
  bool raised = false;
  try {
    Show({[&] { SendMessageW(Window(u"btDelete"), BM_CLICK, 0, 0); }});
  } catch (const std::bad_alloc&) {
    raised = true;
  }
  EXPECT_TRUE(raised);
  EXPECT_FALSE(form->Visible());
  EXPECT_TRUE(IsWindowEnabled(below->window));
  Show({});  // nothing of it is left
}

TEST_F(FormWindowTest, RaisesTheFirstOfSeveralErrorsOfHandlers) {
  Get<ui::Button>(u"btOk").on_click = [] { throw AutomationError(kOverflow); };
  Get<ui::Button>(u"btDelete").on_click = [&] {
    SendMessageW(Window(u"btOk"), BM_CLICK, 0, 0);
    throw AutomationError(kTypeMismatch);
  };
  EXPECT_EQ(RaisedBy([&] { Show({[&] { SendMessageW(Window(u"btDelete"), BM_CLICK, 0, 0); }}); }), kOverflow);
}

TEST_F(FormWindowTest, RaisesWhatAKeysHandlerRaises) {
  Get<ui::Button>(u"btOk").on_click = [] { throw AutomationError(kOverflow); };
  EXPECT_EQ(RaisedBy([&] { Show({[] { PressKey(VK_RETURN); }}); }), kOverflow);
  EXPECT_TRUE(IsWindowEnabled(below->window));
}

TEST_F(FormWindowTest, PassesTheEndOfTheProgramOn) {
  Show({[] { PostQuitMessage(7); }});
  EXPECT_FALSE(form->Visible());
  MSG message{};
  EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7u);
}

TEST_F(FormWindowTest, EndsWithTheWindowBelow) {
  Show({[&] { DestroyWindow(below->window); }});
  EXPECT_FALSE(form->Visible());
  EXPECT_THROW(form->ShowModal(), AutomationError);
}

TEST_F(FormWindowTest, EndsWhenAnotherThreadHidesItByAMessage) {
  Get<ui::Button>(u"btOk").on_click = [&] { form->Hide(); };
  HWND button = Window(u"btOk");
  std::thread thread([button] {
    Becomes([&] { return IsWindowVisible(button) != FALSE; });
    SendMessageW(button, BM_CLICK, 0, 0);
  });
  form->ShowModal();
  thread.join();
  EXPECT_FALSE(form->Visible());
}

// --- Keys --------------------------------------------------------------------------------------------------

TEST_F(FormWindowTest, TabGoesThroughThePageInFrontAndOnToTheButtons) {
  Get<ui::OptionButton>(u"optB").Select();
  EXPECT_THAT(Walk(9, VK_TAB), ElementsAre(u"txtYear", u"txtMonth", u"optB", u"edDate", u"Text1", u"btOk",
                                           u"btCancel", u"STab", u"cbPlan"));
}

TEST_F(FormWindowTest, ShiftTabGoesBack) {
  HoldKey(VK_SHIFT, true);
  EXPECT_THAT(Walk(6, VK_TAB), ElementsAre(u"STab", u"btCancel", u"btOk", u"Text1", u"edDate", u"optA"));
  HoldKey(VK_SHIFT, false);
}

TEST_F(FormWindowTest, TabPassesOverWhatIsDisabled) {
  Get<ui::TextBox>(u"txtYear").SetEnabled(false);
  EXPECT_THAT(Walk(1, VK_TAB), ElementsAre(u"txtMonth"));
}

TEST_F(FormWindowTest, TabPassesOverWhatIsOnlyRead) {
  Make(FormWithANote(u"txtYear"));
  EXPECT_THAT(Walk(1, VK_TAB), ElementsAre(u"txtMonth"));
}

TEST_F(FormWindowTest, TheFirstFieldHasTheFocusUnlessItCannotBeWorked) {
  Make(FormWithANote(u"txtYear"));
  form->Find(u"cbPlan")->SetEnabled(false);
  Show({[&] { EXPECT_EQ(Focus(), u"txtMonth"); }});
}

TEST_F(FormWindowTest, TypingReplacesTheTextOfTheFieldThatTheProgramGivesTheFocus) {
  auto& year = dynamic_cast<ui::TextBox&>(*form->Find(u"txtYear"));
  year.SetText(u"2024");
  year.SetFocus();
  Show({[&] { SendMessageW(Window(u"txtYear"), EM_SETSEL, 4, 4); }, [&] { year.SetFocus(); },
        [] { TypeText(u"7"); }, [&] { EXPECT_EQ(year.Text(), u"7"); }});
}

TEST_F(FormWindowTest, TabSelectsTheTextOfTheFieldItComesTo) {
  Get<ui::TextBox>(u"txtYear").SetText(u"2024");
  Walk(1, VK_TAB);
  DWORD from = 9, to = 9;
  SendMessageW(Window(u"txtYear"), EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  EXPECT_EQ(from, 0u);
  EXPECT_EQ(to, 4u);
}

TEST_F(FormWindowTest, ArrowsChooseAmongTheOptionsOfAGroup) {
  Get<ui::OptionButton>(u"optA").Select();
  Get<ui::OptionButton>(u"optC").SetEnabled(false);
  form->Find(u"optA")->SetFocus();
  EXPECT_THAT(Walk(2, VK_DOWN), ElementsAre(u"optB", u"optA"));
  EXPECT_TRUE(Get<ui::OptionButton>(u"optA").Selected());
  EXPECT_THAT(Walk(1, VK_LEFT), ElementsAre(u"optB"));
  EXPECT_TRUE(Get<ui::OptionButton>(u"optB").Selected());
}

TEST_F(FormWindowTest, ControlWithTabOrAPageKeyTurnsThePage) {
  auto& tabs = Get<ui::TabControl>(u"STab");
  form->Find(u"txtYear")->SetFocus();
  Show({[] { HoldKey(VK_CONTROL, true); }, [] { PressKey(VK_TAB); },
        [&] {
          EXPECT_EQ(tabs.Page(), 1);
          EXPECT_EQ(Focus(), u"STab") << "the field has gone with its page";
          EXPECT_FALSE(IsWindowVisible(Window(u"txtYear")));
          EXPECT_TRUE(IsWindowVisible(Window(u"btDelete")));
        },
        [] { PressKey(VK_NEXT); }, [&] { EXPECT_EQ(tabs.Page(), 0); }, [] { PressKey(VK_PRIOR); },
        [&] { EXPECT_EQ(tabs.Page(), 1); }, [] { HoldKey(VK_CONTROL, false); }, [] { PressKey(VK_TAB); },
        [&] { EXPECT_EQ(Focus(), u"SpecGrid"); }, [] { PressKey(VK_LEFT); }});
}

TEST_F(FormWindowTest, ControlWithAPageKeyTurnsThePageFromACellThatIsEdited) {
  TestModel model;
  model.width = 1;
  model.rows = {{u"a"}, {u"b"}};
  auto& grid = Get<ui::Grid>(u"SpecGrid");
  model.grid = &grid;
  grid.SetColumns({{.name = u"Code", .caption = u"Kodas", .width = 90}});
  grid.SetModel(&model);
  auto& tabs = Get<ui::TabControl>(u"STab");
  for (const WORD key : {VK_NEXT, VK_PRIOR}) {
    model.rows[0][0] = u"a";
    grid.SetFocus();
    Show({[] { TypeText(u"x"); },
          [key] {
            HoldKey(VK_CONTROL, true);
            PressKey(key);
          },
          [] {}, [] { HoldKey(VK_CONTROL, false); },
          [&] {
            EXPECT_EQ(tabs.Page(), 0);
            EXPECT_EQ(model.rows[0][0], u"x") << "what was typed is stored";
            EXPECT_EQ(grid.CurrentRow(), 0u);
          }});
  }
  grid.SetModel(nullptr);
}

TEST_F(FormWindowTest, TabControlTurnsItsPagesByArrowsAndMouse) {
  auto& tabs = Get<ui::TabControl>(u"STab");
  form->Find(u"STab")->SetFocus();
  Show({[&] { EXPECT_EQ(Focus(), u"STab"); }, [] { PressKey(VK_RIGHT); },
        [&] {
          EXPECT_EQ(tabs.Page(), 1);
          EXPECT_TRUE(IsWindowVisible(Window(u"SpecGrid")));
          RECT first{};
          SendMessageW(Window(u"STab"), TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&first));
          const LPARAM place = MAKELPARAM(first.left + 5, first.top + 5);
          PostMessageW(Window(u"STab"), WM_LBUTTONDOWN, MK_LBUTTON, place);
          PostMessageW(Window(u"STab"), WM_LBUTTONUP, 0, place);
        },
        [&] {
          EXPECT_EQ(tabs.Page(), 0);
          EXPECT_FALSE(IsWindowVisible(Window(u"SpecGrid")));
          EXPECT_TRUE(IsWindowVisible(Window(u"optA")));
        }});
}

TEST_F(FormWindowTest, FocusBringsItsPageToTheFront) {
  auto& tabs = Get<ui::TabControl>(u"STab");
  form->Find(u"btDelete")->SetFocus();
  EXPECT_EQ(tabs.Page(), 1);
  Show({[&] { EXPECT_EQ(Focus(), u"btDelete"); }, [&] { form->Find(u"txtYear")->SetFocus(); },
        [&] {
          EXPECT_EQ(tabs.Page(), 0);
          EXPECT_EQ(Focus(), u"txtYear");
          EXPECT_EQ(SendMessageW(Window(u"STab"), TCM_GETCURSEL, 0, 0), 0);
        },
        [&] { tabs.SetPage(1); }, [&] { EXPECT_EQ(Focus(), u"STab"); }});
}

TEST_F(FormWindowTest, FocusLeavesAControlThatIsDisabled) {
  form->Find(u"txtYear")->SetFocus();
  Show({[&] { form->Find(u"txtYear")->SetEnabled(false); }, [&] { EXPECT_EQ(Focus(), u"txtMonth"); }});
}

TEST_F(FormWindowTest, FocusComesBackToWhereItWas) {
  form->Find(u"txtMonth")->SetFocus();
  WindowBelow other;
  Show({[&] { SetActiveWindow(other.window); }, [&] { SetActiveWindow(form->window()); },
        [&] { EXPECT_EQ(Focus(), u"txtMonth"); }});
}

TEST_F(FormWindowTest, EnterPressesTheDefaultButtonOrTheOneWithTheFocus) {
  std::vector<std::u16string> pressed;
  for (const std::u16string name : {u"btOk", u"btCancel"}) {
    Get<ui::Button>(name).on_click = [&pressed, name] { pressed.push_back(name); };
  }
  const auto is_default = [&](std::u16string_view name) {
    return (GetWindowLongPtrW(Window(name), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
  };
  form->Find(u"txtYear")->SetFocus();
  Show({[] { PressKey(VK_RETURN); },
        [&] {
          EXPECT_TRUE(is_default(u"btOk"));
          form->Find(u"btCancel")->SetFocus();
        },
        [&] {
          EXPECT_FALSE(is_default(u"btOk"));
          EXPECT_TRUE(is_default(u"btCancel"));
          PressKey(VK_RETURN);
        },
        [&] { form->Find(u"btOk")->SetEnabled(false); }, [&] { form->Find(u"txtYear")->SetFocus(); },
        [] { PressKey(VK_RETURN); }});
  EXPECT_THAT(pressed, ElementsAre(u"btOk", u"btCancel")) << "a disabled button is not pressed";
}

TEST_F(FormWindowTest, ArrowsGoFromButtonToButton) {
  ui::FormDescription description = FormWithAllKinds();
  description.controls.push_back(
      {ui::ControlKind::Button, u"btCopy", u"Kopija", {16, 230, 90, 17}, u"STab", 0});
  Make(description);
  form->Find(u"btOk")->SetFocus();
  EXPECT_THAT(Walk(3, VK_RIGHT), ElementsAre(u"btCancel", u"btOk", u"btCancel"));
  EXPECT_THAT(Walk(2, VK_UP), ElementsAre(u"btOk", u"btCancel"));
  form->Find(u"btCopy")->SetFocus();
  EXPECT_THAT(Walk(1, VK_LEFT), ElementsAre(u"btCopy")) << "the other one stands on another page";
}

TEST_F(FormWindowTest, EscapeAndClosingPressTheCancelButton) {
  int pressed = 0;
  Get<ui::Button>(u"btCancel").on_click = [&] { ++pressed; };
  Show({[] { PressKey(VK_ESCAPE); }, [&] { PostMessageW(form->window(), WM_CLOSE, 0, 0); },
        [&] { EXPECT_EQ(pressed, 2); }});
}

TEST_F(FormWindowTest, ClosingAFormWithoutCancelButtonHidesIt) {
  Make(FormWithMonth());
  Show({[&] { PostMessageW(form->window(), WM_CLOSE, 0, 0); }});
  EXPECT_FALSE(form->Visible());
}

// --- Making and unmaking -----------------------------------------------------------------------------------

/// Closes a message box when one is in front.
void CALLBACK CloseBox(HWND, UINT, UINT_PTR, DWORD) {
  HWND box = FindWindowW(nullptr, L"Klausimas");
  if (box && GetActiveWindow() == box) PostMessageW(box, WM_CLOSE, 0, 0);
}

/// Does something 200 times and counts what stays.
void ExpectNothingKeptOf(const std::function<void()>& step) {
  for (int i = 0; i < 5; ++i) step();  // what the system keeps for itself
  const HandleCounts before;
  for (int i = 0; i < 200; ++i) step();
  ExpectNothingKept(before, HandleCounts());
}

TEST_F(FormWindowTest, LeavesNothingBehind) {
  ExpectNothingKeptOf([&] {
    Make(ReportPeriodLayout());
    Show({});
  });
}

TEST_F(FormWindowTest, IsADialogToScreenReaders) {
  Make(ReportPeriodLayout());
  wchar_t name[16] = L"";
  GetClassNameW(form->window(), name, 16);
  EXPECT_STREQ(name, L"#32770");
}

/// Wine's calendar loses a font whenever it is given one, which is none of the form's.
TEST_F(FormWindowTest, WithACalendarLeavesNothingBehindThatTheCalendarDoesNotLose) {
  const auto kept_of = [](const std::function<void()>& step) {
    for (int i = 0; i < 5; ++i) step();
    const HandleCounts before;
    for (int i = 0; i < 200; ++i) step();
    const HandleCounts after;
    EXPECT_LE(after.window_handles, before.window_handles + 20);
    return after.graphics_handles - before.graphics_handles;
  };
  const MessageFont font(UiScale{});
  const int lost = kept_of([&] {
    HWND calendar = CreateWindowExW(0, MONTHCAL_CLASSW, L"", WS_CHILD, 0, 0, 9, 9, below->window, nullptr,
                                    nullptr, nullptr);
    SetFont(calendar, font.get());
    DestroyWindow(calendar);
  });
  EXPECT_LE(kept_of([&] {
              MakeHere(FormWithMonth());
              Show({});
            }),
            lost + 20);
}

TEST_F(FormWindowTest, LeavesNothingOfAMessageBoxBehind) {
  form.reset();
  TemporaryEnvironment environment;
  environment.Set("QVA_VARNHOLT_ANSWERS", std::nullopt);
  environment.Set("QVA_VARNHOLT_MESSAGE_LOG", std::nullopt);
  const WindowsClock clock;
  WindowsMessageBox boxes(clock);
  const std::u16string captions[] = {u"Gerai", u"Ne"};
  const UINT_PTR timer = SetTimer(nullptr, 0, 1, &CloseBox);
  ExpectNothingKeptOf([&] { EXPECT_EQ(boxes.Ask(u"Tekstas", u"Klausimas", captions), 2); });
  KillTimer(nullptr, timer);
}

}  // namespace
}  // namespace qva::windows
