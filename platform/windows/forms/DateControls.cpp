#include "platform/windows/forms/DateControls.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "platform/date.h"
#include "platform/forms/picker_dates.h"
#include "platform/windows/WideText.h"
#include "platform/windows/forms/FormWindow.h"
#include "platform/windows/forms/Keyboard.h"

namespace qva::windows {
namespace {

Date DateOf(const SYSTEMTIME& time) {
  return DateFromParts(time.wYear, time.wMonth, time.wDay);
}

/// A day as Windows takes it. Raises 380 for one that no picker can show.
SYSTEMTIME SystemTimeOf(Date date) {
  const DateParts parts = PartsOf(PickerDay(date));
  SYSTEMTIME time{};
  time.wYear = static_cast<WORD>(parts.year);
  time.wMonth = static_cast<WORD>(parts.month);
  time.wDay = static_cast<WORD>(parts.day);
  return time;
}

}  // namespace

NativeDatePicker::NativeDatePicker(FormWindow& form, const ui::ControlDescription& description)
    : NativeControl(form, description) {
  Create(DATETIMEPICK_CLASSW, {}, DTS_SHORTDATEFORMAT | WS_TABSTOP);
  SYSTEMTIME today;
  GetLocalTime(&today);
  date_ = DateOf(today);
}

void NativeDatePicker::SetValue(Date value) {
  SYSTEMTIME time = SystemTimeOf(value);
  const Date day = DateOf(time);
  if (day == date_) return;
  date_ = day;  // first, so that a notice tells nothing new
  Send(DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
  Raise(on_change);
}

void NativeDatePicker::SetFormat(std::u16string_view format) {
  std::wstring quoted;
  for (const wchar_t character : WideText(format)) {
    if (character == L'y' || character == L'M' || character == L'd') {
      quoted += character;
    } else if (character == L'\'') {
      quoted += L"''";
    } else {
      quoted.append({L'\'', character, L'\''});
    }
  }
  Send(DTM_SETFORMATW, 0, reinterpret_cast<LPARAM>(quoted.c_str()));
}

void NativeDatePicker::OnNotify(const NMHDR& notice) {
  // Nobody drops the calendar down before, and each font that a calendar is given costs some systems one.
  if (notice.code == NM_SETFOCUS && !std::exchange(is_calendar_dressed_, true)) DressCalendar();
  if (notice.code != DTN_DATETIMECHANGE) return;
  // Windows tells some changes twice.
  const Date day = DateOf(reinterpret_cast<const NMDATETIMECHANGE&>(notice).st);
  if (day == date_) return;
  date_ = day;
  Raise(on_change);
}

void NativeDatePicker::Dress(HFONT font, UiScale scale) {
  NativeControl::Dress(font, scale);
  if (is_calendar_dressed_) DressCalendar();  // the font before goes
}

void NativeDatePicker::DressCalendar() const {
  Send(DTM_SETMCFONT, static_cast<WPARAM>(Send(WM_GETFONT)), FALSE);
}

NativeMonthView::NativeMonthView(FormWindow& form, const ui::ControlDescription& description)
    : NativeControl(form, description) {
  Create(MONTHCAL_CLASSW, {}, WS_TABSTOP);
  Observe();
}

Date NativeMonthView::Value() const {
  SYSTEMTIME time{};
  return Send(MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&time)) ? DateOf(time) : Date{};
}

void NativeMonthView::SetValue(Date value) {
  SYSTEMTIME time = SystemTimeOf(value);
  Send(MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
}

std::optional<SIZE> NativeMonthView::NaturalSize() const {
  RECT least{};
  Send(MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&least));
  const LONG today = static_cast<LONG>(Send(MCM_GETMAXTODAYWIDTH));
  return SIZE{std::max(least.right, today), least.bottom};
}

std::optional<Date> NativeMonthView::DayAt(LPARAM place) const {
  MCHITTESTINFO hit{};
  hit.cbSize = MCHITTESTINFO_V1_SIZE;
  hit.pt = {static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
  const LRESULT part = Send(MCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
  // Seen from afar, where there are months instead of days, they count as days, too.
  if (part != MCHT_CALENDARDATE || Send(MCM_GETCURRENTVIEW) != MCMV_MONTH) return std::nullopt;
  return DateOf(hit.st);
}

void NativeMonthView::PressDay(bool is_double, LPARAM place) {
  const std::optional<Date> day = DayAt(place);
  const LONG now = GetMessageTime();
  // Not every release of the control tells double clicks.
  is_double = is_double || static_cast<UINT>(now - pressed_at_) <= GetDoubleClickTime();
  is_picking_ = is_double && day && day == pressed_day_;
  pressed_day_ = is_picking_ ? std::nullopt : day;
  pressed_at_ = now;
}

LRESULT NativeMonthView::Handle(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_KEYDOWN:
      // Not every release of the control knows these keys.
      if (const auto key = GridKeyOf(first);
          key && !IsDown(VK_CONTROL) && Send(MCM_GETCURRENTVIEW) == MCMV_MONTH) {
        if (const auto day = KeyTarget(*key, false, Value())) {
          SetValue(*day);
          return 0;
        }
      }
      return NativeControl::Handle(message, first, second);
    case WM_GETDLGCODE: {
      const auto* key = reinterpret_cast<const MSG*>(second);
      const bool is_own = key && (key->wParam == VK_RETURN || key->wParam == VK_ESCAPE);
      return NativeControl::Handle(message, first, second) | DLGC_WANTARROWS | DLGC_WANTCHARS |
             (is_own ? DLGC_WANTALLKEYS : 0);
    }
    case WM_CHAR:
      if (on_key_press) on_key_press(static_cast<int>(first));
      return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      PressDay(message == WM_LBUTTONDBLCLK, second);
      return NativeControl::Handle(WM_LBUTTONDOWN, first, second);
    case WM_LBUTTONUP: {
      const LRESULT result = NativeControl::Handle(message, first, second);
      if (std::exchange(is_picking_, false)) Raise(on_day_double_click);
      return result;
    }
    default:
      return NativeControl::Handle(message, first, second);
  }
}

}  // namespace qva::windows
