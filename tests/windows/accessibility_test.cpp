// What a screen reader finds in the windows, by Windows' own way to ask for it.
#include <oleacc.h>

#include <iostream>
#include <map>
#include <string>

#include "period/frmReportPeriod.h"
#include "platform/text.h"
#include "platform/windows/Bstr.h"
#include "platform/windows/ComPtr.h"
#include "platform/windows/forms/FormWindow.h"
#include "platform/windows/forms/LateFunctions.h"
#include "tests/windows/form_test.h"
#include "tests/windows/grid_test.h"

namespace qva::windows {
namespace {

using testing::ElementsAre;

VARIANT Id(LONG id) {
  VARIANT child;
  VariantInit(&child);
  V_VT(&child) = VT_I4;
  V_I4(&child) = id;
  return child;
}

ComPtr<IAccessible> AccessibleOf(HWND window) {
  ComPtr<IAccessible> object;
  object.Obtain([&](IAccessible** received) {
    return late::AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                            reinterpret_cast<void**>(received));
  });
  return object;
}

/// A text that an object tells of a child, by one of its members.
template <class Member>
std::u16string Text(IAccessible& object, LONG child, Member member) {
  Bstr text;
  return (object.*member)(Id(child), text.Receive()) == S_OK ? text.Text() : u"-";
}

template <class Member>
LONG Number(IAccessible& object, LONG child, Member member) {
  VARIANT number;
  VariantInit(&number);
  return (object.*member)(Id(child), &number) == S_OK && V_VT(&number) == VT_I4 ? V_I4(&number) : -1;
}

RECT Location(IAccessible& object, LONG child) {
  RECT place{};
  EXPECT_EQ(object.accLocation(&place.left, &place.top, &place.right, &place.bottom, Id(child)), S_OK);
  place.right += place.left;
  place.bottom += place.top;
  return place;
}

/// In words of our own: Windows' are in the user's language.
std::string RoleName(LONG role) {
  switch (role) {
    case ROLE_SYSTEM_TABLE:
      return "table";
    case ROLE_SYSTEM_CELL:
      return "cell";
    case ROLE_SYSTEM_CHECKBUTTON:
      return "check box";
    case ROLE_SYSTEM_TEXT:
      return "text";
    case ROLE_SYSTEM_CLIENT:
      return "client";
    default:
      return std::to_string(role);
  }
}

std::string StateNames(LONG state) {
  const std::pair<LONG, const char*> names[] = {
      {STATE_SYSTEM_FOCUSED, " focused"},     {STATE_SYSTEM_SELECTED, " selected"},
      {STATE_SYSTEM_READONLY, " read-only"},  {STATE_SYSTEM_CHECKED, " checked"},
      {STATE_SYSTEM_OFFSCREEN, " offscreen"}, {STATE_SYSTEM_UNAVAILABLE, " unavailable"}};
  std::string found;
  for (const auto& [bit, name] : names) {
    if (state & bit) found += name;
  }
  return found;
}

/// One line for what an object tells of a child.
std::string Described(IAccessible& object, LONG child) {
  return RoleName(Number(object, child, &IAccessible::get_accRole)) +
         ToUtf8(u" '" + Text(object, child, &IAccessible::get_accName) + u"' = '" +
                Text(object, child, &IAccessible::get_accValue) + u"'") +
         StateNames(Number(object, child, &IAccessible::get_accState));
}

class AccessibleGridTest : public GridControlTest {
 protected:
  void SetUp() override {
    GridControlTest::SetUp();
    if (IsSkipped()) return;
    SetWindowTextW(grid->window(), L"Biudžetai");
    object = AccessibleOf(grid->window());
    ASSERT_TRUE(object);
  }
  void TearDown() override {
    object = {};
    GridControlTest::TearDown();
  }
  std::string Cell(LONG id) { return Described(*object, id); }
  LONG Focused() {
    VARIANT child;
    VariantInit(&child);
    return object->get_accFocus(&child) == S_OK && V_VT(&child) == VT_I4 ? V_I4(&child) : -1;
  }
  HRESULT Write(LONG id, std::u16string_view text) { return object->put_accValue(Id(id), Bstr(text).get()); }
  /// Which cell is in a direction; -1 for none.
  LONG Next(LONG direction, LONG start) {
    VARIANT end;
    VariantInit(&end);
    return object->accNavigate(direction, Id(start), &end) == S_OK ? V_I4(&end) : -1;
  }

