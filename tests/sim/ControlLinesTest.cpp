#include "sim/ControlLines.h"

#include <gtest/gtest.h>

#include "sim/BeltpackRig.h"

namespace kelvara::sim {
namespace {

using Refused = std::vector<std::string>;

class ControlLinesTest : public ::testing::Test, public test::BeltpackRig {
 protected:
  ControlLines control{beltpack};
};

TEST_F(ControlLinesTest, SwitchFaultsAndPullTheCable) {
  EXPECT_EQ(control.Feed("fault silent\n"), Refused{});
  EXPECT_EQ(Ask("cho"), "");
  EXPECT_EQ(control.Feed("fault 24:2\n"), Refused{});
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
  EXPECT_EQ(Ask("cho"), "24\r\n");
  EXPECT_EQ(control.Feed("fault none\nunplug\n"), Refused{});
  EXPECT_FALSE(beltpack.IsPresent(nowMs));
  EXPECT_EQ(control.Feed("plug\n"), Refused{});
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
}

TEST_F(ControlLinesTest, TakeEffectWhenTheLineIsComplete) {
  for (const char character : std::string("unplug")) {
    EXPECT_EQ(control.Feed(std::string(1, character)), Refused{});
    EXPECT_TRUE(beltpack.IsPresent(nowMs));
  }
  EXPECT_EQ(control.Feed("\n"), Refused{});
  EXPECT_FALSE(beltpack.IsPresent(nowMs));
}

TEST_F(ControlLinesTest, EverythingElseIsRefusedAndChangesNothing) {
  EXPECT_EQ(control.Feed("fault\nfault quiet\nfault \n\nUnplug\nplug \n"),
            (Refused{"fault", "fault quiet", "fault ", "", "Unplug", "plug "}));
  EXPECT_EQ(control.Feed(std::string(100000, 'x') + "\n"), Refused{std::string(256, 'x')});
  EXPECT_EQ(Ask("cho"), "cho ok\r\n");
}

}  // namespace
}  // namespace kelvara::sim
