// The desk of the twin's forms (tests/platform/forms/form_contract.h), for whatever stands before them, too.
#pragma once

#include "platform/memory/MemoryForms.h"

namespace qva {

struct MemoryDesk {
  MemoryDesk() {
    memory.user = [this](MemoryForm& form) { user(form); };
  }
  static bool IsThere() { return true; }
  ui::FormFactory& factory() { return memory; }
  void Show(ui::Form& form) {
    user = [](MemoryForm& shown) { shown.Click(u"btStep"); };
    form.ShowModal();
  }
  void ShowGrid(ui::Form& form, std::u16string_view text) {
    user = [text](MemoryForm& shown) {
      if (text.empty()) return shown.PressCellButton(u"grid", 0, u"A");
      shown.TypeCell(u"grid", 0, u"A", text);
    };
    form.ShowModal();
  }

  MemoryForms memory;
  MemoryForm::User user;
};

}  // namespace qva
