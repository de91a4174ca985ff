#include <sys/resource.h>

#include <algorithm>
#include <filesystem>

#include "support/SmallDisk.h"
#include "support/TextFile.h"
#include "system/desktop/BellListener.h"
#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

using DesktopFullDiskTest = DesktopSession;

TEST_F(DesktopFullDiskTest, ATraceAndAJournalEndButTheLinkContinuesAndTheProgramReportsThem) {
  SimulatedBeltpack beltpack(CliRequest({"simulate"}));
  constexpr rlim_t kWholeDisk = rlim_t{1} << 30U;
  ProcessRequest request = Request({"--com", BeltpackAsPort(1), "--raw", PathOf("trace.txt")});
  request.fileSizeLimit = kWholeDisk;
  auto program = std::make_unique<DesktopProgram>(*screen, *bus, request);
  beltpack.WaitForCommands(1);
  DesktopProgram::Await("a trace", [&] { return !Read("trace.txt").empty(); });
  const std::string before = Read("trace.txt");
  const rlimit limit{before.size() + 5, kWholeDisk};
  ASSERT_EQ(::prlimit(program->Id(), RLIMIT_FSIZE, &limit, nullptr), 0);
  DesktopProgram::Await("a grid", [&] { return FilledCells(program->Grid()) > 0; });
  EXPECT_TRUE(program->OtherWindows().empty());
  program->RequestClose(program->MainWindow());
  const ProcessResult result = program->Finish();
  EXPECT_EQ(result.exitCode, 0);
  const std::string complaints = Complaints(result);
  EXPECT_EQ(complaints.rfind("kelvara: ", 0), 0U) << complaints;
  EXPECT_NE(complaints.find("/CorvanaSync/sessions/"), std::string::npos) << complaints;
  EXPECT_NE(complaints.find("\nkelvara: "), std::string::npos) << complaints;
  EXPECT_NE(complaints.find("trace.txt", complaints.find("\nkelvara: ")), std::string::npos)
      << complaints;
  EXPECT_EQ(std::count(complaints.begin(), complaints.end(), '\n'), 2) << complaints;
  EXPECT_EQ(Read("trace.txt"), before);
}

/// Mounts the disk before the screen and the bus start threads.
struct BeforeTheDesktop {
  SmallDisk disk{1};
};

class DesktopReallyFullDiskTest : protected BeforeTheDesktop, public DesktopSession {
 protected:
  BellListener bell{*screen};
};

TEST_F(DesktopReallyFullDiskTest, LosesNoEntryAndNoTypedText) {
  if (!disk.IsMounted()) {
    GTEST_SKIP() << SmallDisk::kNeeds;
  }
  // The log of an earlier capture fills the last page except for a few bytes.
  const std::string earlier = std::string(SmallDisk::kPageBytes - 60, 'x') + "\r\n";
  WriteTextFile(disk.PathOf("log.txt"), earlier);
  auto program = Start({"--demo"});
  program->Press(program->MainWindow(), {"alt+t", "l"});
  const DesktopWindow capture = program->Open("Capture Sync Reports To File");
  program->FillIn(capture, "File", disk.PathOf("log.txt"));
  program->Press(capture, {"Return"});
  program->WaitUntilClosed(capture);
  DesktopProgram::Await("a beep", [&] { return bell.Count() > 0; });
  const std::string log = ReadTextFile(disk.PathOf("log.txt"));
  EXPECT_EQ(log.substr(0, earlier.size()), earlier);
  EXPECT_TRUE(log.ends_with(", Log To File Started\r\n")) << log.substr(earlier.size());

  std::filesystem::remove(disk.PathOf("filler"));
  DesktopProgram::Await("more of the log", [&] {
    return ReadTextFile(disk.PathOf("log.txt")).size() > log.size() + 100;
  });
  DesktopProgram::Await("a grid", [&] { return program->GridRows() > 1; });
  program->Choose({"Tools", "Generate AA Cable Length Report..."});
  const DesktopWindow dialog = program->Open("Generate Reoprt");
  program->FillIn(dialog, "File", disk.PathOf("report.html"));
  program->FillIn(dialog, "Site", "Harbour Theatre");
  program->PressButton(dialog, "Generate Report");
  const DesktopWindow message = program->Open("Generate Report");
  EXPECT_EQ(program->MessageText(message),
            "Error occured while generating report.\r\nCheck the filename and path");
  program->Press(message, {"Return"});
  program->WaitUntilClosed(message);
  EXPECT_EQ(program->FieldText(dialog, "Site"), "Harbour Theatre");
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
