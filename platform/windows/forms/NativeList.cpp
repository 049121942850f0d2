#include "platform/windows/forms/NativeList.h"

#include <utility>

#include "platform/windows/WideText.h"
#include "platform/windows/forms/FormWindow.h"

namespace qva::windows {

NativeList::NativeList(FormWindow& form, const ui::ControlDescription& description)
    : NativeControl(form, description), scale_(form.scale()) {
  Create(WC_LISTVIEWW, {},
         WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_OWNERDATA | LVS_NOSORTHEADER,
         WS_EX_CLIENTEDGE);
  Send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
}

void NativeList::SetColumns(std::vector<ui::GridColumn> columns) {
  state_.SetColumns(std::move(columns));
  while (Send(LVM_DELETECOLUMN)) {
  }
  for (int i = 0; const ShownColumn& shown : state_.columns()) {
    std::wstring caption = WideText(shown.description.caption);
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.pszText = caption.data();
    column.iSubItem = i;
    column.cx = scale_(shown.description.width);
    Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(i++), reinterpret_cast<LPARAM>(&column));
  }
  Refresh();
}

void NativeList::SetModel(ui::GridModel* model) {
  state_.SetModel(model);
  Refresh();
}

void NativeList::Refresh() {
  state_.Refresh();
  Mark(static_cast<WPARAM>(-1), 0);  // the number would stay selected, whatever row has it now
  Send(LVM_SETITEMCOUNT, state_.RowCount());
  FitLastColumn();  // there may be a scroll bar more or less
  SetCurrentRow(state_.current().line);
  InvalidateRect(window(), nullptr, FALSE);
}

void NativeList::SetCurrentRow(std::size_t row) {
  if (row >= state_.RowCount()) return;
  Mark(row, LVIS_SELECTED | LVIS_FOCUSED);  // which Windows tells Answer
  Send(LVM_ENSUREVISIBLE, row, FALSE);
}

LRESULT NativeList::Answer(NMHDR& notice) {
  switch (notice.code) {
    case static_cast<UINT>(LVN_GETDISPINFOW):
      Tell(reinterpret_cast<NMLVDISPINFOW&>(notice).item);
      return 0;
    case static_cast<UINT>(LVN_ITEMCHANGED): {
      const auto& change = reinterpret_cast<const NMLISTVIEW&>(notice);
      const bool is_current = change.uNewState & (LVIS_SELECTED | LVIS_FOCUSED);
      if (change.iItem >= 0 && is_current) state_.MoveTo({static_cast<std::size_t>(change.iItem), 0});
      return 0;
    }
    case static_cast<UINT>(NM_CUSTOMDRAW):
      return Draw(reinterpret_cast<NMLVCUSTOMDRAW&>(notice));
    case static_cast<UINT>(NM_DBLCLK):
      if (reinterpret_cast<const NMITEMACTIVATE&>(notice).iItem >= 0) Raise(on_pick);
      return 0;
    case static_cast<UINT>(LVN_ODFINDITEMW):
      return -1;  // the field above looks for texts; a letter typed here finds no row
    default:
      return 0;
  }
}

void NativeList::Tell(LVITEMW& item) const {
  if (!(item.mask & LVIF_TEXT)) return;
  const GridCell cell{static_cast<std::size_t>(item.iItem), static_cast<std::size_t>(item.iSubItem)};
  const bool is_column = cell.column < state_.columns().size();
  lstrcpynW(item.pszText, WideText(is_column ? state_.TextOf(cell) : u"").c_str(), item.cchTextMax);
}

/// The current row looks so wherever the focus is: that is where Enter goes.
LRESULT NativeList::Draw(NMLVCUSTOMDRAW& draw) const {
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && draw.nmcd.dwItemSpec == CurrentRow()) {
    draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
    draw.clrText = GetSysColor(COLOR_HIGHLIGHTTEXT);
    draw.clrTextBk = GetSysColor(COLOR_HIGHLIGHT);
  }
  return CDRF_DODEFAULT;
}

void NativeList::Mark(WPARAM line, UINT state) {
  LVITEMW item{};
  item.state = state;
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  Send(LVM_SETITEMSTATE, line, reinterpret_cast<LPARAM>(&item));
}

void NativeList::Dress(HFONT font, UiScale scale) {
  NativeControl::Dress(font, scale);
  const UiScale before = std::exchange(scale_, scale);
  for (std::size_t i = 0; i < state_.columns().size(); ++i) {
    const auto width = static_cast<int>(Send(LVM_GETCOLUMNWIDTH, i));
    Send(LVM_SETCOLUMNWIDTH, i, MulDiv(width, scale.dpi, before.dpi));
  }
}

void NativeList::Place(const RECT& place) {
  NativeControl::Place(place);
  FitLastColumn();
}

void NativeList::FitLastColumn() {
  if (state_.columns().empty()) return;
  Send(LVM_SETCOLUMNWIDTH, state_.columns().size() - 1, LVSCW_AUTOSIZE_USEHEADER);
}

}  // namespace qva::windows
