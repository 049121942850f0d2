#include "platform/windows/forms/FormWindow.h"

#include <commctrl.h>

#include <algorithm>

#include "platform/windows/DeviceContext.h"
#include "platform/windows/WideText.h"
#include "platform/windows/forms/LateFunctions.h"
#include "platform/windows/forms/VisualStyles.h"
#include "platform/windows/forms/WindowPlace.h"

namespace qva::windows {
namespace {

constexpr DWORD kExtendedStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

DWORD StyleOf(const ui::FormDescription& description) {
  return WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN |
         (description.resizable ? WS_THICKFRAME | WS_MAXIMIZEBOX : 0);
}

}  // namespace

FormWindow::FormWindow(const ui::FormDescription& description) : description_(description) {
  const PerDisplayPixels pixels;
  const VisualStyles styles;
  HWND owner = OwnerWindow();
  const RECT work = WorkArea(owner);
  window_.handle =
      CreateWindowExW(kExtendedStyle, WC_DIALOG, WideText(description_.caption).c_str(),
                      StyleOf(description_), work.left, work.top, 0, 0, owner, nullptr, nullptr, nullptr);
  if (!window()) throw AutomationError(kOutOfMemory);
  SetWindowLongPtrW(window(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  SetWindowLongPtrW(window(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
  scale_ = ScaleOf(window());
  CreateControls();
  font_ = MessageFont(scale_);
  DressControls();
  PlaceAbove(owner, window(), Outer(description_.first_width, description_.first_height));
  FindPageColor();
}

FormWindow::~FormWindow() = default;

void FormWindow::CreateControls() {
  INITCOMMONCONTROLSEX kinds{
      sizeof kinds, ICC_TAB_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES | ICC_LISTVIEW_CLASSES};
  late::InitCommonControlsEx(&kinds);
  for (const ui::ControlDescription& control : description_.controls) {
    controls_.push_back(MakeControl(*this, control));
    if (control.kind == ui::ControlKind::TabControl) tabs_ = controls_.back().get();
  }
  // What holds others lies behind them, the innermost before the outer ones.
  for (auto control = controls_.rbegin(); control != controls_.rend(); ++control) {
    const ui::ControlKind kind = (*control)->description().kind;
    if (kind != ui::ControlKind::Frame && kind != ui::ControlKind::TabControl) continue;
    SetWindowPos((*control)->window(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
  for (const auto& control : controls_)
    ShowWindow(control->window(), control->IsShown() ? SW_SHOWNA : SW_HIDE);
  MarkDefault(nullptr);
}

void FormWindow::DressControls() {
  for (const auto& control : controls_) control->Dress(font_.get(), scale_);
}

ui::Control* FormWindow::Find(std::u16string_view name) {
  const auto found = std::ranges::find_if(
      controls_, [&](const auto& control) { return control->description().name == name; });
  return found == controls_.end() ? nullptr : found->get();
}

NativeControl* FormWindow::ControlOf(HWND window) const {
  const auto found =
      std::ranges::find_if(controls_, [&](const auto& control) { return control->window() == window; });
  return found == controls_.end() ? nullptr : found->get();
}

// --- Sizes -------------------------------------------------------------------------------------------------

SIZE FormWindow::Inner() const {
  RECT inner{};
  GetClientRect(window(), &inner);
  return {inner.right, inner.bottom};
}

int FormWindow::Width() const {
  const PerDisplayPixels pixels;
  return scale_.At100Percent(Inner().cx);
}

int FormWindow::Height() const {
  const PerDisplayPixels pixels;
  return scale_.At100Percent(Inner().cy);
}

SIZE FormWindow::SmallestInner() const {
  SIZE size{scale_(description_.width), scale_(description_.height)};
  for (const auto& control : controls_) {
    if (const auto natural = control->NaturalSize()) {
      size.cx += natural->cx - scale_(control->description().bounds.width);
      size.cy += natural->cy - scale_(control->description().bounds.height);
    }
  }
  return size;
}

SIZE FormWindow::Outer(int width, int height) const {
  const SIZE least = SmallestInner();
  const SIZE inner{std::max<LONG>(least.cx, scale_(width)), std::max<LONG>(least.cy, scale_(height))};
  return WithFrame(inner, StyleOf(description_), kExtendedStyle, scale_);
}

void FormWindow::StartResizer(int width, int height,
                              std::function<std::optional<ui::ResizeMode>(std::u16string_view name)> mode) {
  const PerDisplayPixels pixels;
  layout_.StartResizer(width, height, mode);
  PlaceControls();
}

void FormWindow::PlaceControls() {
  const SIZE inner = Inner();
  const std::vector<ui::Bounds> places = layout_.Places(inner.cx, inner.cy, scale_);
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    const auto& [left, top, width, height] = places[i];
    const SIZE size = controls_[i]->NaturalSize().value_or(SIZE{width, height});
    controls_[i]->Place({left, top, left + size.cx, top + size.cy});
  }
}

void FormWindow::Rescale(UiScale scale, const RECT& place) {
  scale_ = scale;
  MessageFont font(scale);
  std::swap(font, font_);
  DressControls();  // the font before goes after that
  SIZE size{place.right - place.left, place.bottom - place.top};
  // What Windows suggests is in proportion, which not every control is.
  if (!description_.resizable) size = Outer();
  SetWindowPos(window(), nullptr, place.left, place.top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
  PlaceControls();
}

// --- Colours -----------------------------------------------------------------------------------------------

/// What a page looks like, the theme alone knows: a page is painted to see it.
void FormWindow::FindPageColor() {
  page_color_ = GetSysColor(COLOR_BTNFACE);
  if (!tabs_) return;
  RECT area;
  GetClientRect(tabs_->window(), &area);
  const WindowContext screen(window());
  const MemoryContext memory(CreateCompatibleDC(screen.get()));
  const Bitmap bitmap(CreateCompatibleBitmap(screen.get(), area.right, area.bottom));
  const Selected selected(memory.get(), bitmap.get());
  FillRect(memory.get(), &area, GetSysColorBrush(COLOR_BTNFACE));
  SendMessageW(tabs_->window(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory.get()), PRF_CLIENT);
  const COLORREF color = GetPixel(memory.get(), area.right / 2, area.bottom / 2);
  if (color != CLR_INVALID) page_color_ = color;
}

LRESULT FormWindow::PageBrush(HDC context) const {
  SetBkColor(context, page_color_);
  SetDCBrushColor(context, page_color_);
  return reinterpret_cast<LRESULT>(GetStockObject(DC_BRUSH));
}

/// Controls with a theme ask for what is behind them, the page's own colour, too.
void FormWindow::PaintBackground(HDC context) const {
  RECT area;
  GetClientRect(window(), &area);
  FillRect(context, &area, GetSysColorBrush(COLOR_BTNFACE));
  if (!tabs_) return;
  GetClientRect(tabs_->window(), &area);
  SendMessageW(tabs_->window(), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
  MapWindowPoints(tabs_->window(), window(), reinterpret_cast<POINT*>(&area), 2);
  FillRect(context, &area, reinterpret_cast<HBRUSH>(PageBrush(context)));
}

// --- Messages ----------------------------------------------------------------------------------------------

LRESULT CALLBACK FormWindow::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* form = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!form) return DefWindowProcW(window, message, first, second);
  return form->Guard([&] { return form->Handle(message, first, second); });
}

LRESULT FormWindow::Handle(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_COMMAND:
      if (NativeControl* control = ControlOf(reinterpret_cast<HWND>(second)))
        control->OnCommand(HIWORD(first));
      return 0;
    case WM_NOTIFY: {
      auto& notice = *reinterpret_cast<NMHDR*>(second);
      NativeControl* control = ControlOf(notice.hwndFrom);
      return control ? control->Answer(notice) : 0;
    }
    case WM_CLOSE:
      Close();
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(first) != WA_INACTIVE) break;
      if (NativeControl* control = Focused()) focus_ = control;
      break;
    case WM_SETFOCUS:
      if (HasField()) {
        SetFocus(focus_->window());
      } else {
        FocusFirstField();
      }
      return 0;
    case WM_SIZE:
      if (first != SIZE_MINIMIZED) PlaceControls();
      return 0;
    case WM_GETMINMAXINFO: {
      const SIZE least = Outer();
      reinterpret_cast<MINMAXINFO*>(second)->ptMinTrackSize = {least.cx, least.cy};
      return 0;
    }
    case WM_DPICHANGED:
      Rescale({HIWORD(first)}, *reinterpret_cast<const RECT*>(second));
      return 0;
    case WM_ERASEBKGND:
      PaintBackground(reinterpret_cast<HDC>(first));
      return 1;
    case WM_CTLCOLORSTATIC: {
      const NativeControl* control = ControlOf(reinterpret_cast<HWND>(second));
      const LRESULT brush = DefWindowProcW(window(), message, first, second);
      // Fields that are disabled ask, too; they keep their own colour.
      const bool is_on_page =
          control && control->page() &&
          (control->description().kind != ui::ControlKind::TextBox || control->description().read_only) &&
          control->description().kind != ui::ControlKind::ComboBox;
      return is_on_page ? PageBrush(reinterpret_cast<HDC>(first)) : brush;
    }
    case WM_THEMECHANGED:
    case WM_SYSCOLORCHANGE:
      for (const auto& control : controls_) SendMessageW(control->window(), message, first, second);
      FindPageColor();
      InvalidateRect(window(), nullptr, TRUE);
      return 0;
    case WM_NCDESTROY:  // the owner has gone
      Hide();
      SetWindowLongPtrW(window(), GWLP_USERDATA, 0);
      window_.handle = nullptr;
      return 0;
    default:
      break;
  }
  return DefWindowProcW(window(), message, first, second);
}

}  // namespace qva::windows
