// The desk of the twin's forms (tests/platform/forms/form_contract.h), for whatever stands before them, too.
#pragma once

#include "platform/memory/MemoryForms.h"

namespace qva {

struct MemoryDesk {
  MemoryDesk() {
    memory.user = [](MemoryForm& form) { form.Click(u"btStep"); };
  }
  static bool IsThere() { return true; }
  ui::FormFactory& factory() { return memory; }
  void Show(ui::Form& form) { form.ShowModal(); }

  MemoryForms memory;
};

}  // namespace qva
