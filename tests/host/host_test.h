// What tests of the embedded host share: a host on a folder of its own, and the proof that nothing stays
// alive.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/EmbeddedHost.h"
#include "host/HostError.h"
#include "platform/host.h"
#include "platform/memory/MemoryPlatform.h"
#include "platform/text.h"
#include "tests/files.h"
#include "tests/raised_error.h"
#include "tests/test_paths.h"

namespace qva::embedded {

/// Expects `step` to raise a failure of the host's own, from `source`, whose description holds `cause`.
inline void ExpectFailure(const std::function<void()>& step, Failure failure, std::u16string_view source,
                          std::u16string_view cause) {
  const auto error = ErrorOf(step);
  ASSERT_TRUE(error) << "nothing is raised";
  EXPECT_EQ(error->number(), kObjectErrorBase + static_cast<std::int32_t>(failure)) << error->what();
  EXPECT_EQ(ToUtf8(error->source()), ToUtf8(source));
  EXPECT_THAT(ToUtf8(error->description()), testing::HasSubstr(ToUtf8(cause)));
}

/// The embedded host on a database that does not exist yet, reached through the façades as the library does.
class HostTest : public testing::Test {
 protected:
  HostTest() { InstallServices(platform_.services()); }
  ~HostTest() override {
    EXPECT_EQ(Object::LiveCount(), live_before_) << "objects stay alive";
    InstallServices({});
  }

  host::Book OpenBook(std::u16string_view code) {
    return host::CommonObjects::Create(factory_).CreateBook(code);
  }
  host::CompanyAttributes AttributesOf(std::u16string_view book_code) {
    const auto attributes = host::CompanyAttributes::Create(factory_);
    attributes.Init(OpenBook(book_code));
    return attributes;
  }
  /// From now on the user picks this row of each list, or leaves it.
  void Pick(std::optional<std::size_t> row) {
    chooser_.user = [row](const ChoiceList&, std::u16string_view) { return row; };
  }
  /// The names of the files in the database's folder.
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  static inline const std::filesystem::path kHostFolder = SourceFolder() / "host";

  const long live_before_ = Object::LiveCount();
  TemporaryFolder folder_;
  MemoryPlatform platform_;
  MemoryListChooser& chooser_ = platform_.list_chooser;
  HostOptions options_{.database = folder_.path() / "host.sqlite",
                       .sample = kHostFolder / "sample.sql",
                       .resources = kHostFolder};
  EmbeddedHost factory_{options_, platform_.services()};
};

}  // namespace qva::embedded
