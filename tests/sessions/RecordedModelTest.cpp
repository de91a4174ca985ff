#include "sessions/RecordedModel.h"

#include <gtest/gtest.h>

#include "support/Doubles.h"
#include "support/RecordedReports.h"

namespace kelvara::sessions {
namespace {

using test::OneNeighbourReport;

TEST(RecordedModelTest, FollowsClearsAndUndos) {
  const std::string first = "\x01rfps\x02" + OneNeighbourReport(1, 2, -11);
  const std::string second = "\x01rfps\x02" + OneNeighbourReport(1, 3, 40);
  test::MemoryFileSystem files;
  files.files["cleared"] = first + "\x01!clear\x02" + second;
  files.files["restored"] = files.files["cleared"] + "\x01!undo\x02";

  const sync::SyncModel cleared = ReadRecordedModel(*files.OpenForInput("cleared"));
  EXPECT_EQ(cleared.ReportCount(), 1);
  EXPECT_EQ(cleared.AaRpn(1), 3);
  const sync::SyncModel restored = ReadRecordedModel(*files.OpenForInput("restored"));
  EXPECT_EQ(restored.ReportCount(), 2);
  EXPECT_EQ(restored.AaRpn(1), 2);
  EXPECT_EQ(restored.Cell(0, 1).Sum, -11);
  EXPECT_EQ(restored.Cell(0, 2).Sum, 40);
}

}  // namespace
}  // namespace kelvara::sessions
