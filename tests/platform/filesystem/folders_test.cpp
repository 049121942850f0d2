#include "platform/filesystem/folders.h"

#include <gtest/gtest.h>

#include "platform/memory/MemoryPlatform.h"
#include "platform/text.h"

namespace qva {
namespace {

class MakeFoldersTest : public testing::Test {
 protected:
  MemoryPlatform platform_;
  MemoryFiles& files_ = platform_.files;
};

TEST_F(MakeFoldersTest, MakesWhatIsMissingOfThePath) {
  MakeFolders(files_, u"C:\\Ataskaitos\\Archyvas\\Metai");
  EXPECT_TRUE(files_.FolderExists(u"C:\\Ataskaitos\\Archyvas\\Metai"));
  MakeFolders(files_, u"C:\\Ataskaitos\\Baltija");
  EXPECT_TRUE(files_.FolderExists(u"C:\\Ataskaitos\\Baltija"));
}

TEST_F(MakeFoldersTest, TakesEitherSeparatorAlsoAtTheEnd) {
  for (const auto* path : {u"C:/Ataskaitos/Archyvas", u"C:\\Baltija/Archyvas", u"C:\\Formos\\Archyvas\\"}) {
    MakeFolders(files_, path);
    EXPECT_TRUE(files_.FolderExists(path)) << ToUtf8(path);
  }
}

TEST_F(MakeFoldersTest, LeavesWhatIsThere) {
  files_.SetFolder(u"C:\\Ataskaitos");
  for (const auto* path : {u"C:\\Ataskaitos", u"C:", u"C:\\", u""})
    EXPECT_NO_THROW(MakeFolders(files_, path));
}

TEST_F(MakeFoldersTest, RaisesWhereAFolderCannotBeMade) {
  files_.SetFile(u"C:\\Ataskaitos\\rinkmena", "");
  EXPECT_THROW(MakeFolders(files_, u"C:\\Ataskaitos\\rinkmena\\Archyvas"), AutomationError);
}

}  // namespace
}  // namespace qva
