#include "platform/memory/MemoryPlatform.h"

#include <gtest/gtest.h>

#include "tests/missing_services.h"
#include "tests/platform/core_test.h"

namespace qva {
namespace {

using MemoryPlatformTest = CoreTest;

TEST_F(MemoryPlatformTest, GivesEveryService) {
  EXPECT_THAT(MissingServices(platform.services()), testing::IsEmpty());
}

TEST_F(MemoryPlatformTest, PutsItsFaultsBeforeWhatCanFail) {
  const Services services = platform.services();
  EXPECT_EQ(services.object_factory, &platform.faults.object_factory);
  EXPECT_EQ(services.registry, &platform.faults.registry);
  EXPECT_EQ(services.forms, &platform.faults.forms);
  EXPECT_EQ(services.files, &platform.faults.files);
  services.files->CreateFolder(u"C:\\a");
  EXPECT_TRUE(platform.files.FolderExists(u"C:\\a"));
}

TEST_F(MemoryPlatformTest, IsLithuanianUntilToldOtherwise) {
  EXPECT_EQ(Value(1.5).ToText(), u"1,5");
  EXPECT_EQ(Value(Date{45455.75}).ToText(), u"2024-06-12 18:00:00");
  EXPECT_EQ(platform.locale.FromAnsi(platform.locale.ToAnsi(u"Ąžuolas")), u"Ąžuolas");
  platform.locale.decimal_separator = u".";
  platform.locale.short_date_pattern = u"dd.MM.yyyy";
  platform.locale.long_time_pattern = u"HH:mm";
  EXPECT_EQ(Value(1.5).ToText(), u"1.5");
  EXPECT_EQ(Value(Date{45455.75}).ToText(), u"12.06.2024 18:00");
}

TEST_F(MemoryPlatformTest, HasAClockThatStandsWhereItWasSet) {
  EXPECT_EQ(platform.clock.Now(), MemoryClock::kStart);
  EXPECT_EQ(Value(platform.clock.Now()).ToText(), u"2024-06-12 10:00:00");
  platform.clock.Set(Date{1.5});
  EXPECT_EQ(platform.clock.Now(), Date{1.5});
}

}  // namespace
}  // namespace qva
