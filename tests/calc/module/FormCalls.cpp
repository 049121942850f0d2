#include "tests/calc/module/FormCalls.h"

#include <new>
#include <stdexcept>

#include "platform/controls.h"
#include "platform/services.h"
#include "platform/text.h"

namespace qva {
namespace {

void Raise(std::u16string_view failure) {
  if (failure == u"memory") throw std::bad_alloc();
  if (failure == u"range") throw std::out_of_range("beyond the end");
  if (failure == u"error") throw AutomationError(kApplicationDefined, u"Form", u"Refused");
}

std::u16string WhatComesOut(ui::Form& form) {
  try {
    form.ShowModal();
    return u"nothing";
  } catch (const AutomationError& error) {
    return NumberText(error.number()) + u" " + error.description();
  } catch (const std::bad_alloc&) {
    return u"bad_alloc";
  } catch (const std::exception& exception) {
    return FromUtf8(exception.what());
  }
}

}  // namespace

ClassBuilder FormCalls::Describe() {
  return ClassBuilder(u"FormCalls", "Shows forms whose handlers fail")
      .Method<&FormCalls::Show>(u"Show", {{u"Failure"}})
      .Method<&FormCalls::LiveObjects>(u"LiveObjects", {});
}

std::u16string FormCalls::Show(const std::u16string& failure) {
  ui::FormDescription description;
  description.name = u"Failing";
  description.caption = u"Klaida: " + failure;
  description.width = 200;
  description.height = 80;
  description.default_button = u"Go";
  description.controls = {{ui::ControlKind::Button, u"Go", u"Gerai", {50, 20, 100, 30}, u"", 0}};
  const auto form = GetServices().forms->Create(description);
  ui::Get<ui::Button>(*form, u"Go").on_click = [&] {
    Raise(failure);
    form->Hide();
  };
  const std::u16string outcome = WhatComesOut(*form);
  return outcome + (form->Visible() ? u", still visible" : u"");
}

}  // namespace qva
