#include "server/call_log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <new>
#include <thread>

#include "platform/error.h"
#include "platform/filesystem/rotated_file.h"
#include "platform/member_table.h"
#include "platform/services.h"
#include "platform/text.h"
#include "platform/value.h"
#include "tests/files.h"
#include "tests/platform/core_test.h"
#include "tests/ticking_clock.h"

namespace qva {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

class LoggedObject : public Object {
 public:
  Value Invoke(Access, std::u16string_view, Arguments&) override { return {}; }
  std::u16string TypeName() const override { return u"CReports"; }
};

class CallLog : public CoreTest {
 protected:
  CallLog() {
    platform.clock.Set(Date{45000.5});
    Services services = platform.services();
    services.clock = &clock;
    InstallServices(services);
  }
  CallLog(const CallLog&) = delete;
  CallLog& operator=(const CallLog&) = delete;
  ~CallLog() override { SetCallLog({}); }

  void Start(bool own = true, bool with_content = false) {
    SetCallLog({file.native(), with_content,
                own ? [](const Object&) { return true; } : [](const Object&) { return false; }});
  }
  /// The line of one call.
  std::string Line(Access access, const std::vector<Value>& arguments, const Value& result) {
    std::error_code none;
    std::filesystem::remove(file, none);
    {
      LoggedCall call;
      call.Begins(*object, access, u"Init");
      call.Takes(arguments);
      call.Returned(result);
    }
    return FileContent(file, "");
  }

