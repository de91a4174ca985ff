#include <sys/resource.h>

#include <filesystem>
#include <regex>

#include "support/SmallDisk.h"
#include "support/TextFile.h"
#include "system/desktop/BellListener.h"
#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

const std::string kReportFailure =
    "Error occured while generating report.\r\nCheck the filename and path";

/// A program whose disk fills up, and has room again.
class DesktopFullDiskTest : public DesktopSession {
 protected:
  DesktopFullDiskTest() : bell(*screen) {}

  std::unique_ptr<DesktopProgram> StartOnDisk(const Arguments& arguments) const {
    ProcessRequest request = Request(arguments);
    request.fileSizeLimit = kWholeDisk;
    return std::make_unique<DesktopProgram>(*screen, *bus, request);
  }

  /// Lets no file of the program grow beyond so many bytes from now on.
  static void LeaveRoomFor(const DesktopProgram& program, std::size_t bytes) {
    const rlimit limit{bytes, kWholeDisk};
    ASSERT_EQ(::prlimit(program.Id(), RLIMIT_FSIZE, &limit, nullptr), 0);
  }
  static void MakeRoom(const DesktopProgram& program) { LeaveRoomFor(program, kWholeDisk); }

  void AwaitBell(int before) const {
    DesktopProgram::Await("a beep", [&] { return bell.Count() > before; });
  }

  static DesktopWindow OpenReport(const DesktopProgram& program, const std::string& path) {
    program.Choose({"Tools", "Generate AA Cable Length Report..."});
    const DesktopWindow dialog = program.Open("Generate Reoprt");
    program.FillIn(dialog, "File", path);
    program.FillIn(dialog, "Site", "Harbour Theatre");
    program.PressButton(dialog, "Generate Report");
    return dialog;
  }

  static void ExpectReportFailure(const DesktopProgram& program, const DesktopWindow& dialog) {
    const DesktopWindow message = program.Open("Generate Report");
    EXPECT_EQ(program.MessageText(message), kReportFailure);
    program.Press(message, {"Return"});
    program.WaitUntilClosed(message);
    EXPECT_TRUE(program.IsOpen(dialog));
    EXPECT_EQ(program.FieldText(dialog, "Site"), "Harbour Theatre");
  }

  static std::string WithoutReturns(std::string text) {
    std::erase(text, '\r');
    return text;
  }

  static constexpr rlim_t kWholeDisk = rlim_t{1} << 30U;

  BellListener bell;
};

TEST_F(DesktopFullDiskTest, ACaptureKeepsWhatThereWasRoomForBeepsAndGoesOn) {
  SimulatedBeltpack beltpack(CliRequest({"simulate"}));
  auto program = StartOnDisk({"--com", BeltpackAsPort(1)});
  program->Choose({"Options", "Display Log", "On"});
  DesktopProgram::Await("the stored option", [&] { return !Settings().empty(); });
  Capture(*program, "log.txt");
  AwaitReadings("log.txt", 1);
  beltpack.SetFault("silent:always");
  beltpack.WaitForCommands(beltpack.Commands().size() + 1);
  const std::string before = Read("log.txt");
  const GridText grid = program->Grid();
  const int beeps = bell.Count();
  EXPECT_EQ(beeps, 0);

  // Room for a date and no more.
  constexpr std::size_t kRoom = 10;
  LeaveRoomFor(*program, before.size() + kRoom);
  beltpack.SetFault("none");
  AwaitBell(beeps);
  EXPECT_EQ(Read("log.txt"), before) << "the entry that does not fit is taken back";
  EXPECT_TRUE(program->OtherWindows().empty());
  const std::string logBox = program->LogText();
  EXPECT_TRUE(logBox.ends_with(WithoutReturns(before))) << logBox;
  EXPECT_GE(FilledCells(program->Grid()), FilledCells(grid));

  MakeRoom(*program);
  DesktopProgram::Await("more readings",
                        [&] { return Read("log.txt").size() > before.size() + kRoom; });
  program->Press(program->MainWindow(), {"alt+f", "e"});
  ExpectCleanEnd(*program);
  const std::string after = Read("log.txt");
  EXPECT_EQ(after.substr(0, before.size()), before);
  const std::string entry = "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d, \\d\\d->\\d\\d=-?\\d+\r\n";
  EXPECT_TRUE(std::regex_match(after.substr(before.size()), std::regex("(" + entry + ")+")))
      << after.substr(before.size());
}

TEST_F(DesktopFullDiskTest, AReportIsToldToBeCutAndWrittenWholeOnceThereIsRoom) {
  SimulatedBeltpack beltpack(CliRequest({"simulate"}));
  auto program = StartOnDisk({"--com", BeltpackAsPort(1), "--raw", PathOf("trace.txt")});
  Capture(*program, "log.txt");
  AwaitReadings("log.txt", 1);
  beltpack.SetFault("silent:always");
  beltpack.WaitForCommands(beltpack.Commands().size() + 1);
  const GridText grid = program->Grid();
  const std::string settings = Settings();
  const std::string log = Read("log.txt");

  constexpr std::size_t kRoom = 400;
  LeaveRoomFor(*program, kRoom);
  const DesktopWindow dialog = OpenReport(*program, PathOf("report.html"));
  ExpectReportFailure(*program, dialog);
  const std::string cut = Read("report.html");
  EXPECT_EQ(cut.size(), kRoom);
  EXPECT_EQ(Settings(), settings);
  EXPECT_EQ(Read("log.txt"), log);
  EXPECT_EQ(Read("bin/rfields.ds"), "\r\n\r\n 1 \r\n\r\n");

  MakeRoom(*program);
  program->PressButton(dialog, "Generate Report");
  const DesktopWindow question = program->Open("Generate Report");
  EXPECT_EQ(program->MessageText(question),
            PathOf("report.html") + " already exists.\r\n\r\nDo you want to replace it?");
  program->PressButton(question, "Yes");
  program->WaitUntilClosed(dialog);
  EXPECT_EQ(program->Grid(), grid);
  program->RequestClose(program->MainWindow());
  const ProcessResult result = program->Finish();
  EXPECT_FALSE(result.timedOut);
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(Complaints(result), "");

  const std::string report = Read("report.html");
  EXPECT_EQ(report.substr(0, cut.size()), cut);
  CliOutput({"replay", PathOf("trace.txt"), "--report", PathOf("report.html"), "--site",
             "Harbour Theatre"});
  EXPECT_EQ(report, Read("report.html"));
  EXPECT_NE(Settings().find("\nLastReportFile=" + PathOf("report.html") + "\n"), std::string::npos);
}

