#include "platform/windows/forms/GridControl.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "platform/error.h"
#include "platform/windows/DeviceContext.h"
#include "platform/windows/WideText.h"
#include "platform/windows/forms/Font.h"
#include "platform/windows/forms/GridHeader.h"
#include "platform/windows/forms/Keyboard.h"
#include "platform/windows/forms/LateFunctions.h"

namespace qva::windows {
namespace {

// Measures in pixels at 100 % scale.
constexpr int kMarkerWidth = 20;
constexpr int kLeastColumnWidth = 16;
constexpr int kLineSpacing = 3;  // above and below the text
constexpr int kWheelColumns = 60;

void SetHeaderItem(HWND header, UINT message, int item, int width, const wchar_t* caption) {
  HDITEMW description{};
  description.mask = HDI_WIDTH;
  description.cxy = width;
  if (caption) {
    description.mask |= HDI_TEXT | HDI_FORMAT;
    description.pszText = const_cast<wchar_t*>(caption);
    description.fmt = HDF_LEFT | HDF_STRING;
  }
  SendMessageW(header, message, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&description));
}

}  // namespace

WindowClass GridControl::class_ = {L"QVA_Varnholt.Grid", &GridControl::Procedure, CS_DBLCLKS};

GridControl::GridControl(HWND parent, int id, std::u16string name, const UiScale& scale, FailureSink sink)
    : name_(std::move(name)), scale_(scale), sink_(std::move(sink)) {
  const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};  // the header among them
  late::InitCommonControlsEx(&controls);
  CreateWindowExW(WS_EX_CLIENTEDGE, class_.name, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPCHILDREN, 0,
                  0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), OwnModule(), this);
  if (window()) {
    header_ = CreateWindowExW(0, WC_HEADERW, L"", WS_CHILD | WS_VISIBLE | HDS_FULLDRAG, 0, 0, 0, 0, window(),
                              nullptr, nullptr, nullptr);
  }
  if (!header_ || !editor_.Create(window(), *this)) throw AutomationError(kOutOfMemory);
  layout_.Attach(window(), header_);
  SetFont(nullptr);
}

GridControl::~GridControl() {
  accessible_->Disconnect();
  state_.SetModel(nullptr);  // it may have gone before
}

void GridControl::SetFont(HFONT font) {
  EndEdit(true);
  font_ = font;
  windows::SetFont(header_, font);
  windows::SetFont(editor_.window(), font);
  layout_.SetLineHeight(TextHeight(window(), font) + 2 * scale_(kLineSpacing) + 1);
  layout_.Arrange();
}

void GridControl::Rescale(const UiScale& scale) {
  const UiScale before = std::exchange(scale_, scale);
  for (std::size_t column = 0; column < state_.columns().size(); ++column) {
    const RECT area = layout_.CellArea({0, column});
    const int width = MulDiv(static_cast<int>(area.right - area.left) + 1, scale.dpi, before.dpi);
    SetHeaderItem(header_, HDM_SETITEMW, static_cast<int>(column) + 1,
                  std::max(width, scale_(kLeastColumnWidth)), nullptr);
  }
  if (!state_.columns().empty()) SetHeaderItem(header_, HDM_SETITEMW, 0, scale_(kMarkerWidth), nullptr);
  SetFont(font_);
}

void GridControl::SetColumns(std::vector<ui::GridColumn> columns) {
  EndEdit(false);
  state_.SetColumns(std::move(columns));
  while (SendMessageW(header_, HDM_DELETEITEM, 0, 0)) continue;
  if (!state_.columns().empty()) SetHeaderItem(header_, HDM_INSERTITEMW, 0, scale_(kMarkerWidth), L"");
  int item = 0;
  for (const ShownColumn& column : state_.columns()) {
    SetHeaderItem(header_, HDM_INSERTITEMW, ++item,
                  std::max(scale_(column.description.width), scale_(kLeastColumnWidth)),
                  WideText(column.description.caption).c_str());
  }
  Refresh();
}

void GridControl::SetModel(ui::GridModel* model) {
  state_.SetModel(model);
  Refresh();
}

