#include "host/HostOptions.h"

#include <map>

#include "tests/host/host_test.h"

namespace qva::embedded {
namespace {

std::optional<HostOptions> OptionsOf(const std::map<std::string, std::string>& environment) {
  return OptionsFromEnvironment(
      [&](const char* name) {
        const auto found = environment.find(name);
        return std::filesystem::path(found == environment.end() ? "" : found->second);
      },
      "/lib/host");
}

TEST(HostOptions, TakeTheDatabaseOfTheVariableFirst) {
  const auto options =
      OptionsOf({{"QVA_HOST_DATABASE", "/d/x.sqlite"}, {"XDG_DATA_HOME", "/data"}, {"HOME", "/home/a"}});
  ASSERT_TRUE(options);
  EXPECT_EQ(options->database, "/d/x.sqlite");
  EXPECT_FALSE(options->is_own_folder);
}

TEST(HostOptions, PutTheDatabaseIntoTheUsersDataFolder) {
  EXPECT_EQ(OptionsOf({{"XDG_DATA_HOME", "/data"}, {"HOME", "/home/a"}})->database,
            "/data/qva-varnholt/host.sqlite");
  EXPECT_EQ(OptionsOf({{"HOME", "/home/a"}})->database, "/home/a/.local/share/qva-varnholt/host.sqlite");
  EXPECT_TRUE(OptionsOf({{"XDG_DATA_HOME", "/data"}})->is_own_folder);
  EXPECT_TRUE(OptionsOf({{"HOME", "/home/a"}})->is_own_folder);
}

TEST(HostOptions, DoNotCountEmptyVariablesNorARelativeDataFolder) {
  EXPECT_EQ(OptionsOf({{"QVA_HOST_DATABASE", ""}, {"XDG_DATA_HOME", "data"}, {"HOME", "/home/a"}})->database,
            "/home/a/.local/share/qva-varnholt/host.sqlite");
  EXPECT_EQ(OptionsOf({{"HOME", "/h"}, {"QVA_HOST_RESOURCES", ""}})->resources, "/lib/host");
}

TEST(HostOptions, AreNothingWithoutAPlaceForTheDatabase) {
  EXPECT_FALSE(OptionsOf({}));
  EXPECT_FALSE(OptionsOf({{"HOME", ""}, {"QVA_HOST_RESOURCES", "/r"}}));
}

TEST(HostOptions, TakeSampleAndTextsFromTheResourceFolder) {
  const auto beside = OptionsOf({{"HOME", "/h"}});
  EXPECT_EQ(beside->resources, "/lib/host");
  EXPECT_EQ(beside->sample, "/lib/host/sample.sql");
  const auto chosen = OptionsOf({{"HOME", "/h"}, {"QVA_HOST_RESOURCES", "/r"}});
  EXPECT_EQ(chosen->resources, "/r");
  EXPECT_EQ(chosen->sample, "/r/sample.sql");
}

}  // namespace
}  // namespace qva::embedded
