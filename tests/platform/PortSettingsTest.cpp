#include "platform/PortSettings.h"

#include <gtest/gtest.h>

#include "base/Fault.h"
#include "support/Faults.h"

namespace kelvara::platform {
namespace {

TEST(PortSettings, AreTheRateAndTheLineFormat) { EXPECT_EQ(PortSettings(4800), "4800,n,8,1"); }

TEST(PortSettings, AreReadBackAsTheirRate) {
  for (const std::int32_t rate : {1, 4800, 57600, 2147483647}) {
    EXPECT_EQ(ReadRate(PortSettings(rate)), rate);
  }
}

TEST(PortSettings, AreRefusedInAnyOtherForm) {
  for (const char* const settings :
       {"", "19200", ",n,8,1", "0,n,8,1", "-9600,n,8,1", "+9600,n,8,1", " 9600,n,8,1", "9600,e,8,1",
        "9600,n,7,1", "9600,n,8,1,", "2147483648,n,8,1", "fast,n,8,1"}) {
    EXPECT_EQ(test::FaultOf([&] { ReadRate(settings); }), base::FaultKind::Port) << settings;
  }
}

}  // namespace
}  // namespace kelvara::platform
