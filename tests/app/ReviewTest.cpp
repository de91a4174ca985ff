#include "app/Review.h"

#include <gtest/gtest.h>

#include "app/SessionRig.h"
#include "base/Fault.h"
#include "support/RecordedReports.h"
#include "sync/AaSyncUnits.h"

namespace kelvara::test {
namespace {

constexpr std::int64_t kMorning = 1'700'000'000'000;

/// Files that cannot be read while `fails` is set.
class FailingFiles : public platform::FileSystem {
 public:
  explicit FailingFiles(platform::FileSystem& files) : files_(files) {}

  std::unique_ptr<platform::OutputFile> OpenForOutput(const std::string& path) override {
    return files_.OpenForOutput(path);
  }
  std::unique_ptr<platform::OutputFile> OpenForAppend(const std::string& path) override {
    return files_.OpenForAppend(path);
  }
  std::unique_ptr<platform::InputFile> OpenForInput(const std::string& path) override {
    return std::make_unique<Input>(files_.OpenForInput(path), fails);
  }

  bool fails = false;

 private:
  class Input : public platform::InputFile {
   public:
    Input(std::unique_ptr<platform::InputFile> file, const bool& fails)
        : file_(std::move(file)), fails_(fails) {}
    std::size_t Read(std::span<char> buffer) override {
      if (fails_) {
        throw base::Fault(base::FaultKind::File, "the disk is gone");
      }
      return file_->Read(buffer);
    }
    std::size_t Size() const override { return file_->Size(); }
    void Seek(std::uint64_t place) override { file_->Seek(place); }

   private:
    std::unique_ptr<platform::InputFile> file_;
    const bool& fails_;
  };

  platform::FileSystem& files_;
};

class ReviewTest : public ::testing::Test, protected SessionRig {
 protected:
  void AddReport(const std::string& report) {
    trace_ += "\x01@" + std::to_string(kMorning + 1000 * added_++) + "\x02\x01rfps\x02" + report;
  }

  app::Review& Open() {
    files.files["trace"] = trace_;
    recorded_.emplace(files, "trace");
    review_.emplace(*recorded_, session, logBox, machine, [this] { ++shown_; });
    while (review_->ReadFor(1000)) {
    }
    return *review_;
  }

