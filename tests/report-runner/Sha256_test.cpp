// The hash, by the examples of its standard.
#include "tools/report-runner/Sha256.h"

#include <gtest/gtest.h>

#include "tests/test_paths.h"

namespace qva {
namespace {

TEST(Sha256, IsThatOfTheStandard) {
  EXPECT_EQ(Sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(Sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(Sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  EXPECT_EQ(Sha256(std::string(1000000, 'a')),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, OfAFileThatIsNotThereIsEmpty) {
  EXPECT_EQ(Sha256OfFile(SourceFolder() / "nowhere"), "");
  EXPECT_EQ(Sha256OfFile("/dev/null"), Sha256(""));
}

}  // namespace
}  // namespace qva
