#include "base/CheckedInteger.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "support/Faults.h"

namespace kelvara::base {
namespace {

using test::FaultOf;

constexpr std::int32_t kLowest32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest32 = std::numeric_limits<std::int32_t>::max();

TEST(CheckedInteger, SixteenBitsRangeFromMinus32768To32767) {
  EXPECT_EQ(ToInt16(-32768), -32768);
  EXPECT_EQ(ToInt16(32767), 32767);
  EXPECT_EQ(FaultOf([] { return ToInt16(-32769); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return ToInt16(32768); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return ToInt16(65536); }), FaultKind::Overflow);
}

TEST(CheckedInteger, ThirtyTwoBitsOverflowOutsideTheirRange) {
  EXPECT_EQ(ToInt32(kLowest32), kLowest32);
  EXPECT_EQ(ToInt32(kHighest32), kHighest32);
  EXPECT_EQ(FaultOf([] { return ToInt32(std::int64_t{kLowest32} - 1); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return ToInt32(std::int64_t{kHighest32} + 1); }), FaultKind::Overflow);
}

TEST(CheckedInteger, SixteenBitArithmeticFaultsIfTheResultDoesNotFit) {
  EXPECT_EQ(Add16(32000, 767), 32767);
  EXPECT_EQ(FaultOf([] { return Add16(32000, 768); }), FaultKind::Overflow);
  EXPECT_EQ(Subtract16(-32568, 200), -32768);
  EXPECT_EQ(FaultOf([] { return Subtract16(-32569, 200); }), FaultKind::Overflow);
  EXPECT_EQ(Multiply16(252, 130), 32760);
  EXPECT_EQ(FaultOf([] { return Multiply16(253, 130); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return Multiply16(-253, 130); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return Multiply16(-32768, -1); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return Multiply16(-32768, -32768); }), FaultKind::Overflow);
}

TEST(CheckedInteger, ThirtyTwoBitArithmeticFaultsIfTheResultDoesNotFit) {
  EXPECT_EQ(Add32(kHighest32 - 1, 1), kHighest32);
  EXPECT_EQ(FaultOf([] { return Add32(kHighest32, 1); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return Add32(kLowest32, -1); }), FaultKind::Overflow);
  EXPECT_EQ(Multiply32(16519104, 130), 2147483520);
  EXPECT_EQ(FaultOf([] { return Multiply32(16519105, 130); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([] { return Multiply32(kLowest32, kLowest32); }), FaultKind::Overflow);
}

TEST(CheckedInteger, AnIndexOutsideItsTableIsASubscriptFault) {
  std::array<int, 3> table{10, 20, 30};
  EXPECT_EQ(At(table, 0), 10);
  EXPECT_EQ(At(table, 2), 30);
  At(table, 1) = 25;
  EXPECT_EQ(table[1], 25);
  EXPECT_EQ(FaultOf([&] { return At(table, 3); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([&] { return At(table, -1); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([] { return CheckedIndex(0, 0); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([] { return CheckedIndex(std::numeric_limits<std::int64_t>::min(), 51); }),
            FaultKind::Subscript);
  EXPECT_EQ(CheckedIndex(50, 51), 50U);
}

}  // namespace
}  // namespace kelvara::base