void GridControl::Refresh() {
  state_.Refresh();
  editor_.Close();
  layout_.SetLines(state_.lines());
  layout_.Arrange();
  accessible_->TellOfGrid(EVENT_OBJECT_REORDER);
}

void GridControl::SetCurrentRow(std::size_t row) {
  if (row != state_.current().line) EndEdit(true);
  if (row < state_.RowCount()) MoveTo({row, state_.current().column});
}

LRESULT CALLBACK GridControl::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_NCCREATE) {
    auto* created = static_cast<GridControl*>(reinterpret_cast<const CREATESTRUCTW*>(second)->lpCreateParams);
    created->window_.handle = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
  }
  auto* grid = reinterpret_cast<GridControl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!grid) return DefWindowProcW(window, message, first, second);
  return Guarded([&] { return grid->Handle(message, first, second); },
                 [&](std::exception_ptr failure) { grid->Fail(std::move(failure)); });
}

LRESULT GridControl::Handle(UINT message, WPARAM first, LPARAM second) {
  const POINT place{GET_X_LPARAM(second), GET_Y_LPARAM(second)};
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;  // all is painted
    case WM_SIZE:
      EndEdit(true);
      layout_.Arrange();
      return 0;
    case WM_SETFOCUS:
      accessible_->TellOfCell(EVENT_OBJECT_FOCUS);
      [[fallthrough]];
    case WM_KILLFOCUS:
      Invalidate();
      return 0;
    case WM_GETOBJECT:
      if (static_cast<DWORD>(second) != static_cast<DWORD>(OBJID_CLIENT)) break;
      return accessible_->AnswerGetObject(first);
    case WM_ENABLE:
      EndEdit(true);
      Invalidate();
      return 0;
    case WM_SYSCOLORCHANGE:
      SendMessageW(header_, message, first, second);
      Invalidate();
      return 0;
    case WM_NOTIFY:
      return HandleHeader(*reinterpret_cast<const NMHDR*>(second));
    case WM_VSCROLL:
    case WM_HSCROLL:
      EndEdit(true);
      layout_.Follow(message == WM_VSCROLL ? SB_VERT : SB_HORZ, LOWORD(first));
      return 0;
    case WM_MOUSEWHEEL:
      EndEdit(true);
      TurnWheel(GET_WHEEL_DELTA_WPARAM(first));
      return 0;
    case WM_MOUSEHWHEEL:
      EndEdit(true);
      layout_.ScrollColumns(MulDiv(GET_WHEEL_DELTA_WPARAM(first), scale_(kWheelColumns), WHEEL_DELTA));
      return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      PressMouse(place, message == WM_LBUTTONDBLCLK);
      return 0;
    case WM_MOUSEMOVE:
      TrackMouse(place);
      return 0;
    case WM_LBUTTONUP:
      ReleaseMouse();
      return 0;
    case WM_CAPTURECHANGED:
      is_tracking_ = is_button_pressed_ = false;
      Invalidate();
      return 0;
    case WM_GETDLGCODE: {
      const auto* key = reinterpret_cast<const MSG*>(second);
      const bool is_tab = key && key->message == WM_KEYDOWN && key->wParam == VK_TAB;
      return DLGC_WANTARROWS | DLGC_WANTCHARS | (is_tab && Target(VK_TAB) ? DLGC_WANTTAB : 0);
    }
    case WM_KEYDOWN:
      PressKey(static_cast<UINT>(first));
      return 0;
    case WM_SYSKEYDOWN:
      if (first != VK_DOWN) break;
      PressCellButton();
      return 0;
    case WM_CHAR:
      TypeCharacter(first);
      return 0;
    case WM_NCDESTROY:
      accessible_->Disconnect();
      SetWindowLongPtrW(window(), GWLP_USERDATA, 0);
      return DefWindowProcW(std::exchange(window_.handle, nullptr), message, first, second);
    default:
      break;
  }
  return DefWindowProcW(window(), message, first, second);
}

