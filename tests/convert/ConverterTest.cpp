#include "convert/Converter.h"

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>
#include <ostream>

#include "support/Faults.h"
#include "support/RandomText.h"

namespace kelvara::convert {

void PrintTo(const FieldText& fieldText, std::ostream* stream) {
  constexpr std::array kNames{"TextRfps",  "TextAASync", "TextMetres",  "TextOhms",
                              "TextDelay", "TextRpn",    "TextPortNum", "TextRpnDec"};
  *stream << kNames.at(static_cast<std::size_t>(fieldText.field)) << " = \"" << fieldText.text
          << '"';
}

namespace {

using base::FaultKind;
using enum Field;
using test::FaultOf;
using Texts = std::vector<FieldText>;

Texts Update(Field source, std::string_view text) { return Converter().Update(source, text); }

std::optional<FaultKind> UpdateFault(Field source, std::string_view text) {
  return FaultOf([=] { return Update(source, text); });
}

/// The text that an Update writes into one field.
std::string Written(Field source, std::string_view text, Field field) {
  for (const FieldText& written : Update(source, text)) {
    if (written.field == field) {
      return written.text;
    }
  }
  return "not written";
}

TEST(CmdUpdateRFPS, WritesOhmsMetresAaSyncAndDelay) {
  EXPECT_EQ(
      Update(TextRfps, "1"),
      (Texts{
          {TextOhms, "5.753"}, {TextMetres, "29.000"}, {TextAASync, "0"}, {TextDelay, "0.096"}}));
  EXPECT_EQ(
      Update(TextRfps, "0"),
      (Texts{{TextOhms, "0.301"}, {TextMetres, "0.000"}, {TextAASync, "0"}, {TextDelay, "0.000"}}));
  EXPECT_EQ(Update(TextRfps, " -10.5 "), (Texts{{TextOhms, "-56.945"},
                                                {TextMetres, "-304.500"},
                                                {TextAASync, "-2"},
                                                {TextDelay, "-1.013"}}));
}

TEST(CmdUpdateAASync, WritesOhmsMetresRfpsAndDelay) {
  EXPECT_EQ(Update(TextAASync, "1"), (Texts{{TextOhms, "24.741"},
                                            {TextMetres, "130.000"},
                                            {TextRfps, "4.48275862068966"},
                                            {TextDelay, "0.432"}}));
  EXPECT_EQ(Update(TextAASync, "29"), (Texts{{TextOhms, "709.061"},
                                             {TextMetres, "3770.000"},
                                             {TextRfps, "130"},
                                             {TextDelay, "12.539"}}));
}

TEST(CmdUpdateAASync, TheMetresOverflowOutsidePlusMinus252) {
  EXPECT_EQ(Written(TextAASync, "252", TextMetres), "32760.000");
  EXPECT_EQ(Written(TextAASync, "-252", TextMetres), "-32760.000");
  EXPECT_EQ(UpdateFault(TextAASync, "253"), FaultKind::Overflow);
  EXPECT_EQ(UpdateFault(TextAASync, "-253"), FaultKind::Overflow);
}

TEST(CmdUpdateAASync, RoundsTheTextHalfToEvenFirst) {
  EXPECT_EQ(Written(TextAASync, "2.5", TextMetres), "260.000");
  EXPECT_EQ(Written(TextAASync, "3.5", TextMetres), "520.000");
  EXPECT_EQ(Written(TextAASync, "252.5", TextMetres), "32760.000");
}

TEST(CmdUpdateMetres, WritesOhmsRfpsAaSyncAndDelay) {
  EXPECT_EQ(Update(TextMetres, "29"),
            (Texts{{TextOhms, "5.753"}, {TextRfps, "1"}, {TextAASync, "0"}, {TextDelay, "0.096"}}));
}

TEST(CmdUpdateMetres, AaSyncUnitsRoundHalfToEven) {
  EXPECT_EQ(Written(TextMetres, "65", TextAASync), "0");
  EXPECT_EQ(Written(TextMetres, "195", TextAASync), "2");
  EXPECT_EQ(Written(TextMetres, "-65", TextAASync), "0");
  EXPECT_EQ(Written(TextMetres, "-195", TextAASync), "-2");
}

TEST(CmdUpdateOhms, WritesRfpsMetresAaSyncAndDelay) {
  EXPECT_EQ(
      Update(TextOhms, "0.3008"),
      (Texts{{TextRfps, "0"}, {TextMetres, "0.000"}, {TextAASync, "0"}, {TextDelay, "0.000"}}));
  EXPECT_EQ(Update(TextOhms, "18.8"), (Texts{{TextRfps, "3.39310344827586"},
                                             {TextMetres, "98.400"},
                                             {TextAASync, "1"},
                                             {TextDelay, "0.327"}}));
}

TEST(CmdUpdateDelay, WritesRfpsOhmsMetresAndAaSync) {
  EXPECT_EQ(
      Update(TextDelay, "0.09645"),
      (Texts{{TextRfps, "1"}, {TextOhms, "5.753"}, {TextMetres, "29.000"}, {TextAASync, "0"}}));
}

TEST(UnitFields, NeverShowMinusZero) {
  EXPECT_EQ(
      Update(TextRfps, "-0.00001"),
      (Texts{{TextOhms, "0.301"}, {TextMetres, "0.000"}, {TextAASync, "0"}, {TextDelay, "0.000"}}));
  EXPECT_EQ(Written(TextMetres, "-0", TextRfps), "0");
}

TEST(UnitFields, UseTheStrictConversion) {
  EXPECT_EQ(Written(TextRfps, "  1e1 ", TextMetres), "290.000");
  EXPECT_EQ(Written(TextMetres, "+13.", TextOhms), "2.745");
  EXPECT_EQ(Written(TextRfps, "1e-400", TextMetres), "0.000");
  EXPECT_EQ(Written(TextRfps, "0." + std::string(400, '0') + "1", TextMetres), "0.000");
}

TEST(UnitFields, ATextThatIsNotANumberFaultsBeforeAnythingIsWritten) {
  for (const Field source : {TextRfps, TextAASync, TextMetres, TextOhms, TextDelay, TextPortNum}) {
    for (const std::string_view text :
         {"", "   ", "abc", "12x", "1 2", "1,5", "inf", "nan", "0x1", "&h1", "1e"}) {
      EXPECT_EQ(UpdateFault(source, text), FaultKind::NotANumber) << '"' << text << '"';
    }
    EXPECT_EQ(UpdateFault(source, "1e400"), FaultKind::Overflow);
    EXPECT_EQ(UpdateFault(source, "-1e400"), FaultKind::Overflow);
    EXPECT_EQ(UpdateFault(source, "1e300"), FaultKind::Overflow);
  }
}

TEST(UnitFields, AaSyncUnitsOutsideSixteenBitsFault) {
  EXPECT_EQ(Written(TextMetres, "4259710", TextAASync), "32767");
  EXPECT_EQ(UpdateFault(TextMetres, "4259840"), FaultKind::Overflow);
  EXPECT_EQ(UpdateFault(TextRfps, "150000"), FaultKind::Overflow);
  EXPECT_EQ(UpdateFault(TextOhms, "-1000000"), FaultKind::Overflow);
  EXPECT_EQ(UpdateFault(TextDelay, "20000"), FaultKind::Overflow);
}

TEST(CmdRpn, WritesDecimalRpnAndPortNumber) {
  EXPECT_EQ(Update(TextRpn, "0A"), (Texts{{TextRpnDec, "10"}, {TextPortNum, "660"}}));
  EXPECT_EQ(Update(TextRpn, "a"), (Texts{{TextRpnDec, "10"}, {TextPortNum, "660"}}));
  EXPECT_EQ(Update(TextRpn, "40"), (Texts{{TextRpnDec, "64"}, {TextPortNum, "200"}}));
}

TEST(CmdRpn, UpToFourDigitsAreATwosComplement) {
  EXPECT_EQ(Update(TextRpn, "FFFF"), (Texts{{TextRpnDec, "-1"}, {TextPortNum, "594"}}));
  EXPECT_EQ(Update(TextRpn, "ffFe"), (Texts{{TextRpnDec, "-2"}, {TextPortNum, "588"}}));
}

TEST(CmdRpn, MoreDigitsAreAThirtyTwoBitNumber) {
  EXPECT_EQ(Update(TextRpn, "000FF"), (Texts{{TextRpnDec, "255"}, {TextPortNum, "1346"}}));
  EXPECT_EQ(Update(TextRpn, "0000000A"), (Texts{{TextRpnDec, "10"}, {TextPortNum, "660"}}));
  EXPECT_EQ(Update(TextRpn, "FFFFFFFF"), (Texts{{TextRpnDec, "-1"}, {TextPortNum, "594"}}));
  EXPECT_EQ(UpdateFault(TextRpn, "0FFFF"), FaultKind::Overflow);
  EXPECT_EQ(UpdateFault(TextRpn, "00008000"), FaultKind::Overflow);
  EXPECT_EQ(UpdateFault(TextRpn, "10000"), FaultKind::Overflow);
  EXPECT_EQ(UpdateFault(TextRpn, "80000000"), FaultKind::Overflow);
}

TEST(CmdRpn, APortNumberOutsideSixteenBitsFaults) {
  EXPECT_EQ(Update(TextRpn, "14F1"), (Texts{{TextRpnDec, "5361"}, {TextPortNum, "31982"}}));
  EXPECT_EQ(UpdateFault(TextRpn, "14F2"), FaultKind::Overflow);
  EXPECT_EQ(UpdateFault(TextRpn, "8000"), FaultKind::Overflow);
  EXPECT_EQ(UpdateFault(TextRpn, "FFFF8000"), FaultKind::Overflow);
}

TEST(CmdRpn, AnythingButOneToEightHexadecimalDigitsFaults) {
  for (const std::string_view text : {"", " ", " A", "A ", "+A", "-A", "G", "0G", "A.", "&hA",
                                      "0x0A", "1 0", "00000000A", "FFFFFFFFF", "A\r"}) {
    EXPECT_NE(UpdateFault(TextRpn, text), std::nullopt) << '"' << text << '"';
  }
}

TEST(CmdRpnDec, WritesHexadecimalRpnAndPortNumber) {
  EXPECT_EQ(Update(TextRpnDec, "10"), (Texts{{TextRpn, "A"}, {TextPortNum, "660"}}));
  EXPECT_EQ(Update(TextRpnDec, "255"), (Texts{{TextRpn, "FF"}, {TextPortNum, "1346"}}));
  EXPECT_EQ(Update(TextRpnDec, "-1"), (Texts{{TextRpn, "FFFF"}, {TextPortNum, "594"}}));
}

TEST(CmdRpnDec, ReadsItsTextLeniently) {
  const Texts zero{{TextRpn, "0"}, {TextPortNum, "600"}};
  for (const std::string_view text : {"", "  ", "abc", "x5", "\t5", "?", "-", "."}) {
    EXPECT_EQ(Update(TextRpnDec, text), zero) << '"' << text << '"';
  }
  EXPECT_EQ(Written(TextRpnDec, "12abc", TextRpn), "C");
  EXPECT_EQ(Written(TextRpnDec, " 1 2 ", TextRpn), "C");
  EXPECT_EQ(Written(TextRpnDec, "- 1", TextRpn), "FFFF");
  EXPECT_EQ(Written(TextRpnDec, "1e3", TextRpn), "1");
  EXPECT_EQ(Written(TextRpnDec, "1,5", TextRpn), "1");
}

TEST(CmdRpnDec, RoundsHalfToEvenIntoSixteenBits) {
  EXPECT_EQ(Written(TextRpnDec, "2.5", TextRpn), "2");
  EXPECT_EQ(Written(TextRpnDec, "3.5", TextRpn), "4");
  EXPECT_EQ(UpdateFault(TextRpnDec, "40000"), FaultKind::Overflow);
  EXPECT_EQ(UpdateFault(TextRpnDec, std::string(400, '9')), FaultKind::Overflow);
  EXPECT_EQ(Written(TextRpnDec, "5361", TextPortNum), "31982");
  EXPECT_EQ(UpdateFault(TextRpnDec, "5362"), FaultKind::Overflow);
}

TEST(CmdPortNum, WritesHexadecimalAndDecimalRpnWithoutALeadingZero) {
  EXPECT_EQ(Update(TextPortNum, "660"), (Texts{{TextRpn, "A"}, {TextRpnDec, "10"}}));
  EXPECT_EQ(Update(TextPortNum, "200"), (Texts{{TextRpn, "40"}, {TextRpnDec, "64"}}));
  EXPECT_EQ(Update(TextPortNum, "599"), (Texts{{TextRpn, "82"}, {TextRpnDec, "130"}}));
  EXPECT_EQ(Update(TextPortNum, "32767"), (Texts{{TextRpn, "14F1"}, {TextRpnDec, "5361"}}));
}

TEST(CmdPortNum, RoundsItsTextHalfToEven) {
  EXPECT_EQ(Written(TextPortNum, "602.5", TextRpnDec), "0");
  EXPECT_EQ(Written(TextPortNum, "603.5", TextRpnDec), "1");
}

TEST(CmdPortNum, AnIntermediateResultOutsideSixteenBitsFaults) {
  EXPECT_EQ(Update(TextPortNum, "-32568"), (Texts{{TextRpn, "EAEB"}, {TextRpnDec, "-5397"}}));
  EXPECT_EQ(UpdateFault(TextPortNum, "-32569"), FaultKind::Overflow);
  EXPECT_EQ(UpdateFault(TextPortNum, "32768"), FaultKind::Overflow);
}

TEST(Converter, WorksAfterAFault) {
  Converter converter;
  EXPECT_EQ(FaultOf([&] { return converter.Update(TextRpn, "14F2"); }), FaultKind::Overflow);
  EXPECT_EQ(FaultOf([&] { return converter.Update(TextPortNum, "-32569"); }), FaultKind::Overflow);
  EXPECT_EQ(converter.Update(TextRpn, "0A"), (Texts{{TextRpnDec, "10"}, {TextPortNum, "660"}}));
}

TEST(Converter, AnyTextWritesTheWholeGroupOrNothing) {
  test::RandomText random(61);
  Converter converter;
  for (int round = 0; round < 20000; ++round) {
    const auto source = static_cast<Field>(random.Below(8));
    std::string text = random.Bytes(8);
    for (char& character : text) {
      if (random.Below(8) != 0) {
        character = "0123456789ABCDEFe+-. "[random.Below(21)];
      }
    }
    Texts written;
    if (!FaultOf([&] { written = converter.Update(source, text); })) {
      const bool isUnit = source <= TextDelay;
      ASSERT_EQ(written.size(), isUnit ? 4U : 2U) << text;
      for (const FieldText& fieldText : written) {
        ASSERT_NE(fieldText.field, source) << text;
        ASSERT_EQ(fieldText.field <= TextDelay, isUnit) << text;
        ASSERT_NE(fieldText.text, "") << text;
        ASSERT_NE(fieldText.text, "-0") << text;
        ASSERT_NE(fieldText.text, "-0.000") << text;
      }
    }
  }
}

}  // namespace
}  // namespace kelvara::convert
