#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

using MessageTest = HostTest;

TEST_F(MessageTest, ShowsTextTitleAndOneButtonForEachCaption) {
  host::Message::Create(factory_).Show(u"Ar tęsti?", u"Ataskaita", {u"Taip", u"Ne"});
  ASSERT_EQ(platform_.message_box.boxes().size(), 1u);
  const auto& box = platform_.message_box.boxes().front();
  EXPECT_EQ(box.text, u"Ar tęsti?");
  EXPECT_EQ(box.title, u"Ataskaita");
  EXPECT_THAT(box.captions, testing::ElementsAre(u"Taip", u"Ne"));
}

TEST_F(MessageTest, GivesTheNumberOfThePressedButton) {
  const auto message = host::Message::Create(factory_);
  platform_.message_box.Answer(2);
  platform_.message_box.Answer(1);
  EXPECT_EQ(message.Show(u"?", u"", {u"Taip", u"Ne"}), 2);
  EXPECT_EQ(message.Show(u"?", u"", {u"Taip", u"Ne"}), 1);
}

TEST_F(MessageTest, RefusesCaptionsThatAreNoListOrAnEmptyOne) {
  const auto message = host::Message::Create(factory_);
  ExpectFailure([&] { message.Show(u"?", u"", {}); }, Failure::WrongParameters, u"QVA_Common",
                u"needs a caption");
  const auto error = ErrorOf([&] { Call(message.object(), u"Show", {u"?", u"", u"Gerai"}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), kTypeMismatch);
  EXPECT_TRUE(platform_.message_box.boxes().empty());
}

}  // namespace
}  // namespace qva::embedded
