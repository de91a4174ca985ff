#include <sys/stat.h>

#include <filesystem>

#include "support/RecordedReports.h"
#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

class DesktopReviewTest : public DesktopSession {
 protected:
  static std::string Requested(const std::string& report) {
    return "\x01@1700000000000\x02\x01rfps\x02" + report;
  }

  /// Waits until the grid shows what a replay of a part of the session gives.
  void AwaitGrid(const DesktopProgram& program, const std::string& session) {
    Write("part.trace", session);
    const GridText expected = ReplayedGrid("part.trace");
    DesktopProgram::Await("the grid", [&] { return program.Grid() == expected; });
  }
};

TEST_F(DesktopReviewTest, ASessionIsReviewedWithKeys) {
  const std::string first = Requested(OneNeighbourReport(1, 2, -11));
  const std::string second = Requested(OneNeighbourReport(1, 6, 7));
  const std::string third = "\x01!clear\x02" + Requested(OneNeighbourReport(3, 4, 5));
  Write("session.trace", first + second + third + "\x01!end\x02");
  auto program = Start({PathOf("session.trace")});
  const DesktopWindow window = program->MainWindow();
  AwaitGrid(*program, first + second + third);
  program->Press(window, {"Left"});
  AwaitGrid(*program, first + second);
  program->Press(window, {"Left"});
  AwaitGrid(*program, first);
  program->Press(window, {"End"});
  AwaitGrid(*program, first + second + third);
  EXPECT_FALSE(program->IsEnabled({"File", "Select COM Port..."}));
  program->RequestClose(window);
  ExpectCleanEnd(*program);
  EXPECT_EQ(Settings(), "");
  EXPECT_EQ(Read("session.trace"), first + second + third + "\x01!end\x02");
}

TEST_F(DesktopReviewTest, AFileThatCannotBeReviewedIsToldAndEndsTheProgram) {
  Write("results.csv", "File Created by Kelvara\r\n");
  Write("empty.trace", "");
  std::filesystem::create_directory(PathOf("folder"));
  ASSERT_EQ(mkfifo(PathOf("pipe").c_str(), 0600), 0);
  for (const auto& [name, reason] : std::vector<std::pair<std::string, std::string>>{
           {"missing.trace", "No such file or directory"},
           {"folder", "Is a directory"},
           {"pipe", "is a pipe, not a file"},
           {"results.csv", "is CSV results that Kelvara wrote, not a recorded session"},
           {"empty.trace", "holds no report of an antenna"}}) {
    SCOPED_TRACE(name);
    auto program = Start({PathOf(name)});
    const DesktopWindow message = program->Open("Kelvara");
    const std::string text = program->MessageText(message);
    EXPECT_NE(text.find(PathOf(name)), std::string::npos) << text;
    EXPECT_NE(text.find(reason), std::string::npos) << text;
    program->Press(message, {"Return"});
    const ProcessResult result = program->Finish();
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(Complaints(result), "");
  }
}

}  // namespace
}  // namespace kelvara::test