LRESULT GridControl::HandleHeader(const NMHDR& notice) {
  if (notice.hwndFrom != header_) return 0;
  const auto& header = reinterpret_cast<const NMHEADERW&>(notice);
  switch (notice.code) {
    case static_cast<UINT>(NM_CUSTOMDRAW):
      return DrawHeader(reinterpret_cast<const NMCUSTOMDRAW&>(notice));
    case static_cast<UINT>(HDN_BEGINTRACKW):
      EndEdit(true);
      return header.iItem == 0;  // the marker's width is fixed
    case static_cast<UINT>(HDN_ITEMCHANGINGW):
      return header.pitem && (header.pitem->mask & HDI_WIDTH) &&
             header.pitem->cxy < scale_(kLeastColumnWidth);
    case static_cast<UINT>(HDN_ITEMCHANGEDW):
      layout_.Arrange();
      return 0;
    default:
      return 0;
  }
}

void GridControl::Paint() {
  struct Painting {
    explicit Painting(HWND painted) : window(painted) { BeginPaint(window, &paint); }
    Painting(const Painting&) = delete;
    Painting& operator=(const Painting&) = delete;
    ~Painting() { EndPaint(window, &paint); }
    HWND window;
    PAINTSTRUCT paint{};
  } painting(window());
  const RECT body = layout_.Body();
  RECT dirty;
  if (!IntersectRect(&dirty, &painting.paint.rcPaint, &body)) return;
  const HWND focus = GetFocus();
  PaintGrid(painting.paint.hdc, dirty,
            {.layout = layout_,
             .state = state_,
             .font = font_,
             .is_enabled = Enabled(),
             .has_focus = focus == window() || focus == editor_.window(),
             .is_edited = editor_.is_open(),
             .is_button_pressed = is_button_pressed_});
}

bool GridControl::EditorKey(UINT key, bool alt) {
  if (alt) {
    if (key != VK_DOWN) return false;
    PressCellButton();
    return true;
  }
  switch (key) {
    case VK_RETURN:
    case VK_ESCAPE:
      EndEdit(key == VK_RETURN);
      return true;
    case VK_F4:
      PressCellButton();
      return true;
    case VK_TAB:
    case VK_UP:
    case VK_DOWN:
    case VK_PRIOR:
    case VK_NEXT:
      // A key that leads nowhere here is the form's, now that the field has closed.
      if (EndEdit(true) && !PressKey(key)) PostMessageW(window(), WM_KEYDOWN, key, 0);
      return true;
    default:
      return false;
  }
}

void GridControl::EditorLeft() {
  EndEdit(true);
  Invalidate();
}

bool GridControl::PressKey(UINT key) {
  switch (key) {
    case VK_F2:
      BeginEdit(true);
      return true;
    case VK_F4:
      PressCellButton();
      return true;
    case VK_DELETE:
      state_.DeleteCurrentRow();
      Show();
      return true;
    default: {
      const auto target = Target(key);
      if (target) MoveTo(*target);
      return target.has_value();
    }
  }
}

void GridControl::TypeCharacter(WPARAM character) {
  const ShownColumn* column = state_.CurrentColumn();
  if (!column) return;
  // The keys that follow fast are still the grid's.
  const bool is_open = editor_.is_open();
  if (!is_open && (character < VK_SPACE || IsDown(VK_CONTROL) != IsDown(VK_MENU))) return;
  if (column->description.check_box) {
    if (character != VK_SPACE) return;
    state_.TurnMark();
    return Show();
  }
  if (!is_open) BeginEdit(false);
  if (editor_.is_open()) SendMessageW(editor_.window(), WM_CHAR, character, 1);
}

void GridControl::PressMouse(POINT place, bool is_double) {
  ::SetFocus(window());  // stores what is being edited, which may change the lines
  const auto line = layout_.LineAt(place.y);
  if (!line || state_.columns().empty()) return;
  const auto column = layout_.ColumnAt(place.x);
  const GridCell cell{*line, column.value_or(state_.current().column)};
  const bool was_current = cell == state_.current();
  const RECT button = CurrentButton();
  MoveTo(cell);
  if (!column || !was_current) return;
  if (PtInRect(&button, place)) {
    is_tracking_ = is_button_pressed_ = true;
    SetCapture(window());
    Invalidate();
  } else if (state_.CurrentColumn()->description.check_box) {
    state_.TurnMark();
    Show();
  } else if (is_double) {
    BeginEdit(true);
  }
}

