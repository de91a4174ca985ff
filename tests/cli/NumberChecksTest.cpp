#include "cli/NumberChecks.h"

#include <gtest/gtest.h>

namespace kelvara::cli {
namespace {

TEST(CheckWholeNumber, AcceptsPlainDigitsFromTheLeastToTheMost) {
  for (const char* const text : {"1", "7", "12"}) {
    EXPECT_EQ(CheckWholeNumber(text, 1, 12), "") << text;
  }
  EXPECT_EQ(CheckWholeNumber("2147483647", 1, 2147483647), "");
  EXPECT_EQ(CheckWholeNumber("0", 0, 12), "");
  EXPECT_EQ(CheckWholeNumber("18446744073709551615", 0, 18446744073709551615U), "");
}

TEST(CheckWholeNumber, SaysWhatIsWrongWithAnythingElse) {
  for (const char* const text : {"", "0", "13", "-1", "+1", " 1", "1 ", "1.0", "1e1", "0x1", "07",
                                 "one", "2147483648", "99999999999999999999"}) {
    EXPECT_EQ(CheckWholeNumber(text, 1, 12),
              "\"" + std::string(text) + "\" is not a whole number from 1 to 12");
  }
  for (const char* const text : {"", "-1", "00", "18446744073709551616"}) {
    EXPECT_EQ(CheckWholeNumber(text, 0, 18446744073709551615U),
              "\"" + std::string(text) + "\" is not a whole number from 0 to 18446744073709551615");
  }
}

TEST(CheckPositiveNumber, AcceptsDecimalsAboveZeroUpToTheMost) {
  for (const char* const text : {"1000", "0.5", ".5", "1e-3", "999.999"}) {
    EXPECT_EQ(CheckPositiveNumber(text, 1000), "") << text;
  }
}

TEST(CheckPositiveNumber, SaysWhatIsWrongWithAnythingElse) {
  for (const char* const text : {"", "0", "-0.5", "1000.001", "fast", "1x", "nan", "inf"}) {
    EXPECT_EQ(CheckPositiveNumber(text, 1000),
              "\"" + std::string(text) + "\" is not a number above 0 and up to 1000");
  }
}

}  // namespace
}  // namespace kelvara::cli
