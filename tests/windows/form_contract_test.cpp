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
    Show(form, {[&] { SendMessageW(windows::WindowOf(form, u"btStep"), BM_CLICK, 0, 0); }});
  }
  void ShowGrid(ui::Form& form, std::u16string_view text) {
    if (text.empty()) return Show(form, {[] { windows::PressKey(VK_F4); }});
    Show(form, {[&] { windows::TypeText(text); }, [] { windows::PressKey(VK_RETURN); }});
  }

 private:
  static void Show(ui::Form& form, std::vector<std::function<void()>> steps) {
    const windows::WindowBelow below;
    const windows::FormUser user(form, std::move(steps));
    form.ShowModal();
  }

  windows::NativeForms forms_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(NativeForms, FormContract, WindowsDesk);

}  // namespace qva
