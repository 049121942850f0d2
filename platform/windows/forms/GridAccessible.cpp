#include "platform/windows/forms/GridAccessible.h"

#include <optional>

#include "platform/forms/Guarded.h"
#include "platform/windows/Bstr.h"
#include "platform/windows/forms/LateFunctions.h"
#include "platform/windows/forms/UiScale.h"
#include "platform/windows/forms/WindowText.h"

namespace qva::windows {
namespace {

/// Something whose address is in our module.
const char kOfOurs = 0;

HRESULT Give(LONG number, VARIANT* result) {
  V_VT(result) = VT_I4;
  V_I4(result) = number;
  return S_OK;
}

HRESULT Give(std::u16string_view text, BSTR* result) {
  *result = Bstr(text).Detach();
  return S_OK;
}

RECT OnScreen(HWND window, RECT area) {
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
  return area;
}

bool IsMark(const ShownColumn& column) {
  return column.description.check_box;
}

}  // namespace

// --- Answering ---------------------------------------------------------------------------------------------

/// Nothing may pass through COM.
template <class Body>
HRESULT GridAccessible::Answer(Body&& body) noexcept {
  const ComPtr<GridAccessible> kept(this);  // what is done to the grid may end it
  const PerDisplayPixels pixels;            // who asks is called from Excel's thread, which may know others
  HRESULT result = E_FAIL;
  Guarded([&] { result = grid_ ? body() : CO_E_OBJNOTCONNECTED; },
          [&](std::exception_ptr failure) {
            if (grid_) grid_->Fail(std::move(failure));
          });
  return result;
}

/// Calls `body` with the cell that a child's number stands for; with none for the grid itself.
template <class Body>
HRESULT GridAccessible::AnswerFor(const VARIANT& child, Body&& body) noexcept {
  return Answer([&]() -> HRESULT {
    if (V_VT(&child) != VT_I4 || V_I4(&child) < 0) return E_INVALIDARG;
    const auto id = static_cast<std::size_t>(V_I4(&child));
    if (id == CHILDID_SELF) return body(std::optional<GridCell>());
    if (id > cells()) return E_INVALIDARG;
    return body(std::optional<GridCell>({(id - 1) / columns(), (id - 1) % columns()}));
  });
}

LRESULT GridAccessible::AnswerGetObject(WPARAM flags) {
  // Who asks may hold the object for longer than Excel holds the library.
  HMODULE own = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                     reinterpret_cast<const wchar_t*>(&kOfOurs), &own);
  return late::LresultFromObject(__uuidof(IAccessible), flags, this);
}

void GridAccessible::TellOfCell(DWORD event) const {
  if (grid_) NotifyWinEvent(event, grid_->window(), OBJID_CLIENT, CurrentId());
}

void GridAccessible::TellOfGrid(DWORD event) const {
  if (grid_) NotifyWinEvent(event, grid_->window(), OBJID_CLIENT, CHILDID_SELF);
}

// --- IDispatch ---------------------------------------------------------------------------------------------

HRESULT STDMETHODCALLTYPE GridAccessible::QueryInterface(REFIID interface_id, void** result) {
  return Counted::QueryInterface(interface_id == IID_IDispatch ? __uuidof(IAccessible) : interface_id,
                                 result);
}

HRESULT STDMETHODCALLTYPE GridAccessible::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE GridAccessible::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info) *info = nullptr;
  return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE GridAccessible::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
  return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE GridAccessible::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*,
                                                 EXCEPINFO*, UINT*) {
  return E_NOTIMPL;
}

// --- What is there -----------------------------------------------------------------------------------------

HRESULT STDMETHODCALLTYPE GridAccessible::get_accParent(IDispatch** parent) {
  if (!parent) return E_POINTER;
  *parent = nullptr;
  return Answer([&] {
    return late::AccessibleObjectFromWindow(grid_->window(), static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                            reinterpret_cast<void**>(parent));
  });
}

HRESULT STDMETHODCALLTYPE GridAccessible::get_accChildCount(LONG* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return Answer([&] {
    *count = static_cast<LONG>(cells());
    return S_OK;
  });
}

HRESULT STDMETHODCALLTYPE GridAccessible::get_accChild(VARIANT child, IDispatch** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  return AnswerFor(child, [](std::optional<GridCell>) { return S_FALSE; });  // no object of its own
}

HRESULT STDMETHODCALLTYPE GridAccessible::get_accName(VARIANT child, BSTR* name) {
  if (!name) return E_POINTER;
  *name = nullptr;
  return AnswerFor(child, [&](std::optional<GridCell> cell) {
    return Give(
        cell ? grid_->state().columns()[cell->column].description.caption : TextOfWindow(grid_->window()),
        name);
  });
}

