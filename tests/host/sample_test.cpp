// What others say of the sample companies, against the sample itself.
#include "host/Sample.h"

#include <set>

#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

using SampleTest = HostTest;

TEST_F(SampleTest, HasTheBookThatIsTakenWhereNoneWasChosen) {
  EXPECT_EQ(OpenBook(FromUtf8(kSampleBook)).BookCode(), FromUtf8(kSampleBook));
}

TEST_F(SampleTest, HasTheFoldersThatAreMadeForIt) {
  OpenBook(FromUtf8(kSampleBook));
  const Database database(options_.database, Database::Mode::Read);
  const Statement query = database.Prepare("SELECT DISTINCT Folder FROM PathKey");
  std::multiset<std::string> folders;
  for (Cursor row = query.Run({}); row.Next();) {
    const std::u16string folder = row.Text(0);
    ASSERT_EQ(folder.substr(1, 2), u":\\") << ToUtf8(folder);
    folders.insert(ToUtf8(folder.substr(0, 1) + ReplaceAll(folder.substr(2), u"\\", u"/")));
  }
  EXPECT_EQ(folders, std::multiset<std::string>(std::begin(kSampleFolders), std::end(kSampleFolders)));
}

}  // namespace
}  // namespace qva::embedded
