#include "help/ProgramTitle.h"

#include <gtest/gtest.h>

namespace kelvara::help {
namespace {

TEST(ProgramTitle, IsKelvaraOnePointOnePointNought) {
  EXPECT_STREQ(kProgramTitle, "Kelvara");
  EXPECT_EQ(ProgramVersion(), "1.1.0");
  EXPECT_EQ(ProgramTitleAndVersion(), "Kelvara v1.1.0");
}

}  // namespace
}  // namespace kelvara::help