HRESULT STDMETHODCALLTYPE GridAccessible::get_accValue(VARIANT child, BSTR* value) {
  if (!value) return E_POINTER;
  *value = nullptr;
  return AnswerFor(child, [&](std::optional<GridCell> cell) {
    if (!cell || IsMark(grid_->state().columns()[cell->column])) return S_FALSE;
    return Give(grid_->state().TextOf(*cell), value);
  });
}

HRESULT STDMETHODCALLTYPE GridAccessible::get_accDescription(VARIANT child, BSTR* description) {
  if (!description) return E_POINTER;
  *description = nullptr;
  return AnswerFor(child, [&](std::optional<GridCell> cell) {
    return cell ? Give(grid_->state().PlaceOf(cell->line), description) : S_FALSE;
  });
}

HRESULT STDMETHODCALLTYPE GridAccessible::get_accRole(VARIANT child, VARIANT* role) {
  if (!role) return E_POINTER;
  VariantInit(role);
  return AnswerFor(child, [&](std::optional<GridCell> cell) {
    if (!cell) return Give(ROLE_SYSTEM_TABLE, role);
    return Give(IsMark(grid_->state().columns()[cell->column]) ? ROLE_SYSTEM_CHECKBUTTON : ROLE_SYSTEM_CELL,
                role);
  });
}

HRESULT STDMETHODCALLTYPE GridAccessible::get_accState(VARIANT child, VARIANT* state) {
  if (!state) return E_POINTER;
  VariantInit(state);
  return AnswerFor(child, [&](std::optional<GridCell> cell) {
    const HWND window = grid_->window();
    const bool has_focus = GetFocus() == window;
    LONG found = IsWindowEnabled(window) ? STATE_SYSTEM_FOCUSABLE : STATE_SYSTEM_UNAVAILABLE;
    if (!IsWindowVisible(window)) found |= STATE_SYSTEM_INVISIBLE;
    if (!cell) return Give(found | (has_focus ? STATE_SYSTEM_FOCUSED : 0), state);

    const GridState& grid = grid_->state();
    const ShownColumn& column = grid.columns()[cell->column];
    found |= STATE_SYSTEM_SELECTABLE;
    if (*cell == grid.current()) found |= STATE_SYSTEM_SELECTED | (has_focus ? STATE_SYSTEM_FOCUSED : 0);
    if (column.description.read_only) found |= STATE_SYSTEM_READONLY;
    if (IsMark(column) && IsMarked(grid.TextOf(*cell))) found |= STATE_SYSTEM_CHECKED;
    const RECT area = grid_->layout().CellArea(*cell);
    const RECT body = grid_->layout().Body();
    RECT common;
    if (!IntersectRect(&common, &area, &body)) found |= STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN;
    return Give(found, state);
  });
}

HRESULT STDMETHODCALLTYPE GridAccessible::get_accHelp(VARIANT, BSTR* help) {
  if (help) *help = nullptr;
  return S_FALSE;
}

HRESULT STDMETHODCALLTYPE GridAccessible::get_accHelpTopic(BSTR* file, VARIANT, LONG*) {
  if (file) *file = nullptr;
  return S_FALSE;
}

HRESULT STDMETHODCALLTYPE GridAccessible::get_accKeyboardShortcut(VARIANT, BSTR* key) {
  if (key) *key = nullptr;
  return S_FALSE;
}

// --- Where it is -------------------------------------------------------------------------------------------

HRESULT STDMETHODCALLTYPE GridAccessible::get_accFocus(VARIANT* child) {
  if (!child) return E_POINTER;
  VariantInit(child);
  return Answer([&] { return GetFocus() == grid_->window() ? Give(CurrentId(), child) : S_FALSE; });
}

HRESULT STDMETHODCALLTYPE GridAccessible::get_accSelection(VARIANT* children) {
  if (!children) return E_POINTER;
  VariantInit(children);
  return Answer([&] { return CurrentId() == CHILDID_SELF ? S_FALSE : Give(CurrentId(), children); });
}

HRESULT STDMETHODCALLTYPE GridAccessible::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                                      VARIANT child) {
  if (!left || !top || !width || !height) return E_POINTER;
  *left = *top = *width = *height = 0;
  return AnswerFor(child, [&](std::optional<GridCell> cell) {
    const HWND window = grid_->window();
    const RECT area = OnScreen(window, cell ? grid_->layout().CellArea(*cell) : grid_->layout().Inside());
    *left = area.left;
    *top = area.top;
    *width = area.right - area.left;
    *height = area.bottom - area.top;
    return S_OK;
  });
}

