#include "platform/module.h"

#include <dlfcn.h>

#include "tests/host/host_test.h"
#include "tests/temporary_environment.h"
#include "tests/test_paths.h"

namespace qva::embedded {
namespace {

class HostModule : public HostTest {
 protected:
  void SetUp() override {
    environment_.Set("QVA_HOST_DATABASE", options_.database);
    environment_.Set("QVA_HOST_RESOURCES", std::nullopt);
    // A module stays loaded, as the process that uses it leaves it.
    void* library = dlopen(HostModuleFile().c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    ASSERT_TRUE(library) << dlerror();
    open_ = reinterpret_cast<OpenModule>(dlsym(library, kOpenModuleName));
    ASSERT_TRUE(open_) << dlerror();
    prepare_ = reinterpret_cast<PrepareModule>(dlsym(library, kPrepareModuleName));
    ASSERT_TRUE(prepare_) << dlerror();
    dlclose(library);
  }

  TemporaryEnvironment environment_;
  OpenModule open_ = nullptr;
  PrepareModule prepare_ = nullptr;
};

TEST_F(HostModule, CreatesTheBookFromTheFilesBesideIt) {
  ObjectFactory* factory = open_(platform_.services());
  ASSERT_TRUE(factory);
  const auto book = host::CommonObjects::Create(*factory).CreateBook(u"MEDVILNE");
  EXPECT_EQ(book.BookCode(), u"MEDVILNE");
  const auto resource = host::MessageResource::Create(*factory);
  resource.Init(u"QVAFormRes");
  EXPECT_EQ(resource.Text(849), u"Žinynas");
}

TEST_F(HostModule, ShowsMessagesThroughTheGivenServices) {
  ObjectFactory* factory = open_(platform_.services());
  ASSERT_TRUE(factory);
  platform_.message_box.Answer(2);
  EXPECT_EQ(host::Message::Create(*factory).Show(u"?", u"", {u"Taip", 0.5}), 2);
  EXPECT_THAT(platform_.message_box.boxes().back().captions, testing::ElementsAre(u"Taip", u"0,5"));
}

TEST_F(HostModule, ShowsSelectionsThroughTheGivenServices) {
  ObjectFactory* factory = open_(platform_.services());
  ASSERT_TRUE(factory);
  const auto selection = host::DocumentSelection::Create(*factory);
  selection.Init(host::CommonObjects::Create(*factory).CreateBook(u"BALTIJA"));
  Pick(0);
  EXPECT_EQ(selection.Open(u"BOBN", Date{45383}, Date{45383}, u"1 = 1"), Value(std::int32_t{203}));
  EXPECT_EQ(selection.Field(u"Code"), Value(u"BIU-2024-02"));
}

TEST_F(HostModule, ItsErrorsAreTheCallersErrors) {
  ObjectFactory* factory = open_(platform_.services());
  ASSERT_TRUE(factory);
  ExpectFailure([&] { host::CommonObjects::Create(*factory).CreateBook(u"NERA"); }, Failure::UnknownBook,
                u"NVXCommonObjects", u"NERA");
  const auto error = ErrorOf([&] { factory->Create(u"Foreign.Class"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->number(), kCannotCreateObject);
}

TEST_F(HostModule, ADatabaseThatWasPreparedIsTheOneThatBooksComeFrom) {
  prepare_();
  ASSERT_TRUE(std::filesystem::exists(options_.database));
  // As if each job of a batch got its copy: the sample is not read again.
  environment_.Set("QVA_HOST_RESOURCES", "/nowhere");
  ObjectFactory* factory = open_(platform_.services());
  ASSERT_TRUE(factory);
  EXPECT_EQ(host::CommonObjects::Create(*factory).CreateBook(u"BALTIJA").BookCode(), u"BALTIJA");
}

TEST_F(HostModule, PreparesNothingWhereItCannot) {
  environment_.Set("QVA_HOST_RESOURCES", "/nowhere");
  prepare_();
  EXPECT_FALSE(std::filesystem::exists(options_.database));
}

TEST_F(HostModule, AnswersNothingWhereThereIsNoPlaceForTheDatabase) {
  for (const char* name : {"QVA_HOST_DATABASE", "XDG_DATA_HOME", "HOME"})
    environment_.Set(name, std::nullopt);
  EXPECT_FALSE(open_(platform_.services()));
}

}  // namespace
}  // namespace qva::embedded
