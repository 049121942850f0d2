#include "platform/memory/MemoryMessageBox.h"

#include "tests/platform/forms/message_box_contract.h"

#include <gmock/gmock.h>

namespace qva {
namespace {

class MemoryBoxUser {
 public:
  static bool IsThere() { return true; }
  void Press(std::u16string_view title, std::int32_t button) {
    Expect(title);
    box_.Answer(button);
  }
  void Close(std::u16string_view title) {
    Expect(title);
    box_.Close();
  }
  MessageBox& box() { return box_; }

 private:
  /// The twin keeps the title that it is given.
  void Expect(std::u16string_view title) {
    box_.on_show = [this, title] {
      const std::u16string& shown = box_.boxes().back().title;
      EXPECT_EQ(shown.empty() ? kLibraryName : shown, title);
    };
  }

  MemoryMessageBox box_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(MemoryMessageBox, MessageBoxContract, MemoryBoxUser);

namespace {

TEST(MemoryMessageBox, RemembersWhatWasShown) {
  MemoryMessageBox box;
  EXPECT_EQ(box.Show(u"Klaida", vbCritical, u"QVA"), vbOK);
  const std::u16string captions[] = {u"Taip", u"Ne"};
  EXPECT_EQ(box.Ask(u"Tęsti?", u"Klausimas", captions), 1);
  ASSERT_EQ(box.boxes().size(), 2u);
  EXPECT_EQ(box.boxes()[0].text, u"Klaida");
  EXPECT_EQ(box.boxes()[0].style, vbCritical);
  EXPECT_EQ(box.boxes()[0].title, u"QVA");
  EXPECT_EQ(box.boxes()[0].answer, vbOK);
  EXPECT_TRUE(box.boxes()[0].captions.empty());
  EXPECT_EQ(box.boxes()[1].text, u"Tęsti?");
  EXPECT_EQ(box.boxes()[1].title, u"Klausimas");
  EXPECT_THAT(box.boxes()[1].captions, testing::ElementsAre(u"Taip", u"Ne"));
  EXPECT_EQ(box.boxes()[1].answer, 1);
}

TEST(MemoryMessageBox, AnswersFromTheScriptInOrderAndThenTheFirstButton) {
  MemoryMessageBox box;
  box.Answer(2);
  box.Answer(3);
  const std::u16string captions[] = {u"a", u"b", u"c"};
  EXPECT_EQ(box.Show(u"", vbOKOnly, u""), 2);
  EXPECT_EQ(box.UnusedAnswers(), 1u);
  EXPECT_EQ(box.Ask(u"", u"", captions), 3);
  EXPECT_EQ(box.boxes()[1].answer, 3);
  EXPECT_EQ(box.Ask(u"", u"", captions), 1);
}

TEST(MemoryMessageBox, KnowsTheFirstButtonOfEachStyle) {
  MemoryMessageBox box;
  constexpr std::int32_t kFirstOfStyle[] = {1, 1, 3, 6, 6, 4};
  for (std::int32_t style = 0; style < 6; ++style) {
    EXPECT_EQ(box.Show(u"", style + vbCritical, u""), kFirstOfStyle[style]) << style;
  }
}

}  // namespace
}  // namespace qva
