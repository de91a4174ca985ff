#include "platform/DirectoryOf.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/Faults.h"

namespace kelvara::platform {
namespace {

using base::FaultKind;

constexpr bool kSlashSeparates = std::filesystem::path::preferred_separator == '/';

TEST(DirectoryOfTest, IsEverythingBeforeTheLastBackslash) {
  EXPECT_EQ(DirectoryOf("C:\\sites\\hall\\log.txt"), "C:\\sites\\hall");
  EXPECT_EQ(DirectoryOf("a\\b"), "a");
}

TEST(DirectoryOfTest, APathThatEndsInASeparatorKeepsTheRest) {
  EXPECT_EQ(DirectoryOf("C:\\sites\\"), "C:\\sites");
}

TEST(DirectoryOfTest, ASingleLeadingSeparatorLeavesNothing) {
  EXPECT_EQ(DirectoryOf("\\log.txt"), "");
}

TEST(DirectoryOfTest, AnEmptyPathGivesAnEmptyFolder) { EXPECT_EQ(DirectoryOf(""), ""); }

TEST(DirectoryOfTest, APathThatStartsWithNulGivesAnEmptyFolder) {
  EXPECT_EQ(DirectoryOf(std::string("\0C:\\sites\\log.txt", 17)), "");
  EXPECT_EQ(DirectoryOf(std::string("\0", 1)), "");
  EXPECT_EQ(DirectoryOf(std::string("a\\b\0c", 5)), "a");
}

TEST(DirectoryOfTest, APathWithoutASeparatorIsASubscriptFault) {
  EXPECT_EQ(test::FaultOf([] { DirectoryOf("log.txt"); }), FaultKind::Subscript);
  EXPECT_EQ(test::FaultOf([] { DirectoryOf(" "); }), FaultKind::Subscript);
}

TEST(DirectoryOfTest, ASlashSeparatesWhereTheMachineUsesIt) {
  if (kSlashSeparates) {
    EXPECT_EQ(DirectoryOf("/home/user/log.txt"), "/home/user");
    EXPECT_EQ(DirectoryOf("/home\\user/log.txt"), "/home\\user");
    EXPECT_EQ(DirectoryOf("/home/user\\log.txt"), "/home/user");
    EXPECT_EQ(DirectoryOf("/log.txt"), "");
  } else {
    EXPECT_EQ(DirectoryOf("C:\\a/log.txt"), "C:");
    EXPECT_EQ(test::FaultOf([] { DirectoryOf("a/log.txt"); }), FaultKind::Subscript);
  }
}

TEST(DirectoryOfOrEmptyTest, DiffersOnlyForAPathWithoutASeparator) {
  EXPECT_EQ(DirectoryOfOrEmpty("log.txt"), "");
  EXPECT_EQ(DirectoryOfOrEmpty(""), "");
  EXPECT_EQ(DirectoryOfOrEmpty("C:\\sites\\log.txt"), "C:\\sites");
  EXPECT_EQ(DirectoryOfOrEmpty(std::string("\0a\\b", 4)), "");
}

}  // namespace
}  // namespace kelvara::platform
