#include "global/Globals.h"

namespace qva {

Globals& TheGlobals() {
  static Globals& globals = *new Globals;
  return globals;
}

void ResetGlobals() {
  TheGlobals() = {};
}

}  // namespace qva