  std::string trace_;
  int added_ = 0;
  std::optional<sessions::ReviewedSession> recorded_;
  std::optional<app::Review> review_;
  int shown_ = 0;
};

TEST_F(ReviewTest, ShowsTheResultsTheLogAndTheTimeOfAReport) {
  AddReport(OneNeighbourReport(1, 2, -11));
  AddReport(OneNeighbourReport(1, 6, 7));
  app::Review& review = Open();
  EXPECT_EQ(review.PercentRead(), 100);
  EXPECT_EQ(review.Reports(), 2);
  review.MoveTo(2);
  EXPECT_EQ(grid.Text(1, 3), "7");
  EXPECT_EQ(session.Model().ReportCount(), 2);
  EXPECT_EQ(std::count(logBox.text.begin(), logBox.text.end(), '\n'), 2);
  const std::string second = review.TimeText();
  EXPECT_NE(logBox.text.find(second + ", 01->06=7\r\n"), std::string::npos);
  review.MoveTo(1);
  EXPECT_EQ(grid.Rows(), 3);
  EXPECT_EQ(logBox.text, review.TimeText() + ", 01->02=-11\r\n");
  EXPECT_NE(review.TimeText(), second);
  review.MoveTo(0);
  EXPECT_EQ(grid.Rows(), 1);
  EXPECT_EQ(logBox.text, "");
  EXPECT_EQ(shown_, 3);
}

TEST_F(ReviewTest, AHiddenLogBoxStaysEmpty) {
  AddReport(OneNeighbourReport(1, 2, -11));
  logBox.shown = false;
  Open().MoveTo(1);
  logBox.shown = true;
  EXPECT_EQ(logBox.text, "");
  review_->Redraw();
  EXPECT_NE(logBox.text, "");
}

TEST_F(ReviewTest, ARedrawAppliesTheOptionsToTheGridAndTheLog) {
  AddReport(OneNeighbourReport(1, 10, 100));
  app::Review& review = Open();
  review.MoveTo(1);
  session.Options().units = sync::PhaseUnits::Metres;
  session.Options().rpnHex = true;
  review.Redraw();
  EXPECT_EQ(grid.Text(1, 2), std::to_string(sync::ToMetres(100)));
  EXPECT_EQ(grid.Text(0, 2), "0A");
  EXPECT_NE(logBox.text.find("01->0A=100"), std::string::npos);
}

TEST_F(ReviewTest, TheLogHoldsTheNewestEntriesThatTheBoxKeeps) {
  for (int report = 0; report < 2000; ++report) {
    AddReport(OneNeighbourReport(1, 2, report % 100));
  }
  Open().MoveTo(2000);
  EXPECT_LE(logBox.text.size(), capture::kMostLogCharacters);
  EXPECT_GT(logBox.text.size(), capture::kMostLogCharacters - 100);
  EXPECT_TRUE(logBox.text.ends_with("01->02=99\r\n"));
  EXPECT_EQ(logBox.text.find(review_->TimeText().substr(0, 3)), 0U);
}

TEST_F(ReviewTest, TheColoursDoNotDependOnWhatWasShownBefore) {
  AddReport(RecordedReport({SyncText(Identity(0x5A, 3, 1)), NeighbourLine(9, 1)}));
  trace_ += "\x01!clear\x02";
  AddReport(RecordedReport(
      {SyncText(Identity(0x5A, 5, 2)), Identity(0x5A, 5, 7) + " " + ReadingText("  1")}));
  app::Review& review = Open();
  review.MoveTo(1);
  const auto first = grid.At(1, 2).background;
  ASSERT_TRUE(first);
  review.MoveTo(2);
  EXPECT_EQ(grid.At(1, 2).background, first);
  EXPECT_EQ(beeper.count, 0);
}

TEST_F(ReviewTest, ARedrawThatEndsEarlyLeavesNoCellsOfAnotherReport) {
  for (int first = 1; first < 46; first += 9) {
    AddReport(CrowdedReport(0, first, 9));
  }
  AddReport(CrowdedReport(0, 46, 6));
  app::Review& review = Open();
  review.MoveTo(5);
  EXPECT_EQ(grid.Text(1, 2), "1");
  review.MoveTo(6);
  EXPECT_EQ(grid.Rows(), 53);
  EXPECT_EQ(grid.Text(1, 2), "");
  EXPECT_FALSE(grid.At(1, 2).background);
  review.MoveTo(1);
  EXPECT_EQ(grid.Text(1, 2), "1");
}

TEST_F(ReviewTest, AMoveDuringARedrawIsShownAfterIt) {
  for (int report = 0; report < 5; ++report) {
    AddReport(OneNeighbourReport(1, 2, report));
  }
  app::Review& review = Open();
  int moves = 0;
  events.onYield = [&] {
    if (++moves < 4) {
      review.MoveTo(moves);
      EXPECT_EQ(session.Model().ReportCount(), 5);
    }
  };
  review.MoveTo(5);
  EXPECT_EQ(review.Report(), 3);
  EXPECT_EQ(session.Model().ReportCount(), 3);
  EXPECT_EQ(shown_, 2);
  EXPECT_EQ(beeper.count, 0);
}

TEST_F(ReviewTest, AFaultKeepsWhatIsShown) {
  AddReport(OneNeighbourReport(1, 2, 1));
  AddReport(OneNeighbourReport(1, 2, 2));
  files.files["trace"] = trace_;
  FailingFiles failing(files);
  recorded_.emplace(failing, "trace");
  review_.emplace(*recorded_, session, logBox, machine, [] {});
  while (review_->ReadFor(1000)) {
  }
  review_->MoveTo(1);
  failing.fails = true;
  EXPECT_THROW(review_->MoveTo(2), base::Fault);
  EXPECT_EQ(review_->Report(), 1);
  EXPECT_EQ(session.Model().ReportCount(), 1);
  failing.fails = false;
  review_->MoveTo(2);
  EXPECT_EQ(session.Model().ReportCount(), 2);
}

}  // namespace
}  // namespace kelvara::test
