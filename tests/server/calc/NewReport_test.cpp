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
  EXPECT_EQ(ProjectName("Standard"), "AtaskaitaStandard");
  EXPECT_EQ(ProjectName("STANDARD"), "AtaskaitaSTANDARD");
  EXPECT_EQ(ProjectName("vbaProject"), "AtaskaitaVbaProject");
  EXPECT_EQ(ProjectName("Standartas"), "Standartas");
}

}  // namespace
}  // namespace qva
