// What a new report's project of macros is called.
#include "server/calc/NewReport.h"

#include <gtest/gtest.h>

namespace qva {
namespace {

TEST(NewReport, ItsProjectIsCalledByTheTitlesLettersAndDigits) {
  EXPECT_EQ(ProjectName("Bandomasis balansas"), "BandomasisBalansas");
  EXPECT_EQ(ProjectName("Žąsų ūkis – 2025 m. I ketv."), "ZasuUkis2025MIKetv");
  EXPECT_EQ(ProjectName("2025 metai"), "Ataskaita2025Metai");
  EXPECT_EQ(ProjectName("„“"), "Ataskaita");
  EXPECT_EQ(ProjectName("a_b"), "AB");
}

}  // namespace
}  // namespace qva
