#include "platform/memory/MemoryEnvironment.h"

#include <string>

#include "platform/lithuanian/code_page.h"
#include "tests/platform/environment_contract.h"

namespace qva {
namespace {

class MemoryProcess {
 public:
  Environment& environment() { return environment_; }
  void Set(std::u16string_view name, std::u16string_view value) {
    environment_.Set(name, ToCodePage1257(value));
  }
  bool IsOwn(const std::u16string& folder) const { return folder == environment_.library_folder; }

 private:
  MemoryEnvironment environment_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(MemoryEnvironment, EnvironmentContract, MemoryProcess);

namespace {

TEST(MemoryEnvironment, ForgetsARemovedVariable) {
  MemoryEnvironment environment;
  environment.Set(u"PATH", "abc");
  environment.Remove(u"path");
  EXPECT_EQ(environment.GetVariable(u"PATH", {}), 0u);
}

}  // namespace
}  // namespace qva
