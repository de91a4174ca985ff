#include "base/NumberReading.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>

#include "support/Faults.h"
#include "support/RandomText.h"

namespace kelvara::base {
namespace {

using test::FaultOf;

double ReadField(std::string_view text) { return ReadLeadingNumber(text, Blanks::Leading); }

double ReadLenient(std::string_view text) { return ReadLeadingNumber(text, Blanks::Anywhere); }

TEST(LenientReading, AcceptsASignDigitsAndOneDecimalPoint) {
  for (const auto read : {&ReadField, &ReadLenient}) {
    EXPECT_EQ(read("12"), 12.0);
    EXPECT_EQ(read("-12"), -12.0);
    EXPECT_EQ(read("+12"), 12.0);
    EXPECT_EQ(read("1.5"), 1.5);
    EXPECT_EQ(read(".5"), 0.5);
    EXPECT_EQ(read("-.5"), -0.5);
    EXPECT_EQ(read("5."), 5.0);
    EXPECT_EQ(read("007"), 7.0);
  }
}

TEST(LenientReading, StopsAtTheFirstCharacterThatCannotContinueANumber) {
  for (const auto read : {&ReadField, &ReadLenient}) {
    EXPECT_EQ(read("12abc"), 12.0);
    EXPECT_EQ(read("1.2.3"), 1.2);
    EXPECT_EQ(read("1-2"), 1.0);
    EXPECT_EQ(read("5\r\n"), 5.0);
    EXPECT_EQ(read("3\t4"), 3.0);
    EXPECT_EQ(read(std::string_view("4\0005", 3)), 4.0);
  }
}

TEST(LenientReading, ReadsNeitherExponentsNorCommas) {
  for (const auto read : {&ReadField, &ReadLenient}) {
    EXPECT_EQ(read("1e3"), 1.0);
    EXPECT_EQ(read("2E5"), 2.0);
    EXPECT_EQ(read("1,5"), 1.0);
    EXPECT_EQ(read("1,000"), 1.0);
  }
}

TEST(LenientReading, ATextWithoutANumberGivesZero) {
  for (const auto read : {&ReadField, &ReadLenient}) {
    for (const std::string_view text :
         {"", " ", "   ", "abc", "-", "+", ".", "-.", "--5", "+-5", "e3", ",5", "inf", "nan", "&H1",
          "?12", "\t5", "\r\n7", "\2405"}) {
      EXPECT_EQ(read(text), 0.0) << '"' << text << '"';
    }
    EXPECT_EQ(read("0x10"), 0.0);
  }
}

TEST(LenientReading, APhaseFieldSkipsLeadingBlanksOnly) {
  EXPECT_EQ(ReadField("  7"), 7.0);
  EXPECT_EQ(ReadField(" -1"), -1.0);
  EXPECT_EQ(ReadField("1 2"), 1.0);
  EXPECT_EQ(ReadField("- 5"), 0.0);
  EXPECT_EQ(ReadField("1 .5"), 1.0);
}

TEST(LenientReading, ADecimalRpnSkipsBlanksAnywhere) {
  EXPECT_EQ(ReadLenient(" 1 2 "), 12.0);
  EXPECT_EQ(ReadLenient("- 5"), -5.0);
  EXPECT_EQ(ReadLenient(" 1 . 5 "), 1.5);
  EXPECT_EQ(ReadLenient("1 x2"), 1.0);
}

TEST(LenientReading, ANumberOutsideTheRangeOfDoublesOverflowsOrIsZero) {
  const std::string huge(400, '9');
  const std::string tiny = "0." + std::string(400, '0') + "1";
  for (const auto read : {&ReadField, &ReadLenient}) {
    EXPECT_EQ(FaultOf([&] { return read(huge); }), FaultKind::Overflow);
    EXPECT_EQ(FaultOf([&] { return read("-" + huge); }), FaultKind::Overflow);
    EXPECT_EQ(read(tiny), 0.0);
    EXPECT_EQ(read("-" + tiny), 0.0);
    EXPECT_EQ(read(std::string(400, '0') + "7"), 7.0);
  }
}

TEST(StrictConversion, AcceptsANumberWithBlanksAtBothEnds) {
  EXPECT_EQ(ReadWholeNumber("12"), 12.0);
  EXPECT_EQ(ReadWholeNumber("  -12.25  "), -12.25);
  EXPECT_EQ(ReadWholeNumber("+3"), 3.0);
  EXPECT_EQ(ReadWholeNumber(".5"), 0.5);
  EXPECT_EQ(ReadWholeNumber("5."), 5.0);
  EXPECT_EQ(ReadWholeNumber("-0"), 0.0);
  EXPECT_EQ(ReadWholeNumber("0.3008"), 0.3008);
}

TEST(StrictConversion, AcceptsAnExponent) {
  EXPECT_EQ(ReadWholeNumber("1e3"), 1000.0);
  EXPECT_EQ(ReadWholeNumber("1E3"), 1000.0);
  EXPECT_EQ(ReadWholeNumber("1e+3"), 1000.0);
  EXPECT_EQ(ReadWholeNumber("-2.5e-1"), -0.25);
  EXPECT_EQ(ReadWholeNumber(" .5e1 "), 5.0);
  EXPECT_EQ(ReadWholeNumber("5.e1"), 50.0);
  EXPECT_EQ(ReadWholeNumber("1e0003"), 1000.0);
}

TEST(StrictConversion, AnythingElseIsNotANumber) {
  for (const std::string_view text :
       {"",    " ",     "abc", "12x",   "x12",   "1 2",   "- 5",      "--5",  "+-5",   ".",
        "-",   "+",     "1e",  "1e+",   "e3",    ".e3",   "1 e3",     "1e 3", "1e3.5", "1e3e3",
        "1,5", "1,000", "inf", "INF",   "-inf",  "nan",   "0x10",     "&h10", "1d3",   "1.2.3",
        "\t5", "5\r\n", "5\t", "\2405", "1'000", "1_000", "Infinity", "5%",   "(5)",   "$5"}) {
    EXPECT_EQ(FaultOf([=] { return ReadWholeNumber(text); }), FaultKind::NotANumber)
        << '"' << text << '"';
  }
  EXPECT_EQ(FaultOf([] { return ReadWholeNumber(std::string_view("5\0", 2)); }),
            FaultKind::NotANumber);
}

TEST(StrictConversion, ANumberTooLargeForADoubleIsAnOverflow) {
  for (const std::string& text :
       {std::string("1e400"), std::string("-1e400"), std::string("1.8e308"),
        std::string("1e99999999999999999999"), std::string("0.001e99999999999999999999"),
        std::string("1e9223372036854775807"), std::string("0.01e9223372036854775808"),
        std::string(400, '9'), "-" + std::string(400, '9') + ".5",
        "0." + std::string(400, '0') + "1e801"}) {
    EXPECT_EQ(FaultOf([&] { return ReadWholeNumber(text); }), FaultKind::Overflow) << text;
  }
}

TEST(StrictConversion, ANumberTooSmallForADoubleIsZero) {
  for (const std::string& text :
       {std::string("1e-400"), std::string("-1e-400"), std::string("2e-324"),
        std::string("1e-99999999999999999999"), std::string("999e-99999999999999999999"),
        std::string("0.01e-9223372036854775807"), std::string("0.01e-9223372036854775808"),
        "0." + std::string(400, '0') + "1", "1" + std::string(400, '0') + "e-801"}) {
    EXPECT_EQ(ReadWholeNumber(text), 0.0) << text;
  }
}

TEST(StrictConversion, ZeroStaysZeroWhateverItsExponent) {
  EXPECT_EQ(ReadWholeNumber("0e400"), 0.0);
  EXPECT_EQ(ReadWholeNumber("0.000e99999999999999999999"), 0.0);
  EXPECT_EQ(ReadWholeNumber("-0e-400"), 0.0);
}

TEST(StrictConversion, TheLimitsOfTheRangeOfDoublesAreRead) {
  EXPECT_EQ(ReadWholeNumber("1.7976931348623157e308"), std::numeric_limits<double>::max());
  EXPECT_EQ(ReadWholeNumber("2.2250738585072014e-308"), std::numeric_limits<double>::min());
  EXPECT_EQ(ReadWholeNumber("5e-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(ReadWholeNumber("1e-310"), 1e-310);
  EXPECT_EQ(ReadWholeNumber("0." + std::string(400, '0') + "1e401"), 1.0);
  EXPECT_EQ(ReadWholeNumber("1" + std::string(400, '0') + "e-400"), 1.0);
}

TEST(StrictConversion, AgreesWithTheStandardLibrary) {
  test::RandomText random(41);
  for (int round = 0; round < 20000; ++round) {
    std::string text = random.Below(2) == 0 ? "-" : "";
    for (int digits = 1 + random.Below(20); digits > 0; --digits) {
      text += static_cast<char>('0' + random.Below(10));
    }
    text += '.';
    for (int digits = random.Below(20); digits > 0; --digits) {
      text += static_cast<char>('0' + random.Below(10));
    }
    if (random.Below(2) == 0) {
      text += "e" + std::to_string(random.Below(560) - 280);
    }
    ASSERT_EQ(ReadWholeNumber(text), std::strtod(text.c_str(), nullptr)) << text;
  }
}

TEST(NumberReading, AnyTextGivesANumberOrAFault) {
  test::RandomText random(42);
  for (int round = 0; round < 20000; ++round) {
    std::string text = random.Bytes(12);
    for (char& character : text) {
      if (random.Below(4) != 0) {
        character = " 0123456789+-.eE,"[random.Below(17)];
      }
    }
    const double lenient = ReadLenient(text);
    ASSERT_EQ(lenient, lenient) << text;
    double strict = 0.0;
    if (!FaultOf([&] { return strict = ReadWholeNumber(text); }) &&
        text.find_first_of("eE") == std::string::npos) {
      ASSERT_EQ(strict, lenient) << text;
      ASSERT_EQ(strict, ReadField(text)) << text;
    }
  }
}

TEST(TrimBlanks, RemovesOnlyTheBlanksAtBothEnds) {
  EXPECT_EQ(TrimBlanks("  a b  "), "a b");
  EXPECT_EQ(TrimBlanks("   "), "");
  EXPECT_EQ(TrimBlanks(""), "");
  EXPECT_EQ(TrimBlanks("\t5\r\n"), "\t5\r\n");
}

}  // namespace
}  // namespace kelvara::base
