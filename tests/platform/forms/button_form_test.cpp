#include "platform/forms/button_form.h"

#include <gmock/gmock.h>

#include <vector>

#include "platform/forms/memory_form.h"
#include "tests/raised_error.h"

namespace qva {
namespace {

using testing::ElementsAre;

class ButtonFormTest : public testing::Test {
 protected:
  ButtonFormTest() {
    look.width_of = [](std::u16string_view line) { return 10 * static_cast<int>(line.size()); };
    look.line_height = 15;
    look.margin = 12;
    look.greatest_text = 100;
    look.least_button = 50;
    look.button_padding = 5;
    look.button_height = 20;
  }
  ui::FormDescription Form(std::u16string_view text, std::vector<std::u16string> captions = {u"Gerai"}) {
    return ButtonForm(text, u"Klausimas", captions, look);
  }
  std::u16string Lines(std::u16string_view text) { return Form(text).controls[0].caption; }
  /// What is pressed when a user does something with a box of three buttons.
  static std::int32_t Pressed(ui::FormDescription description, MemoryForm::User user) {
    MemoryForm form(description, std::move(user));
    return PressedButton(form);
  }

  ButtonFormLook look;
};

std::vector<int> Place(const ui::ControlDescription& control) {
  const ui::Bounds& bounds = control.bounds;
  return {bounds.left, bounds.top, bounds.width, bounds.height};
}

// --- Lines -------------------------------------------------------------------------------------------------

TEST_F(ButtonFormTest, BreaksATextBeforeTheWordThatIsTooWide) {
  EXPECT_EQ(Lines(u"Ar įrašyti"), u"Ar įrašyti") << "just as wide as it may be";
  EXPECT_EQ(Lines(u"Ar įrašyti?"), u"Ar\nįrašyti?");
  EXPECT_EQ(Lines(u"Ar jūs tikrai norite tai įrašyti"), u"Ar jūs\ntikrai\nnorite tai\nįrašyti");
}

TEST_F(ButtonFormTest, AWordThatIsTooWideStandsAloneAndWidensTheForm) {
  EXPECT_EQ(Lines(u"/namai/ataskaitos"), u"/namai/ataskaitos");
  const ui::FormDescription form = Form(u"Yra /namai/ataskaitos jau");
  EXPECT_EQ(form.controls[0].caption, u"Yra\n/namai/ataskaitos\njau");
  EXPECT_THAT(Place(form.controls[0]), ElementsAre(12, 12, 170, 45));
  EXPECT_EQ(form.width, 194);
}

TEST_F(ButtonFormTest, KeepsLinesOfTheTextWhateverEndsThem) {
  EXPECT_EQ(Lines(u"a\r\nb\nc\rd\r\n\r\ne"), u"a\nb\nc\nd\n\ne");
  EXPECT_EQ(Lines(u"vienas du\r\ntrys keturi penki"), u"vienas du\ntrys\nketuri\npenki");
  EXPECT_EQ(Lines(u"Taip\nne, bet"), u"Taip\nne, bet") << "each line has its own width";
  EXPECT_EQ(Lines(u"\nilgesnis žodis"), u"\nilgesnis\nžodis");
}

TEST_F(ButtonFormTest, KeepsBlanks) {
  EXPECT_EQ(Lines(u"  a  b "), u"  a  b ");
  EXPECT_EQ(Lines(u"a\n  b"), u"a\n  b");
  EXPECT_EQ(Lines(u" vienuolika1"), u" vienuolika1") << "no line is empty for a blank's sake";
}

TEST_F(ButtonFormTest, AnEmptyTextIsALine) {
  EXPECT_THAT(Place(Form(u"").controls[0]), ElementsAre(12, 12, 0, 15));
}

// --- Places ------------------------------------------------------------------------------------------------

TEST_F(ButtonFormTest, PlacesTheButtonsInTheMiddleBelowTheText) {
  const ui::FormDescription form = Form(u"Ar\nįrašyti", {u"Ne", u"Labai ilgas"});
  EXPECT_THAT(Place(form.controls[0]), ElementsAre(12, 12, 70, 30));
  EXPECT_THAT(Place(form.controls[1]), ElementsAre(12, 54, 50, 20)) << "as wide as a button is at least";
  EXPECT_THAT(Place(form.controls[2]), ElementsAre(70, 54, 120, 20)) << "as its caption needs it";
  EXPECT_EQ(form.width, 202);
  EXPECT_EQ(form.height, 86);

  EXPECT_THAT(Place(Form(u"Ar įrašyti").controls[1]), ElementsAre(32, 39, 60, 20));
  look.least_width = 300;
  EXPECT_EQ(Form(u"Ar įrašyti").width, 300);
  EXPECT_THAT(Place(Form(u"Ar įrašyti").controls[1]), ElementsAre(120, 39, 60, 20));
}

TEST_F(ButtonFormTest, LeavesRoomForASign) {
  look.sign = 36;
  ui::FormDescription form = Form(u"Ar įrašyti");
  EXPECT_THAT(Place(form.controls[0]), ElementsAre(60, 22, 100, 15)) << "beside the sign's middle";
  EXPECT_EQ(form.controls[1].bounds.top, 60);
  EXPECT_EQ(form.width, 172);
  EXPECT_EQ(form.height, 92);

  form = Form(u"a\nb\nc");
  EXPECT_THAT(Place(form.controls[0]), ElementsAre(60, 12, 10, 45)) << "higher than the sign";
  EXPECT_EQ(form.controls[1].bounds.top, 69);
}

// --- Buttons -----------------------------------------------------------------------------------------------

TEST_F(ButtonFormTest, HasTitleAndCaptionsAsTheyAreGiven) {
  const ui::FormDescription form = Form(u"A & B", {u"A & &B", u"Ne"});
  EXPECT_EQ(form.caption, u"Klausimas");
  EXPECT_EQ(form.controls[0].caption, u"A & B");
  EXPECT_EQ(form.controls[1].caption, u"A & &B");
  EXPECT_EQ(form.controls[1].bounds.width, 70) << "each sign of it shows";
}

TEST_F(ButtonFormTest, GivesTheNumberOfThePressedButton) {
  for (const std::int32_t number : {1, 2, 3}) {
    EXPECT_EQ(Pressed(Form(u"Ar?", {u"Taip", u"Ne", u"Atšaukti"}),
                      [number](MemoryForm& form) {
                        const std::u16string names[] = {u"Button1", u"Button2", u"Button3"};
                        form.Click(names[number - 1]);
                        EXPECT_FALSE(form.Visible());
                      }),
              number);
  }
}

TEST_F(ButtonFormTest, TheFirstButtonHasFocusAndEnter) {
  const ui::FormDescription form = Form(u"Ar?", {u"Taip", u"Ne", u"Atšaukti"});
  EXPECT_EQ(form.default_button, u"Button1");
  Pressed(form, [](MemoryForm& shown) { EXPECT_EQ(shown.focused(), u"Button1"); });
}

TEST_F(ButtonFormTest, EscapeAndClosingPressTheLastButton) {
  const ui::FormDescription form = Form(u"Ar?", {u"Taip", u"Ne", u"Atšaukti"});
  EXPECT_EQ(form.cancel_button, u"Button3");
  EXPECT_EQ(Pressed(form, [](MemoryForm& shown) { shown.CloseWindow(); }), 3);
  EXPECT_EQ(Pressed(Form(u"Ar?"), [](MemoryForm& shown) { shown.CloseWindow(); }), 1);
}

TEST_F(ButtonFormTest, AFormThatEndsWithoutAButtonGivesNone) {
  EXPECT_EQ(Pressed(Form(u"Ar?"), [](MemoryForm& form) { form.Hide(); }), 0);
}

TEST_F(ButtonFormTest, RaisesWhatShowingRaises) {
  EXPECT_EQ(
      RaisedBy([&] { Pressed(Form(u"Ar?"), [](MemoryForm&) { throw AutomationError(kOutOfMemory); }); }),
      kOutOfMemory);
}

}  // namespace
}  // namespace qva
