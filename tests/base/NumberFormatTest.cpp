#include "base/NumberFormat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "support/Faults.h"
#include "support/RandomText.h"

namespace kelvara::base {
namespace {

using test::FaultOf;

TEST(GeneralFormat, IntegersHaveNoDecimalPoint) {
  EXPECT_EQ(FormatGeneral(0.0), "0");
  EXPECT_EQ(FormatGeneral(10.0), "10");
  EXPECT_EQ(FormatGeneral(-252.0), "-252");
  EXPECT_EQ(FormatGeneral(1000000.0), "1000000");
}

TEST(GeneralFormat, HasNoTrailingZerosButAZeroBeforeTheDecimalPoint) {
  EXPECT_EQ(FormatGeneral(0.5), "0.5");
  EXPECT_EQ(FormatGeneral(-0.25), "-0.25");
  EXPECT_EQ(FormatGeneral(1.10), "1.1");
  EXPECT_EQ(FormatGeneral(100.001), "100.001");
}

TEST(GeneralFormat, HasUpToFifteenSignificantDigits) {
  EXPECT_EQ(FormatGeneral(130.0 / 29.0), "4.48275862068966");
  EXPECT_EQ(FormatGeneral(1.0 / 3.0), "0.333333333333333");
  EXPECT_EQ(FormatGeneral(2.0 / 3.0), "0.666666666666667");
  EXPECT_EQ(FormatGeneral(0.1 + 0.2), "0.3");
  EXPECT_EQ(FormatGeneral(123456789012345.0), "123456789012345");
  EXPECT_EQ(FormatGeneral(123456789012345.67), "123456789012346");
  EXPECT_EQ(FormatGeneral(1234567890123456.0), "1234567890123460");
}

// The double is slightly below each of these texts, so digits taken from its exact value would
// round down.
TEST(GeneralFormat, TheSixteenthDigitRoundsHalfAwayFromZero) {
  EXPECT_EQ(FormatGeneral(1.000000000000005), "1.00000000000001");
  EXPECT_EQ(FormatGeneral(-1.000000000000005), "-1.00000000000001");
  EXPECT_EQ(FormatGeneral(1.000000000000004), "1");
}

TEST(GeneralFormat, ACarryPropagatesThroughNines) {
  EXPECT_EQ(FormatGeneral(0.9999999999999999), "1");
  EXPECT_EQ(FormatGeneral(999999999999999.9), "1000000000000000");
  EXPECT_EQ(FormatGeneral(1.9999999999999998), "2");
  EXPECT_EQ(FormatGeneral(-99.99999999999999), "-100");
}

TEST(GeneralFormat, NeverHasAnExponent) {
  EXPECT_EQ(FormatGeneral(1e21), "1" + std::string(21, '0'));
  EXPECT_EQ(FormatGeneral(-1e300), "-1" + std::string(300, '0'));
  EXPECT_EQ(FormatGeneral(std::numeric_limits<double>::max()),
            "179769313486232" + std::string(294, '0'));
  EXPECT_EQ(FormatGeneral(0.00001), "0.00001");
  EXPECT_EQ(FormatGeneral(1.25e-20), "0." + std::string(19, '0') + "125");
  EXPECT_EQ(FormatGeneral(std::numeric_limits<double>::denorm_min()),
            "0." + std::string(323, '0') + "5");
}

TEST(GeneralFormat, NeverShowsMinusZero) { EXPECT_EQ(FormatGeneral(-0.0), "0"); }

TEST(GeneralFormat, ReproducesAnyDecimalOfFifteenDigits) {
  test::RandomText random(51);
  for (int round = 0; round < 20000; ++round) {
    std::string digits;
    digits += static_cast<char>('1' + random.Below(9));
    for (int more = random.Below(14); more > 0; --more) {
      digits += static_cast<char>('0' + random.Below(10));
    }
    digits += static_cast<char>('1' + random.Below(9));
    const auto point = static_cast<std::size_t>(random.Below(static_cast<int>(digits.size())));
    std::string text = random.Below(2) == 0 ? "-" : "";
    text += point == 0 ? "0" : digits.substr(0, point);
    text += "." + digits.substr(point);
    ASSERT_EQ(FormatGeneral(std::strtod(text.c_str(), nullptr)), text);
  }
}

TEST(FixedFormat, HasAtLeastOneIntegerDigitAndThreeDecimals) {
  EXPECT_EQ(FormatFixed(0.0), "0.000");
  EXPECT_EQ(FormatFixed(29.0), "29.000");
  EXPECT_EQ(FormatFixed(5.7528), "5.753");
  EXPECT_EQ(FormatFixed(0.3008), "0.301");
  EXPECT_EQ(FormatFixed(0.09645), "0.096");
  EXPECT_EQ(FormatFixed(-0.5), "-0.500");
  EXPECT_EQ(FormatFixed(32760.0), "32760.000");
}

TEST(FixedFormat, RoundsHalfAwayFromZero) {
  EXPECT_EQ(FormatFixed(0.0005), "0.001");
  EXPECT_EQ(FormatFixed(-0.0005), "-0.001");
  EXPECT_EQ(FormatFixed(0.0015), "0.002");
  EXPECT_EQ(FormatFixed(0.0025), "0.003");
  EXPECT_EQ(FormatFixed(1.0005), "1.001");
  EXPECT_EQ(FormatFixed(1.0045), "1.005");
  EXPECT_EQ(FormatFixed(0.00049), "0.000");
}

TEST(FixedFormat, RoundsTheFifteenDigitDecimal) {
  EXPECT_EQ(FormatFixed(std::nextafter(0.0005, 0.0)), "0.001");
  EXPECT_EQ(FormatFixed(0.000499999999999999), "0.000");
  EXPECT_EQ(FormatFixed(123456789012345.67), "123456789012346.000");
}

TEST(FixedFormat, ACarryPropagatesThroughNines) {
  EXPECT_EQ(FormatFixed(0.9995), "1.000");
  EXPECT_EQ(FormatFixed(999.9996), "1000.000");
  EXPECT_EQ(FormatFixed(-9.9999), "-10.000");
}

TEST(FixedFormat, LargeAndSmallValuesHaveNoExponent) {
  EXPECT_EQ(FormatFixed(1e20), "1" + std::string(20, '0') + ".000");
  EXPECT_EQ(FormatFixed(-1e300), "-1" + std::string(300, '0') + ".000");
  EXPECT_EQ(FormatFixed(1e-20), "0.000");
  EXPECT_EQ(FormatFixed(std::numeric_limits<double>::denorm_min()), "0.000");
}

TEST(FixedFormat, NeverShowsMinusZero) {
  EXPECT_EQ(FormatFixed(-0.0), "0.000");
  EXPECT_EQ(FormatFixed(-0.0004), "0.000");
  EXPECT_EQ(FormatFixed(-1e-300), "0.000");
}

TEST(FixedFormat, TenThousandthsRoundLikeIntegers) {
  test::RandomText random(52);
  for (int round = 0; round < 20000; ++round) {
    const int tenThousandths = random.Below(200000000) - 100000000;
    const int thousandths = (std::abs(tenThousandths) + 5) / 10;
    std::string decimals = std::to_string(thousandths % 1000);
    decimals.insert(0, 3 - decimals.size(), '0');
    std::string expected = tenThousandths < 0 && thousandths > 0 ? "-" : "";
    expected += std::to_string(thousandths / 1000) + "." + decimals;
    ASSERT_EQ(FormatFixed(tenThousandths / 10000.0), expected) << tenThousandths;
  }
}

TEST(NumberFormat, ANonFiniteValueIsAnOverflow) {
  for (const double value :
       {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(FaultOf([=] { return FormatGeneral(value); }), FaultKind::Overflow);
    EXPECT_EQ(FaultOf([=] { return FormatFixed(value); }), FaultKind::Overflow);
  }
}

TEST(TwoDigitFormat, HasAtLeastTwoDigitsAndKeepsTheSign) {
  EXPECT_EQ(FormatTwoDigits(0), "00");
  EXPECT_EQ(FormatTwoDigits(7), "07");
  EXPECT_EQ(FormatTwoDigits(10), "10");
  EXPECT_EQ(FormatTwoDigits(255), "255");
  EXPECT_EQ(FormatTwoDigits(-5), "-05");
  EXPECT_EQ(FormatTwoDigits(-123), "-123");
  EXPECT_EQ(FormatTwoDigits(std::numeric_limits<std::int32_t>::min()), "-2147483648");
}

}  // namespace
}  // namespace kelvara::base
