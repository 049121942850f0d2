#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

using EmbeddedHostTest = HostTest;

TEST_F(EmbeddedHostTest, CreatesEveryClassOfTheHostInAnyLetterCase) {
  for (const std::u16string_view identifier : host::kCreatableClasses) {
    const std::u16string_view type_name = identifier.substr(identifier.find(u'.') + 1);
    EXPECT_EQ(factory_.Create(identifier)->TypeName(), type_name);
    EXPECT_EQ(factory_.Create(ToLower(identifier))->TypeName(), type_name);
  }
}

TEST_F(EmbeddedHostTest, RaisesCannotCreateForAForeignIdentifier) {
  for (const auto identifier :
       {u"Scripting.FileSystemObject", u"NVXCommonObjects.Book", u"CommonObjects", u""}) {
    const auto error = ErrorOf([&] { factory_.Create(identifier); });
    ASSERT_TRUE(error) << ToUtf8(identifier);
    EXPECT_EQ(error->number(), kCannotCreateObject);
  }
}

TEST_F(EmbeddedHostTest, GivesANewObjectEachTime) {
  EXPECT_NE(factory_.Create(host::kPlant), factory_.Create(host::kPlant));
}

TEST_F(EmbeddedHostTest, TouchesNoFileBeforeABookIsAskedFor) {
  const ObjectPtr common_objects = factory_.Create(host::kCommonObjects);
  const ObjectPtr data_access = factory_.Create(host::kDataAccess);
  EXPECT_THAT(Files(), testing::IsEmpty());
}

TEST_F(EmbeddedHostTest, ObjectsOutliveTheFactory) {
  host::Book book;
  host::CommonObjects common_objects;
  {
    EmbeddedHost factory(options_, platform_.services());
    common_objects = host::CommonObjects::Create(factory);
    book = common_objects.CreateBook(u"MEDVILNE");
  }
  EXPECT_EQ(book.BookCode(), u"MEDVILNE");
  EXPECT_EQ(common_objects.CreateBook(u"BALTIJA").BookCode(), u"BALTIJA");
}

TEST_F(EmbeddedHostTest, APlantKeepsTheBookThatInitGaveIt) {
  const auto book = OpenBook(u"MEDVILNE");
  const auto plant = host::Plant::Create(factory_);
  plant.Init(book);
  EXPECT_EQ(GetObject(plant.object(), u"Book"), book.object());
}

TEST_F(EmbeddedHostTest, APlantRefusesInitWithoutABookAndUseBeforeInit) {
  const auto plant = host::Plant::Create(factory_);
  ExpectFailure([&] { plant.Init(host::Book()); }, Failure::WrongParameters, u"NVXCommonObjects",
                u"Plant.Init needs a book");
  ExpectFailure([&] { GetObject(plant.object(), u"Book"); }, Failure::NotInitialised, u"NVXCommonObjects",
                u"before Plant.Init");
}

TEST_F(EmbeddedHostTest, ClientToolsWorkOnTheBookThatWasSet) {
  const auto book = OpenBook(u"BALTIJA");
  const auto tools = host::ClientTools::Create(factory_);
  EXPECT_FALSE(GetObject(GetObject(tools.object(), u"Session"), u"Book"));
  tools.SetBook(book);
  EXPECT_EQ(GetObject(GetObject(tools.object(), u"Session"), u"Book"), book.object());
  tools.SetBook(host::Book());
  EXPECT_FALSE(GetObject(GetObject(tools.object(), u"Session"), u"Book"));
}

TEST_F(EmbeddedHostTest, MakesItsDatabaseForTheUserAlone) {
  options_.database = folder_.path() / "data" / "host.sqlite";
  EmbeddedHost factory(options_, platform_.services());
  host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE");
  using std::filesystem::perms;
  EXPECT_EQ(std::filesystem::status(options_.database).permissions(), perms::owner_read | perms::owner_write);
  EXPECT_EQ(std::filesystem::status(options_.database.parent_path()).permissions(), perms::owner_all);
}

TEST_F(EmbeddedHostTest, TakesAnOldDatabaseFromOthersInItsOwnFolderAlone) {
  using std::filesystem::perms;
  options_.database = folder_.path() / "data" / "host.sqlite";
  const auto folder = options_.database.parent_path();
  const perms everybodys_file =
      perms::owner_read | perms::owner_write | perms::group_read | perms::others_read;
  const perms everybodys_folder = perms::all & ~(perms::group_write | perms::others_write);
  const auto open = [&] {
    EmbeddedHost factory(options_, platform_.services());
    host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE");
  };
  open();
  std::filesystem::permissions(options_.database, everybodys_file);
  std::filesystem::permissions(folder, everybodys_folder);
  open();
  EXPECT_EQ(std::filesystem::status(options_.database).permissions(), everybodys_file)
      << "a place of the user's";
  EXPECT_EQ(std::filesystem::status(folder).permissions(), everybodys_folder);
  options_.is_own_folder = true;
  open();
  EXPECT_EQ(std::filesystem::status(options_.database).permissions(), perms::owner_read | perms::owner_write);
  EXPECT_EQ(std::filesystem::status(folder).permissions(), perms::owner_all);
}

TEST_F(EmbeddedHostTest, MakesTheArchiveWithADatabaseInItsOwnFolderAlone) {
  const auto open = [&](MemoryPlatform& platform) {
    EmbeddedHost factory(options_, platform.services());
    host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE");
  };
  const auto has = [](MemoryPlatform& platform, std::u16string_view folder) {
    return platform.files.FolderExists(folder);
  };
  open(platform_);
  EXPECT_FALSE(has(platform_, u"C:\\Ataskaitos")) << "a place of the user's";
  options_.database = folder_.path() / "data" / "host.sqlite";
  options_.is_own_folder = true;
  open(platform_);
  EXPECT_TRUE(has(platform_, u"C:\\Ataskaitos\\Archyvas"));
  EXPECT_TRUE(has(platform_, u"C:\\Ataskaitos\\Baltija"));
  EXPECT_FALSE(has(platform_, u"C:\\Ataskaitos\\Formos"));
  MemoryPlatform later;
  open(later);
  EXPECT_FALSE(has(later, u"C:\\Ataskaitos")) << "what the user removed stays away";
}

TEST_F(EmbeddedHostTest, OpensItsDatabaseWhereNoArchiveCanBeMade) {
  options_.database = folder_.path() / "data" / "host.sqlite";
  options_.is_own_folder = true;
  platform_.faults.files.Refuse(FaultyFiles::Operation::CreateFolder, kPathFileAccess);
  EmbeddedHost factory(options_, platform_.services());
  EXPECT_EQ(host::CommonObjects::Create(factory).CreateBook(u"MEDVILNE").BookCode(), u"MEDVILNE");
}

}  // namespace
}  // namespace qva::embedded
