#include "sync/DectRpn.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>

#include "support/Faults.h"

namespace kelvara::sync {
namespace {

using base::FaultKind;
using test::FaultOf;

constexpr int kLowest = std::numeric_limits<std::int16_t>::min();
constexpr int kHighest = std::numeric_limits<std::int16_t>::max();

std::int16_t PortOf(int rpn) {
  DectRpn identity;
  identity.SetRpn(static_cast<std::int16_t>(rpn));
  return identity.iPortNum();
}

std::int16_t RpnOf(int port) {
  DectRpn identity;
  identity.SetPortNum(static_cast<std::int16_t>(port));
  return identity.iRpn();
}

bool Fits(long value) { return value >= kLowest && value <= kHighest; }

/// The port rule in wide integers; nothing if a step exceeds 16 bits.
std::optional<long> WidePort(long rpn) {
  const long product = rpn * 6;
  const long port = product + 600;
  if (!Fits(product) || !Fits(port)) {
    return std::nullopt;
  }
  return port >= 984 ? port - 784 : port;
}

/// The RPN rule in wide integers; nothing if a step exceeds 16 bits.
std::optional<long> WideRpn(long port) {
  if (port < 600 && !Fits(port - 200)) {
    return std::nullopt;
  }
  const long distance = port >= 600 ? port - 600 : port + 184;
  const long below = distance >= 0 ? distance / 6 : -((5 - distance) / 6);
  const long rest = distance - below * 6;
  return rest > 3 || (rest == 3 && below % 2 != 0) ? below + 1 : below;
}

TEST(DectRpn, IsCreatedWithRpnZero) {
  const DectRpn identity;
  EXPECT_EQ(identity.iRpn(), 0);
  EXPECT_EQ(identity.iPortNum(), 600);
}

TEST(DectRpn, StoresTheRpnUnchanged) {
  DectRpn identity;
  identity.SetRpn(255);
  EXPECT_EQ(identity.iRpn(), 255);
  identity.SetRpn(-32768);
  EXPECT_EQ(identity.iRpn(), -32768);
}

TEST(DectRpn, PortsGoUpInSixesAndWrapAtRpn64) {
  EXPECT_EQ(PortOf(0), 600);
  EXPECT_EQ(PortOf(1), 606);
  EXPECT_EQ(PortOf(63), 978);
  EXPECT_EQ(PortOf(64), 200);
  EXPECT_EQ(PortOf(65), 206);
  EXPECT_EQ(PortOf(100), 416);
  EXPECT_EQ(PortOf(127), 578);
}

TEST(DectRpn, NegativeRpnsStayBelow600) {
  EXPECT_EQ(PortOf(-1), 594);
  EXPECT_EQ(PortOf(-5461), -32166);
}

TEST(DectRpn, APortNumberGoesToTheNearestBasePort) {
  EXPECT_EQ(RpnOf(600), 0);
  EXPECT_EQ(RpnOf(603), 0);
  EXPECT_EQ(RpnOf(605), 1);
  EXPECT_EQ(RpnOf(609), 2);
  EXPECT_EQ(RpnOf(200), 64);
  EXPECT_EQ(RpnOf(599), 130);
}

TEST(DectRpn, EachRpnCoversItsGroupOfPorts) {
  for (int rpn = 1; rpn <= 132; ++rpn) {
    const int basePort = rpn < 64 ? 600 + 6 * rpn : 6 * rpn - 184;
    for (int port = basePort - 2; port <= basePort + 2; ++port) {
      if (rpn < 64 || port < 600) {
        EXPECT_EQ(RpnOf(port), rpn) << port;
      }
    }
    if (rpn < 64 || basePort + 3 < 600) {
      EXPECT_EQ(RpnOf(basePort + 3), rpn % 2 == 0 ? rpn : rpn + 1) << basePort + 3;
    }
  }
}

TEST(DectRpn, TheConversionsAreNotInversesAboveTheWrap) {
  EXPECT_EQ(RpnOf(984), 64);
  EXPECT_EQ(PortOf(RpnOf(984)), 200);
  EXPECT_EQ(RpnOf(PortOf(64)), 64);
}

TEST(DectRpn, APortOutsideSixteenBitsIsAnOverflow) {
  EXPECT_EQ(PortOf(5361), 31982);
  EXPECT_EQ(FaultOf([] { return PortOf(5362); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return PortOf(-5462); }), FaultKind::Overflow);
}

TEST(DectRpn, APortMinus200OutsideSixteenBitsIsAnOverflowThatKeepsTheRpn) {
  EXPECT_EQ(RpnOf(-32568), -5397);
  DectRpn identity;
  identity.SetRpn(17);
  EXPECT_EQ(FaultOf([&] { identity.SetPortNum(-32569); }), FaultKind::Overflow);
  EXPECT_EQ(identity.iRpn(), 17);
}

TEST(DectRpn, AFaultWhileReadingThePortKeepsTheRpn) {
  DectRpn identity;
  identity.SetRpn(6000);
  EXPECT_EQ(FaultOf([&] { return identity.iPortNum(); }), FaultKind::Overflow);
  EXPECT_EQ(identity.iRpn(), 6000);
}

TEST(DectRpn, FollowsTheRulesForEverySixteenBitValue) {
  for (int value = kLowest; value <= kHighest; ++value) {
    std::optional<long> port;
    std::optional<long> rpn;
    const auto portFault = FaultOf([&] { port = PortOf(value); });
    const auto rpnFault = FaultOf([&] { rpn = RpnOf(value); });
    ASSERT_EQ(port, WidePort(value)) << value;
    ASSERT_EQ(rpn, WideRpn(value)) << value;
    ASSERT_TRUE(port || portFault == FaultKind::Overflow) << value;
    ASSERT_TRUE(rpn || rpnFault == FaultKind::Overflow) << value;
  }
}

}  // namespace
}  // namespace kelvara::sync
