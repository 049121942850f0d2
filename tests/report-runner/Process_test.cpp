#include "tools/report-runner/Process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/files.h"

namespace qva {
namespace {

class ProcessTest : public testing::Test {
 protected:
  ProcessTest() {
    // What this program was started with is nothing of ours.
    for (int descriptor = 3; descriptor < 256; ++descriptor) fcntl(descriptor, F_SETFD, FD_CLOEXEC);
  }

  /// What a shell writes to its error output.
  std::string Told(const std::string& script) {
    Process shell({"sh", "-c", script}, {}, folder_ / "errors");
    EXPECT_EQ(shell.Wait(std::chrono::seconds(30)), 0);
    return FileContent(folder_ / "errors");
  }

 private:
  TemporaryFolder folder_;
};

TEST_F(ProcessTest, HasTheThreeStandardFilesAlone) {
  EXPECT_EQ(Told("ls /proc/self/fd >&2"), "0\n1\n2\n3\n") << "the last one is that of ls";
}

TEST_F(ProcessTest, HasAnEmptyInputAlsoWhereOursIsClosed) {
  EXPECT_EQ(Told("readlink /proc/self/fd/0 >&2"), "/dev/null\n");
  const FileDescriptor input(dup(STDIN_FILENO));
  close(STDIN_FILENO);
  EXPECT_EQ(Told("readlink /proc/self/fd/0 >&2"), "/dev/null\n");
  if (input) dup2(input.get(), STDIN_FILENO);
}

}  // namespace
}  // namespace qva
