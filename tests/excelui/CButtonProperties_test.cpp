#include "excelui/CButtonProperties.h"

#include "tests/library_fixture.h"

namespace qva {
namespace {

class ButtonProperties : public LibraryTest {
 protected:
  void Add(int i) { Call(buttons, u"Add", {static_cast<std::int32_t>(i)}); }
  int Total() { return Get(buttons, u"TotalButtons").As<std::uint8_t>(); }

  ObjectPtr buttons = Create(u"CButtonProperties");
};

TEST_F(ButtonProperties, StartEmpty) {
  EXPECT_EQ(Total(), 0);
  EXPECT_EQ(RaisedBy([&] { Get(buttons, u"sBCaption", {std::int32_t{1}}); }), kSubscriptOutOfRange);
}

TEST_F(ButtonProperties, KeepEachFieldOfEachButton) {
  Add(2);
  const std::pair<const char16_t*, Value> fields[] = {
      {u"sBCaption", u"Spausdinti"}, {u"sBTooltipText", u"Užuomina"},
      {u"sBPicture", u"Picture01"},  {u"sBTag", u"TagPrint"},
      {u"sBOnKey", u"^{s}"},         {u"sBOnAction", u"knyga.xls!Saugoti"},
      {u"nBID", std::int32_t{2521}}, {u"nBFaceID", std::int32_t{-7}},
      {u"bBVisible", true},          {u"bBGroup", true}};
  for (const auto& [name, value] : fields) {
    const Value empty = Get(buttons, name, {std::int32_t{2}});
    Arguments arguments{std::int32_t{2}, value};
    buttons->Invoke(Access::Put, name, arguments);
    EXPECT_EQ(Get(buttons, name, {std::int32_t{2}}), value) << ToUtf8(name);
    EXPECT_EQ(Get(buttons, name, {std::int32_t{1}}), empty) << ToUtf8(name) << " of the other button";
  }
}

TEST_F(ButtonProperties, AddKeepsWhatIsThere) {
  Add(1);
  Arguments arguments{std::int32_t{1}, u"Pirmas"};
  buttons->Invoke(Access::Put, u"sBCaption", arguments);
  Add(1);
  EXPECT_EQ(Total(), 2);
  EXPECT_EQ(Get(buttons, u"sBCaption", {std::int32_t{1}}), Value(u"Pirmas"));
  Add(0);
  EXPECT_EQ(Total(), 2);
}

TEST_F(ButtonProperties, AnIndexOutsideTheListIsAnError) {
  Add(3);
  for (const std::int32_t i : {0, 4}) {
    EXPECT_EQ(RaisedBy([&] { Get(buttons, u"nBID", {i}); }), kSubscriptOutOfRange) << i;
  }
  EXPECT_EQ(RaisedBy([&] { Get(buttons, u"nBID", {std::int32_t{256}}); }), kOverflow);
}

TEST_F(ButtonProperties, CountAbove255Overflows) {
  Add(200);
  EXPECT_EQ(RaisedBy([&] { Add(56); }), kOverflow);
  EXPECT_EQ(Total(), 200);
  Add(55);
  EXPECT_EQ(Total(), 255);
}

TEST_F(ButtonProperties, ResetKeepsTheCountForALaterAdd) {
  Add(3);
  Call(buttons, u"Reset");
  EXPECT_EQ(Total(), 0);
  Add(2);
  EXPECT_EQ(Total(), 5);
  Call(buttons, u"Reset");
  Add(0);
  EXPECT_EQ(Total(), 5) << "the count alone brings the list back, with empty buttons";
  EXPECT_EQ(Get(buttons, u"sBCaption", {std::int32_t{1}}), Value(u""));
}

TEST_F(ButtonProperties, AddingNoneToNoneStaysEmpty) {
  Add(0);
  EXPECT_EQ(Total(), 0);
}

}  // namespace
}  // namespace qva
