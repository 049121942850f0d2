// Native forms keep what all forms promise.
#include "tests/platform/forms/form_contract.h"
#include "tests/windows/form_test.h"

namespace qva {
namespace {

class WindowsDesk {
 public:
  static bool IsThere() { return windows::HasDisplay(); }
  ui::FormFactory& factory() { return forms_; }
  void Show(ui::Form& form) {
    const windows::WindowBelow below;
    const windows::FormUser user(form,
                                 {[&] { SendMessageW(windows::WindowOf(form, u"btStep"), BM_CLICK, 0, 0); }});
    form.ShowModal();
  }

 private:
  windows::NativeForms forms_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(NativeForms, FormContract, WindowsDesk);

}  // namespace qva