TEST_F(DesktopFullDiskTest, ATraceEndsTheLinkGoesOnAndTheUserIsToldAtTheEnd) {
  SimulatedBeltpack beltpack(CliRequest({"simulate"}));
  auto program = StartOnDisk({"--com", BeltpackAsPort(1), "--raw", PathOf("trace.txt")});
  beltpack.WaitForCommands(1);
  DesktopProgram::Await("a trace", [&] { return !Read("trace.txt").empty(); });
  const std::string before = Read("trace.txt");
  LeaveRoomFor(*program, before.size() + 5);
  DesktopProgram::Await("a grid", [&] { return FilledCells(program->Grid()) > 0; });
  EXPECT_TRUE(program->OtherWindows().empty());
  program->RequestClose(program->MainWindow());
  const ProcessResult result = program->Finish();
  EXPECT_EQ(result.exitCode, 0);
  const std::string complaints = Complaints(result);
  EXPECT_EQ(complaints.rfind("kelvara: ", 0), 0U) << complaints;
  EXPECT_NE(complaints.find("trace.txt"), std::string::npos) << complaints;
  EXPECT_EQ(complaints.find('\n'), complaints.size() - 1) << complaints;
  EXPECT_EQ(Read("trace.txt"), before);
}

TEST_F(DesktopFullDiskTest, SettingsStayAsTheyWereAndAnOptionHoldsForThisRun) {
  Write(kSettingsFile, "[Settings]\nComPort=3\n");
  auto program = StartOnDisk({"--demo"});
  program->MainWindow();
  LeaveRoomFor(*program, 4);
  const int beeps = bell.Count();
  program->Choose({"Options", "RPN Display Base", "Hex"});
  AwaitBell(beeps);
  EXPECT_TRUE(program->IsChecked({"Options", "RPN Display Base", "Hex"}));
  EXPECT_EQ(Settings(), "[Settings]\nComPort=3\n");
  EXPECT_FALSE(Exists(std::string(kSettingsFile) + ".new"));
  MakeRoom(*program);
  program->Choose({"Options", "RPN Display Base", "Hex"});
  DesktopProgram::Await("the stored option",
                        [&] { return Settings() == "[Settings]\nComPort=3\nRPNUnits=1\n"; });
  program->RequestClose(program->MainWindow());
  ExpectCleanEnd(*program);
}

/// The disk comes first: the screen and the bus bring threads with them.
struct BeforeTheDesktop {
  SmallDisk disk{1};
};

class DesktopReallyFullDiskTest : protected BeforeTheDesktop, public DesktopFullDiskTest {};

TEST_F(DesktopReallyFullDiskTest, NothingIsLost) {
  if (!disk.IsMounted()) {
    GTEST_SKIP() << SmallDisk::kNeeds;
  }
  // What takes the last page but a few bytes of it is the log of an earlier capture.
  const std::string earlier = std::string(SmallDisk::kPageBytes - 60, 'x') + "\r\n";
  WriteTextFile(disk.PathOf("log.txt"), earlier);
  auto program = Start({"--demo"});
  program->Press(program->MainWindow(), {"alt+t", "l"});
  const DesktopWindow capture = program->Open("Capture Sync Reports To File");
  program->FillIn(capture, "File", disk.PathOf("log.txt"));
  program->Press(capture, {"Return"});
  program->WaitUntilClosed(capture);
  AwaitBell(0);
  const std::string log = ReadTextFile(disk.PathOf("log.txt"));
  EXPECT_EQ(log.substr(0, earlier.size()), earlier);
  EXPECT_TRUE(log.ends_with(", Log To File Started\r\n")) << log.substr(earlier.size());

  std::filesystem::remove(disk.PathOf("filler"));
  DesktopProgram::Await("more of the log", [&] {
    return ReadTextFile(disk.PathOf("log.txt")).size() > log.size() + 100;
  });
  DesktopProgram::Await("a grid", [&] { return program->GridRows() > 1; });
  const DesktopWindow dialog = OpenReport(*program, disk.PathOf("report.html"));
  ExpectReportFailure(*program, dialog);
  program->FillIn(dialog, "File", PathOf("report.html"));
  program->PressButton(dialog, "Generate Report");
  program->WaitUntilClosed(dialog);
  EXPECT_TRUE(Read("report.html").ends_with("</html>\r\n"));
  program->RequestClose(program->MainWindow());
  ExpectCleanEnd(*program);
  EXPECT_EQ(ReadTextFile(disk.PathOf("log.txt")).substr(0, log.size()), log);
}

}  // namespace
}  // namespace kelvara::test
