#include <gtest/gtest.h>

#include "cli/ConsoleTest.h"

namespace kelvara::test {
namespace {

class ConvertTest : public ConsoleTest {
 protected:
  std::string Convert(const std::string& field, const std::string& value) {
    return Output({"convert", field, value});
  }
};

TEST_F(ConvertTest, ConvertsFromRfpsPhase) {
  EXPECT_EQ(Convert("rfps", "1"), "ohms 5.753\nmetres 29.000\naasync 0\ndelay 0.096\n");
  EXPECT_EQ(Convert("rfps", "0"), "ohms 0.301\nmetres 0.000\naasync 0\ndelay 0.000\n");
  EXPECT_EQ(Convert("rfps", " 2.5 "), "ohms 13.931\nmetres 72.500\naasync 1\ndelay 0.241\n");
}

TEST_F(ConvertTest, ConvertsFromAaSyncUnits) {
  EXPECT_EQ(Convert("aasync", "1"),
            "ohms 24.741\nmetres 130.000\nrfps 4.48275862068966\ndelay 0.432\n");
  EXPECT_EQ(Convert("aasync", "252"),
            "ohms 6159.181\nmetres 32760.000\nrfps 1129.65517241379\ndelay 108.955\n");
  EXPECT_EQ(Convert("aasync", "2.5"), Convert("aasync", "2"));
  EXPECT_EQ(Convert("aasync", "3.5"), Convert("aasync", "4"));
}

TEST_F(ConvertTest, ConvertsFromMetres) {
  EXPECT_EQ(Convert("metres", "65"), "ohms 12.521\nrfps 2.24137931034483\naasync 0\ndelay 0.216\n");
  EXPECT_EQ(Convert("metres", "195"),
            "ohms 36.961\nrfps 6.72413793103448\naasync 2\ndelay 0.649\n");
}

TEST_F(ConvertTest, ConvertsFromOhms) {
  EXPECT_EQ(Convert("ohms", "0.3008"), "rfps 0\nmetres 0.000\naasync 0\ndelay 0.000\n");
}

TEST_F(ConvertTest, ConvertsFromDelay) {
  EXPECT_EQ(Convert("delay", "0.09645"), "rfps 1\nohms 5.753\nmetres 29.000\naasync 0\n");
}

TEST_F(ConvertTest, ConvertsFromHexadecimalRpn) {
  EXPECT_EQ(Convert("rpn", "0A"), "rpndec 10\nport 660\n");
  EXPECT_EQ(Convert("rpn", "ffff"), "rpndec -1\nport 594\n");
  EXPECT_EQ(Convert("rpn", "40"), "rpndec 64\nport 200\n");
  EXPECT_EQ(Convert("rpn", "0000000a"), "rpndec 10\nport 660\n");
}

TEST_F(ConvertTest, ConvertsFromDecimalRpn) {
  EXPECT_EQ(Convert("rpndec", "10"), "rpn A\nport 660\n");
  EXPECT_EQ(Convert("rpndec", "abc"), "rpn 0\nport 600\n");
  EXPECT_EQ(Convert("rpndec", ""), "rpn 0\nport 600\n");
  EXPECT_EQ(Convert("rpndec", " 1 0 antennas"), "rpn A\nport 660\n");
  EXPECT_EQ(Convert("rpndec", "2.5"), "rpn 2\nport 612\n");
}

TEST_F(ConvertTest, ConvertsFromPortNumber) {
  EXPECT_EQ(Convert("port", "660"), "rpn A\nrpndec 10\n");
  EXPECT_EQ(Convert("port", "603"), "rpn 0\nrpndec 0\n");
  EXPECT_EQ(Convert("port", "609"), "rpn 2\nrpndec 2\n");
  EXPECT_EQ(Convert("port", "599"), "rpn 82\nrpndec 130\n");
}

TEST_F(ConvertTest, ValuesMayBeNegative) {
  EXPECT_EQ(Convert("rfps", "-1"), "ohms -5.151\nmetres -29.000\naasync 0\ndelay -0.096\n");
  EXPECT_EQ(Convert("rfps", "-.5"), "ohms -2.425\nmetres -14.500\naasync 0\ndelay -0.048\n");
  EXPECT_EQ(Convert("aasync", "-1"),
            "ohms -24.139\nmetres -130.000\nrfps -4.48275862068966\ndelay -0.432\n");
  EXPECT_EQ(Convert("metres", "-0"), "ohms 0.301\nrfps 0\naasync 0\ndelay 0.000\n");
  EXPECT_EQ(Convert("rpndec", "-1"), "rpn FFFF\nport 594\n");
}

TEST_F(ConvertTest, AValueThatFailsPrintsNothingAndExitsWithOne) {
  const std::vector<std::pair<std::string, std::string>> failures = {
      {"rfps", ""},     {"rfps", "abc"},     {"rfps", "1,5"},       {"rfps", "1 2"},
      {"rfps", "0x10"}, {"rfps", "inf"},     {"rfps", "nan"},       {"rfps", "1e400"},
      {"rfps", "-x"},   {"rfps", "147000"},  {"aasync", "253"},     {"aasync", "-253"},
      {"aasync", ""},   {"metres", "x"},     {"metres", "4300000"}, {"ohms", "-"},
      {"ohms", " "},    {"delay", "--1"},    {"rpn", ""},           {"rpn", "G"},
      {"rpn", "-1"},    {"rpn", " A"},       {"rpn", "123456789"},  {"rpn", "12345"},
      {"rpn", "14F2"},  {"rpndec", "40000"}, {"rpndec", "5362"},    {"port", ""},
      {"port", "abc"},  {"port", "40000"},   {"port", "-32768"}};
  for (const auto& [field, value] : failures) {
    SCOPED_TRACE(::testing::PrintToString(std::pair(field, value)));
    const ConsoleResult result = Run({"convert", field, value});
    ExpectComplaint(result, 1, value);
    EXPECT_EQ(result.output, "");
  }
}

TEST_F(ConvertTest, AnUnknownFieldExitsWithTwo) {
  for (const char* field : {"feet", "RFPS", "", "rfps ", "rp"}) {
    SCOPED_TRACE(field);
    const ConsoleResult result = Run({"convert", field, "1"});
    ExpectComplaint(result, 2, field);
    EXPECT_EQ(result.output, "");
  }
}

TEST_F(ConvertTest, TooFewOrTooManyArgumentsExitWithTwo) {
  ExpectComplaint(Run({"convert"}), 2, "FIELD");
  ExpectComplaint(Run({"convert", "rfps"}), 2, "VALUE");
  ExpectComplaint(Run({"convert", "rfps", "1", "surplus"}), 2, "surplus");
}

}  // namespace
}  // namespace kelvara::test
