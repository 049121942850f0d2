#include "excelui/ConnectedExcel.h"

#include "global/Globals.h"

namespace qva {

void ConnectedExcel::Hold() {
  if (!application_) application_ = TheGlobals().application;
}

excel::Application ConnectedExcel::Application() const {
  return application_ ? application_ : TheGlobals().application;
}

}  // namespace qva