  ComPtr<IAccessible> object;
};

TEST_F(AccessibleGridTest, TellsEachCell) {
  LONG count = 0;
  ASSERT_EQ(object->get_accChildCount(&count), S_OK);
  EXPECT_EQ(count, 16) << "four columns that show, three rows and the empty line";
  EXPECT_EQ(Described(*object, CHILDID_SELF), "table 'Biudžetai' = '-' focused");
  EXPECT_EQ(Cell(1), "cell 'Kodas' = 'a0' focused selected");
  EXPECT_EQ(Cell(2), "cell 'Planas' = 'b0'");
  EXPECT_EQ(Cell(3), "check box 'Biudžeto' = '-' read-only checked");
  EXPECT_EQ(Cell(4), "cell 'Pavadinimas' = 'n0' read-only");
  EXPECT_EQ(Cell(7), "check box 'Biudžeto' = '-' read-only");
  EXPECT_EQ(Cell(9), "cell 'Kodas' = 'a2'");
  EXPECT_EQ(Cell(13), "cell 'Kodas' = ''");
  EXPECT_EQ(Text(*object, 9, &IAccessible::get_accDescription), u"3 / 4");
}

TEST_F(AccessibleGridTest, TellsWhereACellIs) {
  for (const LONG id : {1, 6, 12}) {
    const RECT place = Location(*object, id);
    const LPARAM inside = PlaceIn(static_cast<int>((id - 1) / 4), static_cast<int>((id - 1) % 4) + 1);
    POINT point{LOWORD(inside), HIWORD(inside)};
    ClientToScreen(grid->window(), &point);
    EXPECT_TRUE(PtInRect(&place, point)) << id;
    VARIANT hit;
    ASSERT_EQ(object->accHitTest(point.x, point.y, &hit), S_OK);
    EXPECT_EQ(V_I4(&hit), id);
  }
  const RECT whole = Location(*object, CHILDID_SELF);
  RECT window;
  GetWindowRect(grid->window(), &window);
  EXPECT_NEAR(whole.left, window.left, 4);
  EXPECT_NEAR(whole.bottom, window.bottom, 4);
  VARIANT hit;
  EXPECT_EQ(object->accHitTest(window.left - 10, window.top, &hit), S_FALSE);
}

TEST_F(AccessibleGridTest, ACellOutOfSightIsThereAllTheSame) {
  for (int i = 0; i < 40; ++i) model.rows.push_back({u"z", u"", u"", u"", u""});
  grid->Refresh();
  EXPECT_EQ(Cell(4 * 40 + 1), "cell 'Kodas' = 'z' offscreen");
  EXPECT_EQ(object->accSelect(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION, Id(4 * 40 + 1)), S_OK);
  EXPECT_EQ(Cell(4 * 40 + 1), "cell 'Kodas' = 'z' focused selected");
  EXPECT_EQ(grid->CurrentRow(), 40u);
}

TEST_F(AccessibleGridTest, FollowsTheUser) {
  EXPECT_EQ(Focused(), 1);
  Press(VK_DOWN);
  Press(VK_RIGHT);
  EXPECT_EQ(Focused(), 6);
  SetFocus(after);
  EXPECT_EQ(Focused(), -1);
  EXPECT_EQ(Cell(6), "cell 'Planas' = 'b1' selected");
}

TEST_F(AccessibleGridTest, LeadsFromCellToCell) {
  EXPECT_EQ(Next(NAVDIR_FIRSTCHILD, CHILDID_SELF), 1);
  EXPECT_EQ(Next(NAVDIR_LASTCHILD, CHILDID_SELF), 16);
  EXPECT_EQ(Next(NAVDIR_RIGHT, 1), 2);
  EXPECT_EQ(Next(NAVDIR_RIGHT, 4), -1);
  EXPECT_EQ(Next(NAVDIR_LEFT, 5), -1);
  EXPECT_EQ(Next(NAVDIR_LEFT, 6), 5);
  EXPECT_EQ(Next(NAVDIR_NEXT, 4), 5);
  EXPECT_EQ(Next(NAVDIR_NEXT, 16), -1);
  EXPECT_EQ(Next(NAVDIR_PREVIOUS, 5), 4);
  EXPECT_EQ(Next(NAVDIR_PREVIOUS, 1), -1);
  EXPECT_EQ(Next(NAVDIR_DOWN, 12), 16);
  EXPECT_EQ(Next(NAVDIR_DOWN, 13), -1);
  EXPECT_EQ(Next(NAVDIR_UP, 5), 1);
  EXPECT_EQ(Next(NAVDIR_UP, 4), -1);
}

TEST_F(AccessibleGridTest, WritesIntoCellsThatTakeText) {
  EXPECT_EQ(Write(5, u"naujas"), S_OK);
  EXPECT_EQ(Cell(5), "cell 'Kodas' = 'naujas' focused selected");
  EXPECT_EQ(Write(13, u"dar vienas"), S_OK) << "the empty line becomes a row";
  EXPECT_THAT(Column(0), ElementsAre(u"a0", u"naujas", u"a2", u"dar vienas"));
  EXPECT_EQ(Write(4, u"x"), E_ACCESSDENIED);
  EXPECT_EQ(Write(3, u"False"), E_ACCESSDENIED);
  EXPECT_EQ(Write(1, u"bloga"), E_ACCESSDENIED) << "refused by the model";
  EXPECT_EQ(Cell(1), "cell 'Kodas' = 'a0' focused selected");
}

TEST_F(AccessibleGridTest, DoesWhatAClickDoes) {
  EXPECT_EQ(Text(*object, 6, &IAccessible::get_accDefaultAction), u"Atverti sąrašą");
  EXPECT_EQ(object->accDoDefaultAction(Id(6)), S_OK);
  EXPECT_THAT(model.pressed, ElementsAre(u"1:1"));
  EXPECT_EQ(Text(*object, 9, &IAccessible::get_accDefaultAction), u"Keisti");
  EXPECT_EQ(object->accDoDefaultAction(Id(9)), S_OK);
  EXPECT_EQ(EditorText(), u"a2");
  EXPECT_EQ(Text(*object, 4, &IAccessible::get_accDefaultAction), u"-");
}

TEST_F(AccessibleGridTest, FailsWhereTheModelRaisesAndTellsTheGrid) {
  model.on_press = [] { throw AutomationError(kOverflow); };
  EXPECT_EQ(object->accDoDefaultAction(Id(6)), E_FAIL);
  ASSERT_EQ(failures.size(), 1u);
  EXPECT_THROW(std::rethrow_exception(failures[0]), AutomationError);
}

TEST_F(AccessibleGridTest, DoesNothingWhileItIsDisabled) {
  grid->SetEnabled(false);
  EXPECT_EQ(Cell(9), "cell 'Kodas' = 'a2' unavailable");
  EXPECT_EQ(object->accDoDefaultAction(Id(6)), S_FALSE);
  EXPECT_EQ(object->accSelect(SELFLAG_TAKESELECTION, Id(6)), S_FALSE);
  EXPECT_EQ(Write(9, u"x"), E_ACCESSDENIED);
  EXPECT_THAT(model.pressed, testing::IsEmpty());
  EXPECT_EQ(grid->CurrentRow(), 0u);
}

TEST_F(AccessibleGridTest, RefusesWhatIsNoCell) {
  EXPECT_EQ(object->accDoDefaultAction(Id(17)), E_INVALIDARG);
  EXPECT_EQ(object->accSelect(SELFLAG_TAKESELECTION, Id(-1)), E_INVALIDARG);
  EXPECT_EQ(object->accSelect(SELFLAG_ADDSELECTION, Id(1)), E_INVALIDARG);
  EXPECT_EQ(Write(CHILDID_SELF, u"x"), E_ACCESSDENIED);
  VARIANT text;
  VariantInit(&text);
  V_VT(&text) = VT_BSTR;
  Bstr name;
  EXPECT_EQ(object->get_accName(text, name.Receive()), E_INVALIDARG);
  EXPECT_EQ(object->get_accName(Id(1), nullptr), E_POINTER);
}

TEST_F(AccessibleGridTest, OutlivesTheGrid) {
  Close();
  LONG count = 7;
  EXPECT_EQ(object->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(object->accDoDefaultAction(Id(1)), CO_E_OBJNOTCONNECTED);
}

/// What was told while a grid was used: the event and the child.
std::vector<std::pair<DWORD, LONG>> events_heard;

void CALLBACK Hear(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG child, DWORD, DWORD) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  if (object == OBJID_CLIENT && TextOf(name) == u"QVA_Varnholt.Grid") events_heard.emplace_back(event, child);
}

TEST_F(AccessibleGridTest, TellsListenersWhatHappens) {
  events_heard.clear();
  HWINEVENTHOOK hook =
      SetWinEventHook(EVENT_OBJECT_REORDER, EVENT_OBJECT_VALUECHANGE, GetModuleHandleW(nullptr), &Hear,
                      GetCurrentProcessId(), 0, WINEVENT_INCONTEXT);
  ASSERT_TRUE(hook);
  Press(VK_DOWN);
  using Event = std::pair<DWORD, LONG>;
  EXPECT_THAT(events_heard, testing::Contains(Event(EVENT_OBJECT_FOCUS, 5)));
  events_heard.clear();
  Type(u"kitas");
  Press(VK_RETURN);
  EXPECT_THAT(events_heard, testing::Contains(Event(EVENT_OBJECT_VALUECHANGE, 5)));
  events_heard.clear();
  grid->Refresh();
  EXPECT_THAT(events_heard, testing::Contains(Event(EVENT_OBJECT_REORDER, CHILDID_SELF)));
  UnhookWinEvent(hook);
}

/// The controls of the period dialog. What Windows tells of its own controls differs: Wine knows the roles of
/// fields alone; their names are those of the labels before them.
TEST_F(FormTest, TellsAScreenReaderOfEachControlOfThePeriodDialog) {
  Make(ReportPeriodLayout());
  Get<ui::TextBox>(u"txtYear").SetText(u"2025");
  std::map<std::string, std::string> told;
  Show({[&] {
    for (const ui::ControlDescription& control : form->description().controls) {
      const ComPtr<IAccessible> object = AccessibleOf(Window(control.name));
      ASSERT_TRUE(object) << ToUtf8(control.name);
      told[ToUtf8(control.name)] = Described(*object, CHILDID_SELF);
      std::cout << ToUtf8(control.name) << ": " << told[ToUtf8(control.name)] << '\n';
    }
  }});
  EXPECT_EQ(told["txtYear"], "text 'Metai : ' = '2025'");
  EXPECT_EQ(told["txtQuater"], "text 'Ketvertis : ' = ''");
  EXPECT_EQ(told["txtMonth"], "text 'Mėnuo : ' = ''");
  EXPECT_EQ(told["optYear"], "client 'Metinės' = '-'");
  EXPECT_EQ(told["Frame2"], "client ' Ataskaitos periodiškūmas ' = '-'");
  EXPECT_EQ(told["btOk"], "client 'OK' = '-'");
  EXPECT_EQ(told["SpecGrid"], "table '#14058 Papilduomi parametrai' = '-'");
}

}  // namespace
}  // namespace qva::windows
