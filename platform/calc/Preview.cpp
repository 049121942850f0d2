#include "platform/calc/Preview.h"

#include <algorithm>
#include <com/sun/star/frame/DispatchHelper.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <memory>
#include <vector>

#include "platform/calc/EventLoop.h"
#include "platform/calc/SheetDocument.h"
#include "platform/calc/Uno.h"
#include "platform/calc/UnoObject.h"
#include "platform/calc/UnoValue.h"
#include "platform/excel_constants.h"

namespace qva::calc {
namespace {

using css::frame::XModel;

// The commands by which a window of LibreOffice changes its view. Unlike .uno:PrintPreview and
// .uno:ClosePreview, which come to the same later, they do it at once.
constexpr char kCellsView[] = "slot:5630";
constexpr char kPreviewView[] = "slot:5631";

void SwitchView(const Reference<XModel>& document, const char* view) {
  const Reference<css::frame::XController> controller(document->getCurrentController(), UNO_SET_THROW);
  const Reference<css::frame::XDispatchProvider> frame(controller->getFrame(), UNO_QUERY_THROW);
  css::frame::DispatchHelper::create(Context())->executeDispatch(frame, OUString::createFromAscii(view), "",
                                                                 0, {});
}

/// A preview that was asked for and is not shown yet.
struct ComingPreview {
  Reference<XModel> document;
  Reference<css::sheet::XSpreadsheet> sheet;
};

std::vector<std::shared_ptr<ComingPreview>>& Coming() {
  // Never destroyed: at the end of the process LibreOffice's objects are gone before us.
  static auto& coming = *new std::vector<std::shared_ptr<ComingPreview>>;
  return coming;
}

/// Shows a preview that is still to come.
void Show(const std::shared_ptr<ComingPreview>& preview) {
  if (std::erase(Coming(), preview) == 0) return;
  const Reference<css::sheet::XSpreadsheetView> view(preview->document->getCurrentController(), UNO_QUERY);
  if (!view.is()) return;
  view->setActiveSheet(preview->sheet);
  SwitchView(preview->document, kPreviewView);
}

}  // namespace

bool ShowsPreview(const Reference<XModel>& document) {
  const Reference<css::frame::XController> controller = document->getCurrentController();
  return controller.is() && !Reference<css::sheet::XSpreadsheetView>(controller, UNO_QUERY).is();
}

void LeavePreview(const Reference<XModel>& document) {
  if (ShowsPreview(document)) SwitchView(document, kCellsView);
}

Value PrintPreview(const ObjectPtr& sheet, const Arguments&) {
  Call(sheet, u"Activate");
  const auto preview =
      std::make_shared<ComingPreview>(ComingPreview{DocumentOf(sheet), SpreadsheetOf(sheet)});
  std::erase_if(Coming(), [&](const auto& other) { return other->document == preview->document; });
  Coming().push_back(preview);
  Post([preview] { Show(preview); });
  return {};
}

Value SetVisible(const ObjectPtr& sheet, const Arguments& arguments) {
  if (arguments.positional.size() != 1) throw AutomationError(kWrongArgumentCount);
  if (!Coming().empty() && arguments.positional[0].ToInt32() != xlSheetVisible) {
    const Reference<css::sheet::XSpreadsheet> hidden = SpreadsheetOf(sheet);
    const auto found = std::ranges::find_if(
        Coming(), [&](const auto& preview) { return AreOneSheet(preview->sheet, hidden); });
    if (found != Coming().end()) Show(std::shared_ptr(*found));
  }
  return static_cast<UnoObject&>(*sheet).InvokeOwn(Access::Put, u"Visible", arguments);
}

}  // namespace qva::calc
