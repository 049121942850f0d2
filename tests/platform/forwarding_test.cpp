// Every operation of every forwarding service reaches the target with its arguments and answers what the
// target does. Those of registry and files are gone through under their faults (tests/platform/memory).
#include "platform/forwarding.h"

#include "platform/memory/excel/Application.h"
#include "tests/platform/core_test.h"
#include "tests/ticking_clock.h"

namespace qva {
namespace {

using testing::ElementsAre;

using Forwarding = CoreTest;

TEST_F(Forwarding, FilesTellTheTargetsCurrentFolder) {
  platform.files.SetFolder(u"C:\\a");
  platform.files.SetCurrentFolder(u"C:\\a");
  EXPECT_EQ(ForwardingFiles(platform.files).CurrentFolder(), u"C:\\a");
}

TEST_F(Forwarding, ObjectFactoriesCreateTheTargetsObjectsAndPassItsErrorsOn) {
  platform.object_factory.Register<memory::Application>(u"Excel.Application");
  ForwardingObjectFactory factory(platform.object_factory);
  EXPECT_EQ(factory.Create(u"Excel.Application")->TypeName(), u"Application");
  EXPECT_EQ(RaisedBy([&] { factory.Create(u"No.Such"); }), kCannotCreateObject);
}

TEST_F(Forwarding, FormFactoriesBuildTheTargetsForms) {
  ui::ForwardingFormFactory forms(platform.forms);
  EXPECT_TRUE(dynamic_cast<MemoryForm*>(forms.Create({.name = u"frmTest"}).get()));
  EXPECT_EQ(platform.forms.created, 1);
}

TEST_F(Forwarding, FormsDoWhatTheTargetDoes) {
  platform.forms.user = [](MemoryForm& form) { form.Click(u"bt"); };
  const ui::FormDescription description{.name = u"frmTest",
                                        .width = 30,
                                        .height = 20,
                                        .controls = {{ui::ControlKind::Button, u"bt", u"", {}, u"", 0}}};
  ui::ForwardingForm form(platform.forms.Create(description));
  bool was_visible = false;
  ui::Get<ui::Button>(form, u"bt").on_click = [&] {
    was_visible = form.Visible();
    form.Hide();
  };
  form.ShowModal();
  EXPECT_TRUE(was_visible);
  EXPECT_FALSE(form.Visible());
  EXPECT_EQ(form.Width(), 30);
  EXPECT_EQ(form.Height(), 20);
  std::u16string asked;
  form.StartResizer(30, 20, [&](std::u16string_view name) -> std::optional<ui::ResizeMode> {
    asked += name;
    return std::nullopt;
  });
  EXPECT_EQ(asked, u"bt");
}

TEST_F(Forwarding, ListChoosersShowTheTargetsListWithTheSameRowMarked) {
  platform.list_chooser.user = [](const ChoiceList& list, std::u16string_view selected) {
    return selected == u"B" ? list.rows.size() : std::size_t{0};
  };
  ForwardingListChooser chooser(platform.list_chooser);
  EXPECT_EQ(chooser.Choose({u"Sąrašas", {u"Kodas"}, {{u"A"}, {u"B"}}}, u"B"), 2u);
  EXPECT_EQ(platform.list_chooser.shown.at(0).title, u"Sąrašas");
}

TEST_F(Forwarding, MessageBoxesShowTheTargetsBoxes) {
  platform.message_box.Answer(vbCancel);
  platform.message_box.Answer(2);
  ForwardingMessageBox box(platform.message_box);
  EXPECT_EQ(box.Show(u"Tekstas", vbCritical, u"Antraštė"), vbCancel);
  const std::u16string captions[] = {u"Taip", u"Ne"};
  EXPECT_EQ(box.Ask(u"Klausimas", u"Langas", captions), 2);
  const auto& shown = platform.message_box.boxes();
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(shown[0].text, u"Tekstas");
  EXPECT_EQ(shown[0].style, vbCritical);
  EXPECT_EQ(shown[0].title, u"Antraštė");
  EXPECT_EQ(shown[1].text, u"Klausimas");
  EXPECT_EQ(shown[1].title, u"Langas");
  EXPECT_THAT(shown[1].captions, ElementsAre(u"Taip", u"Ne"));
}

TEST_F(Forwarding, ClocksTellTheTargetsTimeButForWhatIsOverridden) {
  platform.clock.Set(Date{45000.5});
  platform.clock.Advance(std::chrono::milliseconds(100));
  EXPECT_EQ(ForwardingClock(platform.clock).Now(), Date{45000.5});
  EXPECT_EQ(ForwardingClock(platform.clock).Running(), std::chrono::milliseconds(100));
  const TickingClock ticking(platform.clock, std::chrono::milliseconds(7));
  EXPECT_EQ(ticking.Running(), std::chrono::milliseconds(107));
  EXPECT_EQ(ticking.Running(), std::chrono::milliseconds(114));
  EXPECT_EQ(ticking.Now(), Date{45000.5});
}

TEST_F(Forwarding, LocalesTellTheTargetsSettings) {
  platform.locale.short_date_pattern = u"dd.MM.yy";
  platform.locale.long_time_pattern = u"H:mm";
  platform.locale.decimal_separator = u";";
  const ForwardingLocale locale(platform.locale);
  EXPECT_EQ(locale.ShortDatePattern(), u"dd.MM.yy");
  EXPECT_EQ(locale.LongTimePattern(), u"H:mm");
  EXPECT_EQ(locale.DecimalSeparator(), u";");
  EXPECT_EQ(locale.NameOf(DateName::Month, 10), u"lapkritis");
  EXPECT_EQ(locale.NameOf(DateName::Weekday, 0), u"pirmadienis");
  EXPECT_EQ(locale.ToAnsi(u"ž"), "\xFE");
  EXPECT_EQ(locale.FromAnsi("\xFE"), u"ž");
}

TEST_F(Forwarding, EnvironmentsReadTheTargetsVariables) {
  platform.environment.Set(u"VARDAS", "abc");
  const ForwardingEnvironment environment(platform.environment);
  char buffer[4];
  EXPECT_EQ(environment.GetVariable(u"vardas", buffer), 3u);
  EXPECT_EQ(std::string(buffer), "abc");
  EXPECT_EQ(environment.GetVariable(u"kitas", buffer), 0u);
  EXPECT_EQ(environment.LibraryFolder(), platform.environment.library_folder);
}

}  // namespace
}  // namespace qva
