// CReports: the protection flag and the fill of zones.
#include "global/Globals.h"
#include "reports/CReports.h"
#include "reports/FrozenScreen.h"

namespace qva {
namespace {

constexpr std::int32_t kGrey = 15;  ///< of Excel's palette

}  // namespace

// No error is handled, so that each reaches the macro; only the screen, which this call froze, is thawed
// first.
void CReports::Locking(excel::Range rZona) {
  is_locking_ = !is_locking_;
  const excel::Application application = TheGlobals().application;
  const excel::Range active_cell = application.ActiveCell();
  WithScreenFrozen(application, true, [&] {
    rZona.Select();
    application.Selection().SetLocked(is_locking_);
    active_cell.Activate();
  });
}

void CReports::ColorRanges(excel::Range rGrey, excel::Range, excel::Range, bool pColor) {
  ShowingErrors([&] {
    const excel::Application application = TheGlobals().application;
    WithScreenFrozen(application, application.ScreenUpdating(), [&] {
      if (rGrey) rGrey.Interior().SetColorIndex(pColor ? kGrey : xlColorIndexNone);
    });
  });
}

}  // namespace qva
