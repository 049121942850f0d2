#include <set>

#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

class MessageResourceTest : public HostTest {
 protected:
  host::MessageResource Texts() {
    const auto resource = host::MessageResource::Create(factory_);
    resource.Init(u"QVAFormRes");
    return resource;
  }
  /// A message resource whose libraries stand in the test's own folder.
  host::MessageResource OwnResource() {
    options_.resources = folder_.path();
    EmbeddedHost factory(options_, platform_.services());
    return host::MessageResource::Create(factory);
  }
};

TEST_F(MessageResourceTest, HasATextForEveryNumberThatIsAskedFor) {
  std::vector<std::int32_t> numbers = {810, 811, 828, 836, 16514};
  for (std::int32_t number = 800; number <= 808; ++number) numbers.push_back(number);
  for (std::int32_t number = 813; number <= 820; ++number) numbers.push_back(number);
  for (std::int32_t number = 840; number <= 849; ++number) numbers.push_back(number);
  const auto texts = Texts();
  for (const std::int32_t number : numbers) EXPECT_FALSE(texts.Text(number).empty()) << number;
}

TEST_F(MessageResourceTest, ExactlyTheTextsWithAParameterHaveItsPlaceholder) {
  const std::set<std::int32_t> with_parameter = {800, 814, 819, 842};
  const auto texts = Texts();
  int found = 0;
  for (std::int32_t number = 800; number <= 849; ++number) {
    std::u16string text;
    if (!IgnoreErrors([&] { text = texts.Text(number); })) continue;
    ++found;
    const bool has_placeholder = text.find(u"%0") != std::u16string::npos;
    EXPECT_EQ(has_placeholder, with_parameter.contains(number)) << number;
    EXPECT_EQ(ReplaceAll(text, u"%0", u"").find(u'%'), std::u16string::npos) << number;
  }
  EXPECT_EQ(found, 31);
  EXPECT_EQ(texts.Text(16514).find(u'%'), std::u16string::npos);
}

TEST_F(MessageResourceTest, CaptionsAreSingleLinesThatDifferWithinTheirToolbar) {
  const auto texts = Texts();
  std::set<std::u16string> captions;
  for (std::int32_t number = 843; number <= 849; ++number) captions.insert(texts.Text(number));
  EXPECT_EQ(captions.size(), 7u);
  for (const std::int32_t number : {817, 818, 820, 841, 843, 844, 845, 846, 847, 848, 849}) {
    EXPECT_EQ(texts.Text(number).find(u'\n'), std::u16string::npos) << number;
    EXPECT_LE(texts.Text(number).size(), 30u) << number;
  }
}

TEST_F(MessageResourceTest, LithuanianTextsComeThroughWhole) {
  EXPECT_EQ(Texts().Text(842), u"Nepavyko prisijungti prie apskaitos knygos „%0“.");
  EXPECT_EQ(Texts().Text(800),
            u"Aplankas „%0“ įtrauktas į naudotojo paieškos kelią PATH.\n"
            u"Pakeitimas galios programoms, paleistoms po šio pranešimo.");
}

TEST_F(MessageResourceTest, ANumberWithoutATextIsOutOfRange) {
  for (const std::int32_t number : {0, -1, 809, 999999}) {
    const auto error = ErrorOf([&] { Texts().Text(number); });
    ASSERT_TRUE(error) << number;
    EXPECT_EQ(error->number(), kSubscriptOutOfRange);
    EXPECT_EQ(error->source(), u"QVA_Common");
    EXPECT_THAT(ToUtf8(error->description()), testing::EndsWith(ToUtf8(NumberText(number))));
  }
}

TEST_F(MessageResourceTest, ReadingATextBeforeInitIsRefused) {
  ExpectFailure([&] { host::MessageResource::Create(factory_).Text(800); }, Failure::NotInitialised,
                u"QVA_Common", u"before MessageResource.Init");
}

TEST_F(MessageResourceTest, AnUnknownLibraryIsRefused) {
  ExpectFailure([&] { host::MessageResource::Create(factory_).Init(u"OtherRes"); },
                Failure::NoResourceLibrary, u"QVA_Common", u"\"OtherRes\" cannot be read");
}

TEST_F(MessageResourceTest, ALibrarysNameCannotLeadOutOfTheFolder) {
  WriteFile(folder_.path() / "Lib.txt", "1 a\n");
  std::filesystem::create_directory(folder_.path() / "sub");
  options_.resources = folder_.path() / "sub";
  EmbeddedHost factory(options_, platform_.services());
  const auto resource = host::MessageResource::Create(factory);
  for (const auto name : {u"../Lib", u"..\\Lib", u"", u"Lib.txt", u"Lib\0x"}) {
    ExpectFailure([&] { resource.Init(name); }, Failure::NoResourceLibrary, u"QVA_Common",
                  u"resource library \"" + std::u16string(name) + u"\"");
  }
}

TEST_F(MessageResourceTest, AFolderInPlaceOfTheFileIsRefused) {
  std::filesystem::create_directory(folder_.path() / "Lib.txt");
  ExpectFailure([&] { OwnResource().Init(u"Lib"); }, Failure::NoResourceLibrary, u"QVA_Common",
                u"\"Lib\" cannot be read");
}

TEST_F(MessageResourceTest, AMalformedLineIsNamedAndLeavesTheObjectAsItWas) {
  WriteFile(folder_.path() / "Good.txt", "1 a\n");
  WriteFile(folder_.path() / "Bad.txt", "1 b\nx\n");
  const auto resource = OwnResource();
  resource.Init(u"Good");
  ExpectFailure([&] { resource.Init(u"Bad"); }, Failure::MalformedResource, u"QVA_Common",
                u"\"Bad\" has in line 2 no number");
  EXPECT_EQ(resource.Text(1), u"a");
}

}  // namespace
}  // namespace qva::embedded
