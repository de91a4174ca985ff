#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "AllocationCount.h"
#include "QuietControls.h"
#include "sessions/RecordedSession.h"
#include "sync/RfpsParser.h"
#include "sync/SyncModel.h"

namespace kelvara {
namespace {

class Reader : public sessions::RecordedTextReader {
 public:
  explicit Reader(sync::RfpsParser& parser) : parser_(parser) {}
  void ProcessRfpsReport(std::string_view report) override { parser_.ProcessRfpsReport(report); }
  void NoteDropped(sessions::DropReason /*reason*/) override { FAIL() << "a report was dropped"; }

 private:
  sync::RfpsParser& parser_;
};

std::string ExampleSession() {
  std::ifstream file(KELVARA_EXAMPLE_SESSION, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(SteadyReplay, AllocatesNoMemoryOnceTheAntennasAreKnown) {
  const std::string text = ExampleSession();
  ASSERT_FALSE(text.empty());
  sync::SyncModel model;
  const sync::DisplayOptions options;
  bench::QuietLog log;
  bench::QuietBeeper beeper;
  sync::RfpsParser parser(model, options, log, beeper);
  Reader reader(parser);
  sessions::RecordedSession session(reader);
  session.Feed(text);
  const std::int32_t reports = model.ReportCount();
  ASSERT_GT(reports, 0);

  const std::int64_t before = bench::AllocationCount();
  for (int round = 0; round < 100; ++round) {
    session.Feed(text);
  }
  const std::int64_t allocations = bench::AllocationCount() - before;

  EXPECT_EQ(allocations, 0);
  EXPECT_EQ(model.ReportCount(), 101 * reports);
  EXPECT_EQ(beeper.count, 0);
}

TEST(SteadyReplay, AllocationsAreCounted) {
  const std::int64_t before = bench::AllocationCount();
  const std::string text(100, 'x');
  EXPECT_EQ(bench::AllocationCount() - before, 1) << text;
}

}  // namespace
}  // namespace kelvara
