#include "platform/memory/excel/FileSearch.h"

#include "tests/platform/memory/excel/excel_test.h"

namespace qva::memory {
namespace {

class FileSearchTest : public ExcelTest {
 protected:
  FileSearchTest() {
    excel->AddFile(u"C:\\Arch\\Balansas.xls");
    excel->AddFile(u"C:\\Arch\\Pelnas.xls");
    excel->AddFile(u"C:\\Arch\\2024\\Balansas.xls");
  }

  Value Found(std::u16string_view folder, std::u16string_view name) {
    Put(search, u"LookIn", folder);
    Put(search, u"FileName", name);
    return Call(search, u"Execute");
  }

  ObjectPtr search = GetObject(application, u"FileSearch");
};

TEST_F(FileSearchTest, CountsTheFilesOfAFolderByNameAndPattern) {
  EXPECT_EQ(Found(u"C:\\Arch", u"Balansas.xls"), Value(1));
  EXPECT_EQ(Found(u"c:\\arch\\", u"BALANSAS.XLS"), Value(1));
  EXPECT_EQ(Found(u"C:\\Arch", u"*.xls"), Value(2));
  EXPECT_EQ(Found(u"C:\\Arch", u"Balans??.xls"), Value(1));
  EXPECT_EQ(Found(u"C:\\Arch", u"Sąnaudos.xls"), Value(0));
  EXPECT_EQ(Found(u"C:\\Nera", u"*"), Value(0));
}

TEST_F(FileSearchTest, KeepsWhatWasSet) {
  Put(search, u"LookIn", u"C:\\Arch");
  search.reset();
  EXPECT_EQ(Get(GetObject(application, u"FileSearch"), u"LookIn"), Value(u"C:\\Arch"));
}

TEST_F(FileSearchTest, IsMissingInLaterExcels) {
  excel->RemoveFileSearch();
  EXPECT_EQ(RaisedBy([&] { Get(application, u"FileSearch"); }), kUnsupportedAction);
}

}  // namespace
}  // namespace qva::memory
