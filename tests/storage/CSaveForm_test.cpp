#include "storage/CSaveForm.h"

#include "tests/library_fixture.h"

namespace qva {
namespace {

class SaveForm : public LibraryTest {
 protected:
  ObjectPtr form = Create(u"CSaveForm");
};

TEST_F(SaveForm, ReadsAndWritesItsTexts) {
  for (const auto* name : {u"ErrorDescr", u"FileFullPath", u"GeneralPath"}) {
    EXPECT_EQ(Get(form, name), Value(u""));
    Put(form, name, u"C:\\Archyvas\\ąčę");
    EXPECT_EQ(Get(form, name), Value(u"C:\\Archyvas\\ąčę")) << ToUtf8(name);
  }
}

TEST_F(SaveForm, AnErrorStatusBringsTheHostsDescription) {
  host.texts[803] = u"Nenurodytas formos identifikatorius";
  Put(form, u"ErrorStatus", std::int32_t{3});
  EXPECT_EQ(Get(form, u"ErrorStatus"), Value(std::uint8_t{3}));
  EXPECT_EQ(Get(form, u"ErrorDescr"), Value(u"Nenurodytas formos identifikatorius"));
}

TEST_F(SaveForm, ErrorStatus0LeavesTheDescription) {
  Put(form, u"ErrorDescr", u"senas");
  Put(form, u"ErrorStatus", std::int32_t{0});
  EXPECT_EQ(Get(form, u"ErrorDescr"), Value(u"senas"));
}

TEST_F(SaveForm, ErrorStatusIsAByte) {
  EXPECT_EQ(ErrorNumberOf([&] { Put(form, u"ErrorStatus", std::int32_t{256}); }), kOverflow);
}

}  // namespace
}  // namespace qva
