#include "tests/doctor/doctor_test.h"

namespace qva::doctor {
namespace {

BitnessFacts Full() {
  BitnessFacts facts = GoodMachine().bitnesses[0];
  facts.hives[1].foreign = 3;
  facts.hives[1].servers.emplace_back(u"C:\\Kita vieta\\Žemėlapis.dll");
  facts.files[0].zone = 3;
  facts.files[1].load_code = 126;
  facts.creations[0] = {
      .identifier = u"QVA_Varnholt.CTools", .code = 0x80040154, .class_id = u"{1}", .type_name = u"_CTools"};
  facts.host_classes[0].code = 0x8007007E;
  facts.host_classes[0].is_for_other = true;
  facts.host_classes[1].is_behind_demo = true;
  facts.book = {.is_asked = true, .error = -2147221503, .text = u"Nėra knygos"};
  facts.archive_folder.write_code = 5;
  return facts;
}

TEST(Facts, ComeBackFromTheirTextAsTheyWere) {
  BitnessFacts read;
  ReadFacts(FactsText(Full()), read);
  EXPECT_EQ(FactsText(read), FactsText(Full()));
  EXPECT_TRUE(read.is_complete);
  ASSERT_EQ(read.hives.size(), 2u);
  EXPECT_EQ(read.hives[1].servers.back(), u"C:\\Kita vieta\\Žemėlapis.dll");
  EXPECT_EQ(read.files[0].zone, 3);
  EXPECT_EQ(read.creations[0].code, 0x80040154u);
  EXPECT_EQ(read.creations[0].type_name, u"_CTools");
  EXPECT_EQ(read.book.error, -2147221503);
  EXPECT_TRUE(read.host_classes[0].is_for_other);
  EXPECT_TRUE(read.host_classes[1].is_behind_demo);
}

TEST(Facts, TellWhatWasBeingDoneWhenTheirTextEnds) {
  BitnessFacts facts = Full();
  facts.is_complete = false;
  facts.doing = u"LoadLibrary";
  BitnessFacts read;
  ReadFacts(FactsText(facts), read);
  EXPECT_FALSE(read.is_complete);
  EXPECT_EQ(read.doing, u"LoadLibrary");
}

TEST(Facts, KeepALineALineWhateverTheRegistryHolds) {
  BitnessFacts facts;
  facts.files = {{.path = u"C:\\a\tb\nfile\r\n"}};
  BitnessFacts read;
  ReadFacts(FactsText(facts), read);
  ASSERT_EQ(read.files.size(), 1u);
  EXPECT_EQ(read.files[0].path, u"C:\\a b file  ");
}

TEST(Facts, PassOverWhatIsNoneOfTheirs) {
  BitnessFacts read;
  ReadFacts("\nserver\tno hive\nfile\nhive\t1\tx\n\xff\tnonsense\ncomplete", read);
  EXPECT_TRUE(read.is_complete);
  ASSERT_EQ(read.files.size(), 1u);
  EXPECT_TRUE(read.files[0].path.empty());
  EXPECT_EQ(read.hives.size(), 1u);
}

TEST(Facts, FindAFileInAnyLetterCase) {
  const BitnessFacts facts = Full();
  EXPECT_NE(facts.File(u"c:\\varnholt\\X64\\qva_varnholt.DLL"), nullptr);
  EXPECT_EQ(facts.File(u"C:\\Nera.dll"), nullptr);
}

}  // namespace
}  // namespace qva::doctor