HRESULT STDMETHODCALLTYPE GridAccessible::accHitTest(LONG left, LONG top, VARIANT* child) {
  if (!child) return E_POINTER;
  VariantInit(child);
  return Answer([&]() -> HRESULT {
    POINT place{left, top};
    ScreenToClient(grid_->window(), &place);
    const RECT inside = grid_->layout().Inside();
    if (!PtInRect(&inside, place)) return S_FALSE;
    const auto line = grid_->layout().LineAt(place.y);
    const auto column = grid_->layout().ColumnAt(place.x);
    return Give(line && column ? IdOf({*line, *column}) : CHILDID_SELF, child);
  });
}

HRESULT STDMETHODCALLTYPE GridAccessible::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
  if (!end) return E_POINTER;
  VariantInit(end);
  return AnswerFor(start, [&](std::optional<GridCell> cell) -> HRESULT {
    const auto last = static_cast<LONG>(cells());
    const auto width = static_cast<LONG>(columns());
    if (!cell) {
      if (direction != NAVDIR_FIRSTCHILD && direction != NAVDIR_LASTCHILD) return DISP_E_MEMBERNOTFOUND;
      return last == 0 ? S_FALSE : Give(direction == NAVDIR_FIRSTCHILD ? 1 : last, end);
    }
    const LONG id = IdOf(*cell);
    const auto column = static_cast<LONG>(cell->column);
    switch (direction) {
      case NAVDIR_NEXT:
        return id < last ? Give(id + 1, end) : S_FALSE;
      case NAVDIR_PREVIOUS:
        return id > 1 ? Give(id - 1, end) : S_FALSE;
      case NAVDIR_RIGHT:
        return column + 1 < width ? Give(id + 1, end) : S_FALSE;
      case NAVDIR_LEFT:
        return column > 0 ? Give(id - 1, end) : S_FALSE;
      case NAVDIR_DOWN:
        return id + width <= last ? Give(id + width, end) : S_FALSE;
      case NAVDIR_UP:
        return id > width ? Give(id - width, end) : S_FALSE;
      default:
        return E_INVALIDARG;
    }
  });
}

// --- What can be done --------------------------------------------------------------------------------------

HRESULT STDMETHODCALLTYPE GridAccessible::accSelect(LONG flags, VARIANT child) {
  return AnswerFor(child, [&](std::optional<GridCell> cell) -> HRESULT {
    if ((flags & (SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION)) == 0 ||
        (flags & ~(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION)) != 0) {
      return E_INVALIDARG;  // more than one cell, or none
    }
    if (!IsWindowEnabled(grid_->window())) return S_FALSE;
    if (flags & SELFLAG_TAKEFOCUS) SetFocus(grid_->window());
    if (cell) grid_->GoTo(*cell);
    return S_OK;
  });
}

HRESULT STDMETHODCALLTYPE GridAccessible::get_accDefaultAction(VARIANT child, BSTR* action) {
  if (!action) return E_POINTER;
  *action = nullptr;
  return AnswerFor(child, [&](std::optional<GridCell> cell) {
    if (!cell) return S_FALSE;
    const ui::GridColumn& column = grid_->state().columns()[cell->column].description;
    if (column.cell_button) return Give(u"Atverti sąrašą", action);
    if (column.read_only) return S_FALSE;
    return Give(column.check_box ? u"Perjungti" : u"Keisti", action);
  });
}

HRESULT STDMETHODCALLTYPE GridAccessible::accDoDefaultAction(VARIANT child) {
  return AnswerFor(child, [&](std::optional<GridCell> cell) -> HRESULT {
    if (!cell) return DISP_E_MEMBERNOTFOUND;
    if (!IsWindowEnabled(grid_->window())) return S_FALSE;
    SetFocus(grid_->window());
    grid_->GoTo(*cell);
    grid_->Activate();
    return S_OK;
  });
}

HRESULT STDMETHODCALLTYPE GridAccessible::put_accName(VARIANT, BSTR) {
  return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE GridAccessible::put_accValue(VARIANT child, BSTR value) {
  return AnswerFor(child, [&](std::optional<GridCell> cell) -> HRESULT {
    if (!cell || !IsWindowEnabled(grid_->window())) return E_ACCESSDENIED;
    grid_->GoTo(*cell);
    return grid_->Enter(TextOf(value, SysStringLen(value))) ? S_OK : E_ACCESSDENIED;
  });
}

}  // namespace qva::windows
