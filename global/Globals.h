// The library-wide globals: what gExcelObject sets up and every other class reads.
#pragma once

#include "platform/excel.h"
#include "platform/host.h"

namespace qva {

/// One set for the loaded library, whatever the number of gExcelObject instances. All empty at first.
struct Globals {
  excel::Application application;  ///< set by InitConnectEX, cleared when a gExcelObject is released
  host::Book oBook;
  ObjectPtr oToolBars;     ///< a CToolbars; gExcelObject alone makes and hands it out
  ObjectPtr oEnvironment;  ///< a CEnvironment, likewise
  host::Plant oMyPlant;
};

/// The set. It is never destroyed: at the end of the process its objects' servers may be gone already.
Globals& TheGlobals();

/// Empties the set, for tests.
void ResetGlobals();

}  // namespace qva