  const TemporaryFolder folder;
  std::filesystem::path file = folder / "calls.log";
  TickingClock clock{platform.clock, std::chrono::milliseconds(7)};
  ObjectPtr object{new LoggedObject};
};

TEST_F(CallLog, HasALineForEachCall) {
  Start();
  EXPECT_EQ(Line(Access::Call, {u"a\tb\r\nc", 7, true}, 1.5),
            "2023-03-15 12:00:00\t" + std::to_string(ProcessId()) +
                "\t7 ms\tCReports.Init\t(\"a b  c\", 7, True)\t-> 1.5\n");
  EXPECT_THAT(Line(Access::Put, {7}, {}), EndsWith("\tCReports.Init =\t(7)\t\n"));
  EXPECT_THAT(Line(Access::PutRef, {ObjectPtr()}, {}), EndsWith("\tCReports.Init =\t(Nothing)\t\n"));
}

TEST_F(CallLog, NamesNamedArguments) {
  Start();
  {
    LoggedCall call;
    call.Begins(*object, Access::Call, u"Init");
    const std::vector<NamedArgument> named = {{u"sName", u"x"}};
    call.Takes(std::vector<Value>{1}, named);
  }
  EXPECT_THAT(FileContent(file), HasSubstr("\t(1, sName:=\"x\")\t"));
}

TEST_F(CallLog, TellsNumberSourceAndTextOfAnError) {
  Start();
  {
    LoggedCall call;
    call.Begins(*object, Access::Call, u"Init");
    try {
      throw AutomationError(1004, u"Excel", u"No such\nsheet");
    } catch (...) {
      call.Failed();
    }
  }
  EXPECT_THAT(FileContent(file), EndsWith("\t! 1004 Excel: No such sheet\n"));
  {
    LoggedCall call;
    call.Begins(*object, Access::Call, u"Init");
    try {
      throw std::bad_alloc();
    } catch (...) {
      call.Failed();
    }
  }
  EXPECT_THAT(FileContent(file), EndsWith("\t! 7 QVA_Varnholt: Out of memory\n"));
}

TEST_F(CallLog, TellsTypeAndSizeInsteadOfContent) {
  Start();
  const Value block = Array::Block(2, 3, {u"secret", 1, 2, 3, 4, 5});
  EXPECT_THAT(Line(Access::Call, {block}, block), EndsWith("\t(array of 2 x 3)\t-> array of 2 x 3\n"));
  Start(false);
  EXPECT_THAT(Line(Access::Put, {u"secret"}, 17.5), EndsWith("\t(text of 6)\t-> number\n"));
}

TEST_F(CallLog, TellsTheTypeOfWhatItDoesNotShow) {
  Start(false);
  const std::pair<Value, std::string> told[] = {{true, "Boolean"},
                                                {std::uint8_t{1}, "number"},
                                                {std::int16_t{1}, "number"},
                                                {1, "number"},
                                                {1.5, "number"},
                                                {Currency{15000}, "number"},
                                                {Date{45000}, "date"},
                                                {u"", "text of 0"},
                                                {ErrorValue{2042}, "error value"},
                                                {Array::Of({1, 2, 3}), "array of 3"},
                                                {Null{}, "Null"},
                                                {ObjectPtr(), "Nothing"}};
  for (const auto& [value, text] : told) {
    EXPECT_THAT(Line(Access::Call, {value}, {}), EndsWith("\t(" + text + ")\t\n"));
  }
}

TEST_F(CallLog, TellsContentWhereItIsAskedFor) {
  Start(false, true);
  EXPECT_THAT(Line(Access::Put, {u"secret"}, Array::Of({1, 2})),
              EndsWith("\t(\"secret\")\t-> Array(1, 2)\n"));
}

TEST_F(CallLog, ShortensLongTexts) {
  Start();
  EXPECT_THAT(Line(Access::Call, {std::u16string(5000, u'x')}, {}),
              EndsWith("\t(\"" + std::string(199, 'x') + "\u2026)\t\n"));
  const std::string longest(198, 'x');
  EXPECT_THAT(Line(Access::Call, {FromUtf8(longest)}, {}), EndsWith("\t(\"" + longest + "\")\t\n"));
}

TEST_F(CallLog, WritesNothingWhileItIsOff) {
  Start();
  SetCallLog({});
  Line(Access::Call, {}, {});
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(CallLog, LeavesACallAloneThatItCannotWriteDown) {
  SetCallLog({(folder / "missing" / "calls.log").native(), false, nullptr});
  EXPECT_NO_THROW(Line(Access::Call, {1}, 2));
  SetCallLog({folder.path().native(), false, nullptr});
  EXPECT_NO_THROW(Line(Access::Call, {1}, 2));
  Start();
  InstallServices({});
  EXPECT_EQ(Line(Access::Call, {1}, 2), "");
}

TEST_F(CallLog, FileGetsASecondNameWhenItIsFull) {
  const std::string line(40, 'x');
  const auto rotated = folder / "calls.log.1";
  EXPECT_TRUE(AppendRotated(file.native(), line, 100));
  EXPECT_TRUE(AppendRotated(file.native(), line, 100));
  EXPECT_FALSE(std::filesystem::exists(rotated));
  EXPECT_TRUE(AppendRotated(file.native(), "third", 84));
  EXPECT_EQ(FileContent(rotated), line + line);
  EXPECT_EQ(FileContent(file), "third");
  EXPECT_TRUE(AppendRotated(file.native(), line, 44));
  EXPECT_EQ(FileContent(rotated), "third");
  EXPECT_TRUE(AppendRotated(file.native(), std::string(50, 'y'), 10));
  EXPECT_TRUE(AppendRotated(file.native(), std::string(50, 'z'), 10));
  EXPECT_EQ(FileContent(rotated), std::string(50, 'y'));
  EXPECT_EQ(FileContent(file), std::string(50, 'z'));
}

TEST_F(CallLog, FileIsFullAt4Megabytes) {
  Start();
  const std::size_t line = Line(Access::Call, {}, {}).size();
  const auto is_rotated_at = [&](std::uintmax_t size) {
    std::filesystem::resize_file(file, size);
    { LoggedCall().Begins(*object, Access::Call, u"Init"); }
    return std::filesystem::exists(folder / "calls.log.1");
  };
  EXPECT_FALSE(is_rotated_at(4 * 1024 * 1024 - line));
  EXPECT_TRUE(is_rotated_at(4 * 1024 * 1024 - line + 1));
}

// Each writer opens the file for itself, as another process does.
TEST_F(CallLog, LosesNoLineOfTwoWriters) {
  constexpr int kLines = 300;
  constexpr std::uint64_t kLimit = 400 * 11;  // once full in the middle of all
  const auto write = [&](char mark) {
    for (int i = 0; i < kLines; ++i) AppendRotated(file.native(), std::string(10, mark) + "\n", kLimit);
  };
  std::thread other(write, 'a');
  write('b');
  other.join();
  const std::string old = FileContent(folder / "calls.log.1");
  const std::string all = old + FileContent(file);
  EXPECT_EQ(old.size(), kLimit);
  EXPECT_EQ(all.size(), 2u * kLines * 11);
  int a = 0;
  int b = 0;
  for (std::size_t at = 0; at < all.size(); at += 11) {
    const std::string line = all.substr(at, 11);
    a += line == "aaaaaaaaaa\n";
    b += line == "bbbbbbbbbb\n";
  }
  EXPECT_EQ(a, kLines);
  EXPECT_EQ(b, kLines);
}

}  // namespace
}  // namespace qva
