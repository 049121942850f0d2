// The library on the embedded host: what a workbook gets where the host system is not installed.
#include "global/Globals.h"
#include "global/StartUp.h"
#include "platform/member_table.h"
#include "platform/settings.h"
#include "server/PublicClasses.h"
#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

/// A cell, as far as FillAttr needs one.
class Cell : public Described<Cell> {
 public:
  static ClassBuilder Describe() { return ClassBuilder(u"Range", "").Property<&Cell::value>(u"Value"); }
  Value value;
};

class LibraryOnEmbeddedHost : public HostTest {
 protected:
  LibraryOnEmbeddedHost() {
    Services services = platform_.services();
    services.object_factory = &factory_;
    InstallServices(services);
  }
  ~LibraryOnEmbeddedHost() override {
    ResetGlobals();
    ShutDown();
  }

  void SetCurrentBook(std::u16string_view code) {
    platform_.registry.SetText(SettingsKeyPath(host::kSettingsApplication, host::kFormsSection),
                               host::kBookSetting, platform_.locale.ToAnsi(code));
  }
  static ObjectPtr Create(std::u16string_view class_name) {
    return CreatePublicObject(*FindPublicClass(u"QVA_Varnholt." + std::u16string(class_name)));
  }
  static Value Connect(const ObjectPtr& global) {
    return Call(global, u"InitConnectEX", {ObjectPtr(), ObjectPtr()});
  }
};

TEST_F(LibraryOnEmbeddedHost, ConnectsToTheCurrentBook) {
  SetCurrentBook(u"BALTIJA");
  const ObjectPtr global = Create(u"gExcelObject");
  EXPECT_EQ(Connect(global).ToInt16(), 1);
  const ObjectPtr book = GetObject(global, u"oBook");
  EXPECT_EQ(Get(book, u"BookCode"), Value(u"BALTIJA"));
  EXPECT_EQ(GetObject(GetObject(global, u"oMyPlant"), u"Book"), book);
  EXPECT_EQ(GetObject(GetObject(TheClientTools().object(), u"Session"), u"Book"), book);
}

TEST_F(LibraryOnEmbeddedHost, SaysInLithuanianThatThereIsNoSuchBookOrNoneChosen) {
  const ObjectPtr global = Create(u"gExcelObject");
  auto error = ErrorOf([&] { Connect(global); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->source(), u"InitConnectEX");
  EXPECT_EQ(error->description(),
            u"Nepasirinkta apskaitos knyga. Atverkite ją apskaitos sistemoje ir bandykite dar kartą.");
  SetCurrentBook(u"NERA");
  error = ErrorOf([&] { Connect(global); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->description(), u"Nepavyko prisijungti prie apskaitos knygos „NERA“.");
}

TEST_F(LibraryOnEmbeddedHost, FillsTheCompanysAttributesIntoCells) {
  SetCurrentBook(u"MEDVILNE");
  const ObjectPtr global = Create(u"gExcelObject");
  Connect(global);
  std::vector<Ref<Cell>> cells;
  Arguments arguments;
  for (int i = 0; i < 8; ++i) {
    cells.push_back(MakeRef<Cell>());
    arguments.positional.push_back(cells.back());
  }
  Call(Create(u"CReports"), u"FillAttr", arguments);
  std::vector<std::u16string> texts;
  for (const auto& cell : cells) texts.push_back(cell->value.ToText());
  EXPECT_THAT(texts, testing::ElementsAre(u"398417265", u"LT100099172410", u"UAB „Medvilnės namai“",
                                          u"Audėjų g. 14-3, LT-44177 Kaunas", u"+370 37 000 112",
                                          u"+370 37 000 113", u"Rūta Žiedaitė", u"Šarūnas Įkalnis"));
}

}  // namespace
}  // namespace qva::embedded
