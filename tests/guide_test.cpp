// The guide for authors of workbooks, which is made from the member tables and must not fall behind them.
#include "tools/guide/Guide.h"
#include "tests/test_paths.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace qva {
namespace {

TEST(Guide, IsTheOneThatTheMemberTablesGive) {
  const std::filesystem::path sources = SourceFolder();
  std::ifstream file(sources / "docs" / "guide.md", std::ios::binary);
  std::ostringstream committed;
  committed << file.rdbuf();
  EXPECT_EQ(committed.str(), MakeGuide(sources)) << "make docs writes it anew";
}

TEST(Guide, ListsMembersAsBasicDeclaresThem) {
  const std::string guide = MakeGuide(SourceFolder());
  for (const char* line :
       {"| `InitConnectEX(App As Object, objWB As Variant, [oAppBook As Object]) As Integer` |",
        "| `CheckFileName(ByRef FileName As String)` |",
        "| `sBCaption(i As Byte) As String` | Caption; read and written |", "| `VisibleToolbar As Boolean` |",
        "[sMacros As String = \"RestoreApp\"]"}) {
    EXPECT_NE(guide.find(line), guide.npos) << line;
  }
}

TEST(Guide, RefusesAFolderWithoutItsSources) {
  EXPECT_THROW(MakeGuide("/nonexistent"), std::runtime_error);
}

}  // namespace
}  // namespace qva
