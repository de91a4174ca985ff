#include "platform/FileExists.h"

#include <gtest/gtest.h>

#include "support/Doubles.h"

namespace kelvara::platform {
namespace {

TEST(FileExistsTest, IsTrueForAFileThatCanBeRead) {
  test::MemoryFileSystem files;
  files.files["empty.html"];
  EXPECT_TRUE(FileExists(files, "empty.html"));
  EXPECT_FALSE(FileExists(files, "other.html"));
  EXPECT_EQ(files.files.size(), 1U);
}

TEST(FileExistsTest, AFileThatCannotBeReadCountsAsMissing) {
  test::MemoryFileSystem files;
  files.files["locked.html"] = "text";
  files.unopenable["locked.html"] = true;
  EXPECT_FALSE(FileExists(files, "locked.html"));
}

}  // namespace
}  // namespace kelvara::platform
