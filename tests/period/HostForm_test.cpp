#include "period/HostForm.h"

#include "period/frmReportPeriod.h"
#include "tests/library_fixture.h"

namespace qva {
namespace {

class HostFormTest : public LibraryTest {
 protected:
  /// Shows a form to a user who presses a button.
  bool Press(std::u16string_view button) {
    platform.forms.user = [button](MemoryForm& form) { form.Click(button); };
    const std::unique_ptr<ui::Form> form = platform.forms.Create(ReportPeriodLayout());
    HostForm host_form(*form, ui::Get<ui::Button>(*form, u"btOk"), ui::Get<ui::Button>(*form, u"btCancel"),
                       u"Nustatymai");
    host_form.ok_click = ok_click;
    return host_form.ShowModal();
  }

  std::function<void(bool& verdict, std::u16string& message)> ok_click;
};

TEST_F(HostFormTest, IsConfirmedByOkWhereNobodyRefuses) {
  EXPECT_TRUE(Press(u"btOk"));
  ok_click = [](bool&, std::u16string&) {};
  EXPECT_TRUE(Press(u"btOk")) << "the verdict is left as it is";
  EXPECT_FALSE(Press(u"btCancel"));
}

TEST_F(HostFormTest, IsNotConfirmedByOkThatIsRefused) {
  ok_click = [](bool& verdict, std::u16string&) { verdict = false; };
  EXPECT_FALSE(Press(u"btOk"));
}

}  // namespace
}  // namespace qva
