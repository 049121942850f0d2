#include "reports/CReports.h"

#include "tests/library_fixture.h"

namespace qva {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A cell that keeps its value.
class Cell : public Described<Cell> {
 public:
  static ClassBuilder Describe() {
    return ClassBuilder(u"Range", "").Property<&Cell::value>(u"Value").Default(u"Value");
  }
  Value value;
};

class Reports : public LibraryTest {
 protected:
  static constexpr std::size_t kFillAttrParameters = 23;

  /// A call of FillAttr with every cell given; cells[13] is the ID's place and stays unused.
  Arguments AllCells() {
    Arguments arguments;
    for (std::size_t i = 0; i < kFillAttrParameters; ++i) {
      cells.push_back(MakeRef<Cell>());
      arguments.positional.push_back(i == 13 ? Value(std::int32_t{7})
                                             : Value(interceptor.Wrap(cells[i], u"Range")));
    }
    return arguments;
  }

  Value ValueOf(std::size_t i) const { return cells[i]->value; }

  ObjectPtr global = Connected();
  ObjectPtr reports = Create(u"CReports");
  std::vector<Ref<Cell>> cells;
};

TEST_F(Reports, FillAttrWritesTheEightAttributesAndLeavesTheRestAlone) {
  Call(reports, u"FillAttr", AllCells());
  const char16_t* const expected[] = {
      u"302511789",      u"LT100005117810", u"UAB „Medvilnė“",        u"Šaltinių g. 12, LT-03215 Vilnius",
      u"(8 5) 212 3456", u"(8 5) 212 3457", u"Žygimantas Ąžuolaitis", u"Eglė Čepėnienė"};
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(ValueOf(i), Value(expected[i])) << i;
  for (std::size_t i = 8; i < kFillAttrParameters; ++i) EXPECT_EQ(ValueOf(i), Value()) << i;
}

TEST_F(Reports, FillAttrWithTheNameAloneWritesNothingElse) {
  const auto name = MakeRef<Cell>();
  trace.Clear();
  Arguments arguments;
  arguments.Named(u"rPavad", name);
  Call(reports, u"FillAttr", std::move(arguments));
  EXPECT_EQ(name->value, Value(u"UAB „Medvilnė“"));
  EXPECT_THAT(trace.lines(), ElementsAre("CreateObject(\"NVXCommonObjects.CompanyAttributes\")",
                                         "CompanyAttributes.Init(CommonObjects.CreateBook(\"MEDVILNE\"))",
                                         "CompanyAttributes.Name -> \"UAB „Medvilnė“\""));
}

TEST_F(Reports, FillAttrFillsEachPartOfTheAddressAlone) {
  const std::pair<std::u16string_view, std::u16string_view> parts[] = {
      {u"rAdresas", u"Šaltinių g. 12, LT-03215 Vilnius"},
      {u"rTelefonas", u"(8 5) 212 3456"},
      {u"rFaksas", u"(8 5) 212 3457"}};
  for (const auto& [name, text] : parts) {
    const auto cell = MakeRef<Cell>();
    Arguments arguments;
    arguments.Named(name, cell);
    Call(reports, u"FillAttr", std::move(arguments));
    EXPECT_EQ(cell->value, Value(text));
  }
}

TEST_F(Reports, FillAttrSkipsNullCellsAndFillsTheOthers) {
  Arguments arguments = AllCells();
  for (const std::size_t skipped : {0u, 3u, 6u}) arguments.positional[skipped] = ObjectPtr();
  arguments.positional[1] = Missing{};
  Call(reports, u"FillAttr", std::move(arguments));
  for (const std::size_t skipped : {0u, 1u, 3u, 6u}) EXPECT_EQ(ValueOf(skipped), Value()) << skipped;
  for (const std::size_t filled : {2u, 4u, 5u, 7u}) EXPECT_NE(ValueOf(filled), Value()) << filled;
}

TEST_F(Reports, FillAttrWithoutArgumentsOnlyAsksTheHost) {
  EXPECT_EQ(RaisedBy([&] { Call(reports, u"FillAttr"); }), 0);
}

TEST_F(Reports, FillAttrMakesTheCompanyObjectAnewOnEachCall) {
  trace.Clear();
  Call(reports, u"FillAttr");
  Call(reports, u"FillAttr");
  EXPECT_EQ(std::count(trace.lines().begin(), trace.lines().end(),
                       "CreateObject(\"NVXCommonObjects.CompanyAttributes\")"),
            2);
}

TEST_F(Reports, FillAttrTakesTheRoleAndContactKindsOfTheHost) {
  host.books[u"MEDVILNE"].persons.erase(u"DIR");
  host.books[u"MEDVILNE"].addresses[u""].contacts.erase(u"FA");
  Call(reports, u"FillAttr", AllCells());
  EXPECT_EQ(ValueOf(5), Value(u""));
  EXPECT_EQ(ValueOf(6), Value(u""));
}

TEST_F(Reports, FillAttrBeforeTheConnectionFailsWithTheHostsError) {
  Call(global, u"ResetConnectEX", {std::int16_t{0}});
  EXPECT_NE(RaisedBy([&] { Call(reports, u"FillAttr", AllCells()); }), 0);
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ(ValueOf(i), Value()) << i;
}

TEST_F(Reports, FillAttrRefusesACellThatIsNoObject) {
  EXPECT_EQ(RaisedBy([&] { Call(reports, u"FillAttr", {u"A1"}); }), kTypeMismatch);
}

// The calls of a whole FillAttr, in their order.
const char* const kFillAttrCalls[] = {
    "CreateObject(\"NVXCommonObjects.CompanyAttributes\")",
    "CompanyAttributes.Init(CommonObjects.CreateBook(\"MEDVILNE\"))",
    "CompanyAttributes.Code -> \"302511789\"",
    "Range.Value = \"302511789\"",
    "CompanyAttributes.VATCode -> \"LT100005117810\"",
    "Range.Value = \"LT100005117810\"",
    "CompanyAttributes.Name -> \"UAB „Medvilnė“\"",
    "Range.Value = \"UAB „Medvilnė“\"",
    "CompanyAttributes.Address(\"\")",
    "CompanyAttributes.Address(\"\").FullText -> \"Šaltinių g. 12, LT-03215 Vilnius\"",
    "Range.Value = \"Šaltinių g. 12, LT-03215 Vilnius\"",
    "CompanyAttributes.Address(\"\").Contact(\"TEL\") -> \"(8 5) 212 3456\"",
    "Range.Value = \"(8 5) 212 3456\"",
    "CompanyAttributes.Address(\"\").Contact(\"FA\") -> \"(8 5) 212 3457\"",
    "Range.Value = \"(8 5) 212 3457\"",
    "CompanyAttributes.ResponsiblePerson(\"DIR\") -> \"Žygimantas Ąžuolaitis\"",
    "Range.Value = \"Žygimantas Ąžuolaitis\"",
    "CompanyAttributes.ResponsiblePerson(\"FDIR\") -> \"Eglė Čepėnienė\"",
    "Range.Value = \"Eglė Čepėnienė\""};

TEST_F(Reports, FillAttrFillsCellByCellWithNineteenHostCalls) {
  trace.Clear();
  Call(reports, u"FillAttr", AllCells());
  EXPECT_THAT(trace.lines(), testing::ElementsAreArray(kFillAttrCalls));
}

// Whichever host call fails, its error reaches the macro, the cells before it are filled, the others
// untouched.
TEST_F(Reports, FillAttrEndsAsAgreedWhicheverHostCallFails) {
  const long live = Object::LiveCount();
  for (std::size_t n = 1; n <= std::size(kFillAttrCalls) + 1; ++n) {
    SCOPED_TRACE(n);
    const bool fails = n <= std::size(kFillAttrCalls);
    failure.Reset(static_cast<long>(n));
    const std::int32_t number = RaisedBy([&] { Call(reports, u"FillAttr", AllCells()); });
    EXPECT_EQ(failure.has_failed(), fails);
    failure.Reset(0);
    EXPECT_EQ(number, fails ? kAutomationFailed : 0);
    const auto puts_before = std::count_if(kFillAttrCalls, kFillAttrCalls + n - 1, [](std::string_view call) {
      return call.starts_with("Range.Value");
    });
    for (std::size_t i = 0; i < kFillAttrParameters; ++i) {
      EXPECT_EQ(ValueOf(i) != Value(), static_cast<std::ptrdiff_t>(i) < puts_before) << "cell " << i;
    }
    cells.clear();
    EXPECT_EQ(Object::LiveCount(), live);
  }
}

TEST_F(Reports, FillBnksAccNeverChangesACell) {
  std::vector<Ref<Cell>> five;
  Arguments arguments;
  for (int i = 0; i < 5; ++i) {
    five.push_back(MakeRef<Cell>());
    five.back()->value = u"before";
    arguments.positional.push_back(five.back());
  }
  count.Reset();
  Call(reports, u"FillBnksAcc", std::move(arguments));
  for (const auto& cell : five) EXPECT_EQ(cell->value, Value(u"before"));
  EXPECT_EQ(count.calls(), 0);
}

TEST_F(Reports, InitTakesTheWorkbookOverAndSetsTheCaptionInTheStatedOrder) {
  Call(Get(excel, u"Workbooks").ToObject(), u"Add");
  trace.Clear();
  count.Reset();
  Call(reports, u"Init", {u"Balansas"});
  EXPECT_THAT(
      trace.lines(),
      ElementsAre("Application.ActiveWorkbook", "Application.ActiveWindow",
                  "Application.ActiveWindow.Caption = \"Balansas\"", "Application.ScreenUpdating = False",
                  "Application.DisplayFormulaBar = True", "Application.ScreenUpdating = True"));
  EXPECT_EQ(count.calls(), 6);
  EXPECT_EQ(Get(GetObject(excel, u"ActiveWindow"), u"Caption"), Value(u"Balansas"));
}

TEST_F(Reports, InitWithoutAWindowRaisesAndLeavesTheScreenAlone) {
  Put(excel, u"DisplayFormulaBar", false);
  EXPECT_EQ(RaisedBy([&] { Call(reports, u"Init", {u"Balansas"}); }), kObjectNotSet);
  EXPECT_EQ(Get(excel, u"DisplayFormulaBar"), Value(false));
}

TEST_F(Reports, InitFreesTheScreenWhicheverStepExcelRefusesOrMemoryIsShortFor) {
  Call(Get(excel, u"Workbooks").ToObject(), u"Add");
  for (long n = 1; n <= 6; ++n) {
    SCOPED_TRACE(n);
    failure.Reset(n);
    EXPECT_EQ(RaisedBy([&] { Call(reports, u"Init", {u"Balansas"}); }), kAutomationFailed);
    EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(true));
    failure.Reset(n, CallFailure::Kind::NoMemory);
    EXPECT_THROW(Call(reports, u"Init", {u"Balansas"}), std::bad_alloc);
    EXPECT_EQ(Get(excel, u"ScreenUpdating"), Value(true));
  }
}

TEST_F(Reports, InitWithoutAConnectionRaisesObjectNotSet) {
  global.reset();
  EXPECT_EQ(RaisedBy([&] { Call(reports, u"Init", {u"Balansas"}); }), kObjectNotSet);
}

TEST_F(Reports, ReleaseLetsGoOfTheWorkbook) {
  Call(Get(excel, u"Workbooks").ToObject(), u"Add");
  const ObjectPtr workbook = GetObject(application, u"ActiveWorkbook");
  const long before = workbook->ReferenceCount();
  Call(reports, u"Init", {u"Balansas"});
  EXPECT_EQ(workbook->ReferenceCount(), before + 1);
  reports.reset();
  EXPECT_EQ(workbook->ReferenceCount(), before);
}

}  // namespace
}  // namespace qva
