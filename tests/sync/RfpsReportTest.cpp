#include "sync/RfpsReport.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "support/Faults.h"
#include "support/ReportText.h"

namespace kelvara::sync {
namespace {

using base::FaultKind;
using test::ExampleReport;
using test::FaultOf;
using test::Identity;
using test::NeighbourBlock;
using test::Reading;
using test::Report;
using test::ReportOfMany;
using test::SyncBlock;

const std::string kSync1 = SyncBlock("100ec5A301");

void ExpectEntry(const RfpsReport& report, int index, int rpn, int fps, int fpn, int phase) {
  ASSERT_LT(index, report.count);
  const RfpsEntry& entry = report.entries.at(static_cast<std::size_t>(index));
  EXPECT_EQ(entry.ToRpn, rpn);
  EXPECT_EQ(entry.ToFps, fps);
  EXPECT_EQ(entry.ToFpn, fpn);
  EXPECT_EQ(entry.Phase, phase);
}

/// The phase kept for a neighbour with these readings; nothing if it is not kept.
std::optional<int> PhaseOf(std::initializer_list<std::string_view> fields) {
  const RfpsReport report = ReadRfpsReport(Report({kSync1, NeighbourBlock("100ec5A302", fields)}));
  if (report.count < 2) {
    return std::nullopt;
  }
  return report.entries[1].Phase;
}

/// The same for a last block with this text after its identity.
std::optional<int> PhaseOfBlock(const std::string& afterIdentity) {
  const RfpsReport report = ReadRfpsReport(Report({kSync1, "100ec5A302" + afterIdentity}));
  if (report.count < 2) {
    return std::nullopt;
  }
  return report.entries[1].Phase;
}

TEST(RfpsReport, TheExampleHasItsThreeEntries) {
  const RfpsReport report = ReadRfpsReport(ExampleReport());
  EXPECT_EQ(report.count, 3);
  EXPECT_EQ(report.syncIndex, 0);
  ExpectEntry(report, 0, 1, 3, 90, 0);
  ExpectEntry(report, 1, 2, 3, 90, -11);
  ExpectEntry(report, 2, 6, 3, 90, 7);
}

TEST(RfpsReport, AnEmptyTextHasNoEntries) {
  for (const std::string_view text : {"", "r", "rfps\r\n", "1", "100ec", "nothing to see"}) {
    const RfpsReport report = ReadRfpsReport(text);
    EXPECT_EQ(report.count, 0) << text;
    EXPECT_EQ(report.syncIndex, 0) << text;
  }
}

TEST(RfpsReport, AnIdentityIsFpnFpsAndRpnInHexadecimalOfAnyCase) {
  const RfpsReport report = ReadRfpsReport(Report({"100ecFEdCb Sync"}));
  EXPECT_EQ(report.count, 1);
  ExpectEntry(report, 0, 0xCB, 0xD, 0xFE, 0);
}

TEST(RfpsReport, AFieldIsReadUpToTheFirstCharacterThatIsNotAHexadecimalDigit) {
  ExpectEntry(ReadRfpsReport(Report({"100ec5x3Ax Sync"})), 0, 0xA, 3, 5, 0);
  ExpectEntry(ReadRfpsReport(Report({"100ecx5gx1 Sync"})), 0, 0, 0, 0, 0);
  ExpectEntry(ReadRfpsReport(Report({"100ec 5- 1 Sync"})), 0, 0, 0, 0, 0);
}

TEST(RfpsReport, AnIdentityCutShortByTheEndOfTheTextIsReadAsFarAsItGoes) {
  ExpectEntry(ReadRfpsReport("rfps 100ecSync"), 0, 0xC, 0, 0, 0);
  const RfpsReport report = ReadRfpsReport("rfps 100ec5A301 Neighbour phase =    7 100ec5A3");
  ExpectEntry(report, 0, 1, 3, 90, 7);
  EXPECT_EQ(report.count, 1);
}

TEST(RfpsReport, TheThreeWordsMatchInAnyLetterCase) {
  const RfpsReport report = ReadRfpsReport(
      "rfps\r\n100EC5A301 sYNC\r\n100Ec5A302 NEIGHBOUR phase =   12\r\n"
      "100eC5A303 neighbour phase =  -12\r\n");
  EXPECT_EQ(report.count, 3);
  EXPECT_EQ(report.syncIndex, 0);
  ExpectEntry(report, 1, 2, 3, 90, 12);
  ExpectEntry(report, 2, 3, 3, 90, -12);
}

TEST(RfpsReport, AMarkerAtTheVeryFirstCharacterIsIgnored) {
  const RfpsReport report =
      ReadRfpsReport(SyncBlock("100ec5A301") + NeighbourBlock("100ec5A302", {"  4"}));
  EXPECT_EQ(report.count, 1);
  EXPECT_EQ(report.syncIndex, 0);
  ExpectEntry(report, 0, 2, 3, 90, 4);

  const RfpsReport preceded =
      ReadRfpsReport(" " + SyncBlock("100ec5A301") + NeighbourBlock("100ec5A302", {"  4"}));
  EXPECT_EQ(preceded.count, 2);
}

// The block before the first marker ends with that marker's first character. Here that is its only
// character, so the word after the marker is not part of it.
TEST(RfpsReport, AMarkerAtTheVeryFirstCharacterStillEndsTheBlockBeforeIt) {
  EXPECT_EQ(ReadRfpsReport("100ec5A301 Sync").count, 0);
  EXPECT_EQ(ReadRfpsReport("100ec5A301 " + Reading("  4")).count, 0);
}

TEST(RfpsReport, TheSyncBlockMayBeAnywhere) {
  const RfpsReport report = ReadRfpsReport(Report(
      {NeighbourBlock("100ec5A302", {"  4"}), kSync1, NeighbourBlock("100ec5A303", {" -4"})}));
  EXPECT_EQ(report.count, 3);
  EXPECT_EQ(report.syncIndex, 1);
  ExpectEntry(report, 1, 1, 3, 90, 0);
  ExpectEntry(report, 2, 3, 3, 90, -4);
}

TEST(RfpsReport, NoPhaseIsReadFromTheSyncBlock) {
  const RfpsReport report = ReadRfpsReport(Report({"100ec5A301 Sync " + Reading("  9")}));
  EXPECT_EQ(report.count, 1);
  ExpectEntry(report, 0, 1, 3, 90, 0);
}

TEST(RfpsReport, ANeighbourBlockWithTheWordSyncIsTheSyncBlockUntilALaterOneReplacesIt) {
  const RfpsReport report = ReadRfpsReport(Report({"100ec5A302 async " + Reading("  9"), kSync1}));
  EXPECT_EQ(report.count, 2);
  EXPECT_EQ(report.syncIndex, 1);
  ExpectEntry(report, 0, 2, 3, 90, 0);
  ExpectEntry(report, 1, 1, 3, 90, 0);
}

TEST(RfpsReport, WithoutASyncBlockTheSyncIndexStaysZero) {
  const RfpsReport report = ReadRfpsReport(
      Report({NeighbourBlock("100ec5A302", {"  4"}), NeighbourBlock("100ec5A303", {"  5"})}));
  EXPECT_EQ(report.count, 2);
  EXPECT_EQ(report.syncIndex, 0);
}

TEST(RfpsReport, UnknownNeighboursAreOverwrittenByTheNextBlock) {
  const RfpsReport report = ReadRfpsReport(
      Report({kSync1, NeighbourBlock("100ecFFF04", {"  ?"}), NeighbourBlock("100ecFFF05", {"   "}),
              "100ecFFF06 silent\r\n", NeighbourBlock("100ec5A307", {" 10"})}));
  EXPECT_EQ(report.count, 2);
  ExpectEntry(report, 1, 7, 3, 90, 10);
}

TEST(RfpsReport, PhasesAreTheRoundedMeanOfTheValidReadings) {
  EXPECT_EQ(PhaseOf({"  6", "  7", "  9"}), 7);
  EXPECT_EQ(PhaseOf({"-12", "-10"}), -11);
  EXPECT_EQ(PhaseOf({"-12", "-11"}), -12);
  EXPECT_EQ(PhaseOf({"  2", "  3"}), 2);
  EXPECT_EQ(PhaseOf({"  3", "  4"}), 4);
  EXPECT_EQ(PhaseOf({" -2", " -3"}), -2);
  EXPECT_EQ(PhaseOf({"999", "999", "999"}), 999);
  EXPECT_EQ(PhaseOf({"-99", "-99", "-99"}), -99);
}

TEST(RfpsReport, TheRunningSumIsRoundedAtEveryReading) {
  EXPECT_EQ(PhaseOf({"1.5"}), 2);
  EXPECT_EQ(PhaseOf({"2.5"}), 2);
  EXPECT_EQ(PhaseOf({".5 ", ".5 "}), 0);
  EXPECT_EQ(PhaseOf({"1.5", "1.5"}), 2);
  EXPECT_EQ(PhaseOf({"  0", "1.5"}), 1);
  EXPECT_EQ(PhaseOf({"1.5", ".5 ", ".5 "}), 1);
  EXPECT_EQ(PhaseOf({"-.5", "-.5"}), 0);
}

TEST(RfpsReport, OnlyTheFirstThreeReadingsAreExamined) {
  EXPECT_EQ(PhaseOf({"  1", "  2", "  3", "100", "100"}), 2);
  EXPECT_EQ(PhaseOf({"  ?", "  2", "   ", "100"}), 2);
  EXPECT_EQ(PhaseOf({"  ?", "  ?", "  ?", "  5"}), std::nullopt);
}

TEST(RfpsReport, AFieldWithAQuestionMarkOrThreeBlanksIsNoReading) {
  for (const std::string_view field : {"  ?", " ? ", "?  ", "?12", "1?2", "12?", "???", "   "}) {
    EXPECT_EQ(PhaseOf({field}), std::nullopt) << field;
    EXPECT_EQ(PhaseOf({field, "  8"}), 8) << field;
  }
}

TEST(RfpsReport, AFieldIsReadAsASignedDecimalNumber) {
  EXPECT_EQ(PhaseOf({" +7"}), 7);
  EXPECT_EQ(PhaseOf({"7  "}), 7);
  EXPECT_EQ(PhaseOf({" 7 "}), 7);
  EXPECT_EQ(PhaseOf({"1 2"}), 1);
  EXPECT_EQ(PhaseOf({"- 5"}), 0);
  EXPECT_EQ(PhaseOf({"1e2"}), 1);
  EXPECT_EQ(PhaseOf({"1,9"}), 1);
  EXPECT_EQ(PhaseOf({"5. "}), 5);
  EXPECT_EQ(PhaseOf({"&H7"}), 0);
}

TEST(RfpsReport, ANonNumericFieldReadsAsZero) {
  for (const std::string_view field :
       {"abc", " - ", "  -", "  x", "...", "\t\t7", "\r\n7", "\t  "}) {
    EXPECT_EQ(PhaseOf({field}), 0) << field;
    EXPECT_EQ(PhaseOf({field, "  8"}), 4) << field;
  }
}

TEST(RfpsReport, TheFieldBegins19CharactersAfterTheN) {
  EXPECT_EQ(PhaseOfBlock(" Neighbour0123456789 42"), 42);
  EXPECT_EQ(PhaseOfBlock(" Neighbour0123456789-427"), -42);
  EXPECT_EQ(PhaseOfBlock(" Neighbour\r\n\r\n\r\n\r\n\r\n 42"), 42);
  EXPECT_EQ(PhaseOfBlock(" Neighbour?????????? 42"), 42);
}

TEST(RfpsReport, ReadingsMayOverlap) {
  EXPECT_EQ(PhaseOfBlock("NeighbourNeighbour? 10?????? 20"), 15);
}

TEST(RfpsReport, AFieldCutShortByTheEndOfTheTextIsReadAsFarAsItGoes) {
  EXPECT_EQ(PhaseOfBlock(" Neighbour phase =  -1"), -1);
  EXPECT_EQ(PhaseOfBlock(" Neighbour phase =  8"), 8);
  EXPECT_EQ(PhaseOfBlock(" Neighbour phase =  "), 0);
  EXPECT_EQ(PhaseOfBlock(" Neighbour phase =   "), 0);
  EXPECT_EQ(PhaseOfBlock(" Neighbour phase =    "), 0);
  EXPECT_EQ(PhaseOfBlock(" Neighbour phase =     "), std::nullopt);
  EXPECT_EQ(PhaseOfBlock(" Neighbour"), 0);
  EXPECT_EQ(PhaseOfBlock(" Neighbour phase =  ?"), std::nullopt);
}

TEST(RfpsReport, ABlockEndsWithTheFirstCharacterOfTheNextMarker) {
  EXPECT_EQ(PhaseOfBlock(" Neighbour phase =  -2100ec5A303"), -21);
  EXPECT_EQ(PhaseOfBlock(" Neighbour phase =  2100ec5A303"), 21);
  EXPECT_EQ(PhaseOfBlock(" Neighbour phase =  100ec5A303"), 1);
  EXPECT_EQ(PhaseOfBlock(" Neighbour phase100ec5A303"), 0);
  EXPECT_EQ(PhaseOfBlock(" Neighbour phase =    100ec5A303"), 1);
}

TEST(RfpsReport, AWordMayBeginInsideAnIdentity) {
  const RfpsReport report = ReadRfpsReport("rfps 100ecSync1 100ec5A302 Sync");
  EXPECT_EQ(report.count, 2);
  EXPECT_EQ(report.syncIndex, 1);
  ExpectEntry(report, 0, 0xC1, 0, 0, 0);
}

TEST(RfpsReport, AnIdentityMayReachIntoTheNextMarker) {
  const RfpsReport report = ReadRfpsReport("rfps 100ecSync100ec5A302 " + Reading("  4"));
  EXPECT_EQ(report.count, 2);
  ExpectEntry(report, 0, 0xC1, 0, 0, 0);
  ExpectEntry(report, 1, 2, 3, 90, 4);
}

TEST(RfpsReport, AMarkerRightAfterAMarkerBeginsABlock) {
  const RfpsReport report = ReadRfpsReport("rfps 100ec100ec5A301 Sync");
  EXPECT_EQ(report.count, 1);
  ExpectEntry(report, 0, 1, 3, 90, 0);
}

TEST(RfpsReport, TheWordSyncBeforeTheFirstMarkerKeepsABogusEntry) {
  const RfpsReport report =
      ReadRfpsReport("abcd1B407 sYnc\r\n" + kSync1 + NeighbourBlock("100ec5A302", {"  4"}));
  EXPECT_EQ(report.count, 3);
  EXPECT_EQ(report.syncIndex, 2);
  ExpectEntry(report, 0, 1, 3, 90, 0);
  ExpectEntry(report, 2, 7, 4, 0x1B, 0);
}

TEST(RfpsReport, AReadingBeforeTheFirstMarkerKeepsABogusNeighbour) {
  const RfpsReport report = ReadRfpsReport("abcd1B407 " + Reading("-31") + kSync1);
  EXPECT_EQ(report.count, 2);
  EXPECT_EQ(report.syncIndex, 0);
  ExpectEntry(report, 1, 7, 4, 0x1B, -31);
}

TEST(RfpsReport, WithoutAMarkerTheWordSyncKeepsOneBogusEntry) {
  const RfpsReport report = ReadRfpsReport("abcd1B407 no marker here, SYNC lost");
  EXPECT_EQ(report.count, 1);
  EXPECT_EQ(report.syncIndex, 0);
  ExpectEntry(report, 0, 7, 4, 0x1B, 0);
  ExpectEntry(ReadRfpsReport("sync"), 0, 0, 0, 0, 0);
  ExpectEntry(ReadRfpsReport("rfps\r\nSync"), 0, 0, 0, 0, 0);
}

TEST(RfpsReport, WithoutAMarkerAReadingKeepsOneBogusEntry) {
  const RfpsReport report = ReadRfpsReport("abcd1B407 " + Reading(" 12"));
  EXPECT_EQ(report.count, 1);
  ExpectEntry(report, 0, 7, 4, 0x1B, 12);
}

TEST(RfpsReport, ElevenEntriesAreASubscriptFault) {
  EXPECT_EQ(ReadRfpsReport(ReportOfMany(0, 1, 9)).count, 10);
  EXPECT_EQ(FaultOf([] { return ReadRfpsReport(ReportOfMany(0, 1, 10)); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([] { return ReadRfpsReport(ReportOfMany(0, 1, 11)); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([] { return ReadRfpsReport(ReportOfMany(0, 1, 200)); }), FaultKind::Subscript);
}

TEST(RfpsReport, BlocksThatAreNotKeptDoNotFillTheTable) {
  std::string text = ReportOfMany(0, 1, 9);
  for (int rpn = 100; rpn < 130; ++rpn) {
    text += NeighbourBlock(Identity(0x5A, 3, rpn), {"  ?"});
  }
  EXPECT_EQ(ReadRfpsReport(text).count, 10);
}

TEST(RfpsReport, AnEleventhEntryFromBeforeTheFirstMarkerIsKept) {
  std::string text = ReportOfMany(0, 1, 9);
  text.replace(0, 4, "abcd1B407 sync ");
  const RfpsReport report = ReadRfpsReport(text);
  EXPECT_EQ(report.count, 11);
  EXPECT_EQ(report.syncIndex, 10);
  ExpectEntry(report, 10, 7, 4, 0x1B, 0);
}

}  // namespace
}  // namespace kelvara::sync
