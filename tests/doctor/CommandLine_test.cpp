#include "tools/doctor/CommandLine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qva::doctor {
namespace {

std::optional<CommandLine> Read(std::vector<std::u16string> arguments) {
  return ReadCommandLine(arguments);
}

TEST(CommandLine, ChecksWhereNothingIsSaid) {
  const auto line = Read({});
  ASSERT_TRUE(line);
  EXPECT_EQ(line->command, Command::Check);
  EXPECT_TRUE(line->report.empty());
  EXPECT_FALSE(line->language);
}

TEST(CommandLine, TakesOptionsInAnyFormAndLetterCase) {
  for (const std::u16string option : {u"/report", u"--Report", u"-REPORT"}) {
    const auto line = Read({u"Check", option, u"C:\\a b.html", u"/lang", u"LT"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->report, u"C:\\a b.html");
    EXPECT_EQ(line->language, Language::Lithuanian);
  }
}

TEST(CommandLine, TakesTheCommands) {
  EXPECT_EQ(Read({u"repair"})->command, Command::Repair);
  EXPECT_EQ(Read({u"LOG", u"On"})->command, Command::LogOn);
  EXPECT_EQ(Read({u"log", u"on", u"C:\\calls.log", u"/lang", u"en"})->file, u"C:\\calls.log");
  EXPECT_EQ(Read({u"log", u"off"})->command, Command::LogOff);
  EXPECT_EQ(Read({u"demo", u"on"})->command, Command::DemoOn);
  EXPECT_EQ(Read({u"demo", u"off"})->command, Command::DemoOff);
  EXPECT_EQ(Read({u"/?"})->command, Command::Help);
  EXPECT_EQ(Read({u"--help"})->command, Command::Help);
}

TEST(CommandLine, TakesWhatOnePartAsksAnotherFor) {
  const auto line = Read({u"/register", u"C:\\a.dll", u"/answer", u"C:\\answer.txt"});
  ASSERT_TRUE(line);
  EXPECT_EQ(line->command, Command::Register);
  EXPECT_EQ(line->file, u"C:\\a.dll");
  EXPECT_EQ(line->answer, u"C:\\answer.txt");
  EXPECT_EQ(Read({u"/probe"})->command, Command::Probe);
  EXPECT_FALSE(Read({u"probe"}));
}

TEST(CommandLine, RefusesWhatMakesNoSense) {
  for (const std::vector<std::u16string>& arguments :
       std::vector<std::vector<std::u16string>>{{u"cure"},
                                                {u"repair", u"check"},
                                                {u"/report"},
                                                {u"/report", u"/lang", u"lt"},
                                                {u"/lang"},
                                                {u"/lang", u"de"},
                                                {u"log"},
                                                {u"log", u"maybe"},
                                                {u"log", u"off", u"C:\\calls.log"},
                                                {u"demo"},
                                                {u"demo", u"on", u"/report", u"a.html"},
                                                {u"/verbose"},
                                                {u""}}) {
    EXPECT_FALSE(Read(arguments)) << arguments.size();
  }
}

}  // namespace
}  // namespace qva::doctor