void GridControl::TrackMouse(POINT place) {
  if (!is_tracking_) return;
  const RECT button = CurrentButton();
  if (std::exchange(is_button_pressed_, PtInRect(&button, place) != FALSE) != is_button_pressed_)
    Invalidate();
}

void GridControl::ReleaseMouse() {
  if (!is_tracking_) return;
  const bool is_pressed = is_button_pressed_;
  ReleaseCapture();
  if (is_pressed) PressCellButton();
}

void GridControl::TurnWheel(int delta) {
  UINT lines = 3;
  SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
  const int step = lines == WHEEL_PAGESCROLL ? static_cast<int>(layout_.PageSize()) : static_cast<int>(lines);
  wheel_ += delta * step;
  layout_.ScrollLines(-(wheel_ / WHEEL_DELTA));
  wheel_ %= WHEEL_DELTA;
}

RECT GridControl::CurrentButton() const {
  return state_.HasButton() ? CellButtonArea(layout_.CellArea(state_.current())) : RECT{};
}

std::optional<GridCell> GridControl::Target(UINT key) const {
  const std::optional<GridKey> grid_key = GridKeyOf(key);
  if (!grid_key) return std::nullopt;
  return KeyTarget(*grid_key, IsDown(VK_CONTROL), IsDown(VK_SHIFT), state_.current(),
                   {layout_.lines(), state_.columns().size(), layout_.PageSize()});
}

void GridControl::MoveTo(GridCell cell) {
  state_.MoveTo(cell);
  if (!layout_.Show(cell)) Invalidate();
  if (GetFocus() != window()) return;
  accessible_->TellOfCell(EVENT_OBJECT_FOCUS);
  accessible_->TellOfCell(EVENT_OBJECT_SELECTION);
}

void GridControl::GoTo(GridCell cell) {
  EndEdit(true);
  if (cell.line < state_.lines() && cell.column < state_.columns().size()) MoveTo(cell);
}

void GridControl::Activate() {
  const ShownColumn* column = state_.CurrentColumn();
  if (!column) return;
  if (state_.HasButton()) return PressCellButton();
  if (!column->description.check_box) return BeginEdit(true);
  state_.TurnMark();
  Show();
}

bool GridControl::Enter(std::u16string_view text) {
  if (!state_.TakesText() || !state_.BeginRow()) return false;
  const bool is_stored = state_.Store(text);
  state_.GiveUp();
  Show();
  return is_stored;
}

void GridControl::Show() {
  layout_.SetLines(state_.lines());
  layout_.Arrange();
  MoveTo(state_.current());
}

void GridControl::BeginEdit(bool keep_text) {
  if (!state_.TakesText()) return;
  const bool has_row = state_.BeginRow();
  Show();
  if (!has_row) return;
  RECT area = layout_.CellArea(state_.current());
  if (state_.HasButton()) area.right = CellButtonArea(area).left;
  const int spacing = scale_(kLineSpacing);  // the field writes at its top
  const RECT field{area.left + 1, area.top + spacing, area.right - 1, area.bottom - spacing};  // in a frame
  editor_.Open(field, kCellPadding - 1, keep_text ? state_.CurrentText() : std::u16string());
  Invalidate();
}

bool GridControl::EndEdit(bool store) {
  if (!editor_.is_open()) return true;
  const bool is_changed = store && state_.model() && editor_.is_modified();
  const std::u16string text = editor_.Text();
  editor_.Close();
  const bool is_stored = is_changed && state_.Store(text);
  state_.GiveUp();
  Show();
  if (is_stored) accessible_->TellOfCell(EVENT_OBJECT_VALUECHANGE);
  return is_stored || !is_changed;
}

void GridControl::PressCellButton() {
  EndEdit(true);
  if (!state_.HasButton()) return;
  state_.PressButton();
  Show();
  // A window that was shown meanwhile may have left the focus with the form.
  if (GetActiveWindow() == GetAncestor(window(), GA_ROOT)) ::SetFocus(window());
}

}  // namespace qva::windows
