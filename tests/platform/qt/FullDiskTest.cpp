#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>

#include "base/Fault.h"
#include "platform/qt/QtSettingsStore.h"
#include "platform/qt/RealFilesRig.h"
#include "report/RememberedFields.h"
#include "sessions/LineTrace.h"
#include "support/SmallDisk.h"
#include "support/TextFile.h"

namespace kelvara::test {
namespace {

/// A kind of file that the program writes. `write` writes it and returns what the user or caller
/// learns of a failure; empty if there is none.
struct Writer {
  const char* name;
  const char* file;
  std::function<std::string(RealFilesRig& rig, const std::string& path)> write;
  const char* complaint;
  bool keepsWholeEntries = false;
};

void PrintTo(const Writer& writer, std::ostream* stream) { *stream << writer.file; }

std::string LastBoxText(const RealFilesRig& rig) {
  return rig.boxes.boxes.empty() ? "" : rig.boxes.boxes.back().text;
}

constexpr int kEntries = 200;

/// Captures entries. Returns the text of the message box if the start fails, otherwise "fault" if
/// an entry failed.
std::string Capture(RealFilesRig& rig, const std::string& path) {
  capture::DataCapture& capture = rig.session.Capture();
  if (!capture.StartLoggingToFile(path)) {
    return LastBoxText(rig);
  }
  std::string failure;
  for (int entry = 0; entry < kEntries; ++entry) {
    try {
      capture.PrintLogEntry("01->06=" + std::to_string(entry));
    } catch (const base::Fault&) {
      failure = "fault";
    }
  }
  try {
    capture.StopLoggingToFile();
  } catch (const base::Fault&) {
    failure = "fault";
  }
  return failure;
}

std::string Report(RealFilesRig& rig, const std::string& path) {
  return rig.session.Report().GenerateReport(path, "a site", "a tester", "notes")
             ? ""
             : LastBoxText(rig);
}

std::string Csv(RealFilesRig& rig, const std::string& path) {
  const int beeps = rig.beeper.count;
  rig.session.Export().WriteResults(path);
  return rig.beeper.count == beeps ? "" : "beep";
}

std::string Trace(RealFilesRig& rig, const std::string& path) {
  try {
    sessions::LineTrace trace(rig.files.OpenForOutput(path), rig.clock);
    for (int poll = 0; poll < kEntries; ++poll) {
      trace.Sent("rfps");
      trace.Received("100ec5A301 Sync\r\n");
    }
    trace.Ended();
    return trace.Failure().empty() ? "" : "failure";
  } catch (const base::Fault&) {
    return "fault";
  }
}

/// A failure to remember the fields is not reported.
std::string Fields(RealFilesRig& rig, const std::string& path) {
  report::RememberedFields remembered(rig.files, std::filesystem::path(path).parent_path());
  remembered.Save({"a site", "a tester", true, std::string(5000, 'n')});
  return "";
}

const std::string kReportComplaint =
    "Error occured while generating report.\r\nCheck the filename and path";
const std::string kCaptureComplaint = "Could not start Logging to specified file.";

const Writer kWriters[] = {{"Capture", "log.txt", Capture, "fault", true},
                           {"Report", "report.html", Report, kReportComplaint.c_str()},
                           {"Csv", "results.csv", Csv, "beep"},
                           {"Trace", "trace.txt", Trace, "failure"},
                           {"RememberedFields", "rfields.ds", Fields, ""}};

class FullDiskTest : public testing::TestWithParam<Writer> {
 protected:
  /// The text that is written to a path if nothing fails.
  static std::string WholeText(const std::string& path) {
    // A report contains the path of its file; all temporary folders have names of the same length.
    const TemporaryFolder folder;
    const std::string sparePath = folder.PathOf(GetParam().file);
    RealFilesRig rig;
    EXPECT_EQ(GetParam().write(rig, sparePath), "");
    std::string text = ReadTextFile(sparePath);
    const std::size_t named = text.find(sparePath);
    return named == std::string::npos ? text : text.replace(named, sparePath.size(), path);
  }

  /// How much of the whole text a disk with this much space holds. A capture continues once there
  /// is space again, so it keeps only complete entries.
  static std::size_t Kept(const std::string& whole, std::size_t space) {
    if (!GetParam().keepsWholeEntries || space >= whole.size()) {
      return space;
    }
    const std::size_t lineEnd = space < 2 ? std::string::npos : whole.rfind("\r\n", space - 2);
    return lineEnd == std::string::npos ? 0 : lineEnd + 2;
  }

  /// Expects a disk with this much space to hold that much of the whole text, and a failure to be
  /// reported only if that is not all of it.
  static void ExpectBeginning(const std::string& whole, std::size_t space, const std::string& path,
                              const std::string& reported) {
    SCOPED_TRACE("space for " + std::to_string(space) + " of " + std::to_string(whole.size()));
    EXPECT_EQ(ReadTextFile(path), whole.substr(0, Kept(whole, space)));
    if (space >= whole.size()) {
      EXPECT_EQ(reported, "");
    } else if (reported != kCaptureComplaint) {
      EXPECT_EQ(reported, GetParam().complaint);
    } else {
      EXPECT_LT(space, whole.find("\r\n") + 2) << "only the first entry is part of the start";
    }
  }
};

TEST_P(FullDiskTest, KeepsWhatFitsWhereverItFillsUpAndReportsTheFailure) {
  const TemporaryFolder folder;
  const std::string path = folder.PathOf(GetParam().file);
  const std::string whole = WholeText(path);
  constexpr std::size_t kStep = 37;
  for (std::size_t space = 0; space < whole.size() + kStep; space += kStep) {
    std::filesystem::remove(path);
    RealFilesRig rig;
    std::string reported;
    {
      const FileSizeLimit limit(space);
      reported = GetParam().write(rig, path);
    }
    ExpectBeginning(whole, space, path, reported);
    // Everything in the log box is also in the file.
    const std::string shown = rig.logBox.text;
    EXPECT_EQ(shown, whole.substr(0, shown.size()));
    EXPECT_LE(shown.size(), space);
    if (HasFailure()) {
      return;
    }
  }
}

TEST_P(FullDiskTest, DoesTheSameOnADiskThatIsReallyFull) {
  for (const std::size_t pages : {0U, 1U, 16U}) {
    const SmallDisk disk(pages);
    if (!disk.IsMounted()) {
      GTEST_SKIP() << SmallDisk::kNeeds;
    }
    RealFilesRig rig;
    const std::string path = disk.PathOf(GetParam().file);
    const std::string reported = GetParam().write(rig, path);
    ExpectBeginning(WholeText(path), pages * SmallDisk::kPageBytes, path, reported);
  }
}

TEST_P(FullDiskTest, WritesTheWholeTextOnceThereIsSpaceAgain) {
  const TemporaryFolder folder;
  const std::string path = folder.PathOf(GetParam().file);
  const std::string whole = WholeText(path);
  {
    RealFilesRig rig;
    const FileSizeLimit limit(10);
    GetParam().write(rig, path);
  }
  RealFilesRig rig;
  EXPECT_EQ(GetParam().write(rig, path), "");
  EXPECT_EQ(ReadTextFile(path), whole);
}

TEST_P(FullDiskTest, ReportsAMissingFolderAndCreatesNone) {
  std::string path;
  {
    const TemporaryFolder folder;
    path = folder.PathOf(GetParam().file);
  }
  RealFilesRig rig;
  const std::string reported = GetParam().write(rig, path);
  const std::string name = GetParam().name;
  EXPECT_EQ(reported, name == "Capture" ? kCaptureComplaint
                      : name == "Trace" ? "fault"
                                        : GetParam().complaint);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(path).parent_path()));
}

INSTANTIATE_TEST_SUITE_P(Writers, FullDiskTest, testing::ValuesIn(kWriters),
                         [](const testing::TestParamInfo<Writer>& tested) {
                           return tested.param.name;
                         });

TEST(LostCaptureFolderTest, AnEntryIsAFaultAndSoIsTheNextStart) {
  RealFilesRig rig;
  auto folder = std::make_unique<TemporaryFolder>();
  const std::string path = folder->PathOf("log.txt");
  capture::DataCapture& capture = rig.session.Capture();
  ASSERT_TRUE(capture.StartLoggingToFile(path));
  folder.reset();
  EXPECT_THROW(capture.PrintLogEntry("01->06=7"), base::Fault);
  EXPECT_EQ(rig.logBox.text.find("01->06=7"), std::string::npos);
  ASSERT_NE(capture.Failure(), nullptr);
  EXPECT_EQ(capture.Failure()->reason, "the file has been removed");
  capture.AbandonLogging();
  EXPECT_FALSE(capture.StartLoggingToFile(path));
  EXPECT_EQ(LastBoxText(rig), kCaptureComplaint);
  const TemporaryFolder other;
  EXPECT_TRUE(capture.StartLoggingToFile(other.PathOf("log.txt")));
  EXPECT_NO_THROW(capture.PrintLogEntry("01->06=8"));
  EXPECT_NE(ReadTextFile(other.PathOf("log.txt")).find("01->06=8\r\n"), std::string::npos);
}

class FullSettingsTest : public testing::Test {
 protected:
  void Write(const std::string& text) { store.Write("LastFile", text); }
  std::string Read() const { return store.Read("LastFile", "default"); }
  std::string FileName() const { return folder.PathOf("CorvanaSync/CorvanaSync.ini"); }
  std::size_t FileCount() const {
    const std::filesystem::directory_iterator all(std::filesystem::path(FileName()).parent_path());
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
  }

  TemporaryFolder folder;
  qt::QtSettingsStore store{QString::fromStdString(folder.PathOf("CorvanaSync/CorvanaSync.ini")),
                            "Settings"};
};

TEST_F(FullSettingsTest, StayAsTheyWereWhereverTheDiskFillsUpAndReportAFault) {
  Write("/before.txt");
  const std::string before = ReadTextFile(FileName());
  const std::string after(before.size() * 3, 'x');
  for (std::size_t space = 0; space < before.size() * 3; ++space) {
    {
      const FileSizeLimit limit(space);
      EXPECT_THROW(Write(after), base::Fault);
    }
    ASSERT_EQ(ReadTextFile(FileName()), before) << space;
    ASSERT_EQ(FileCount(), 1U) << "a partly written file is removed";
  }
  Write(after);
  EXPECT_EQ(Read(), after);
}

TEST_F(FullSettingsTest, StayAsTheyWereOnADiskThatIsReallyFull) {
  const SmallDisk disk(1);
  if (!disk.IsMounted()) {
    GTEST_SKIP() << SmallDisk::kNeeds;
  }
  qt::QtSettingsStore full(QString::fromStdString(disk.PathOf("CorvanaSync/CorvanaSync.ini")),
                           "Settings");
  full.Write("LastFile", "/before.txt");
  EXPECT_THROW(full.Write("LastFile", "/after.txt"), base::Fault);
  EXPECT_EQ(full.Read("LastFile", ""), "/before.txt");
}

TEST_F(FullSettingsTest, StartEmptyWhenTheirFolderIsGone) {
  Write("/before.txt");
  std::filesystem::remove_all(folder.Path());
  EXPECT_EQ(Read(), "default");
  EXPECT_FALSE(std::filesystem::exists(folder.Path())) << "reading creates no folder";
  Write("/after.txt");
  EXPECT_EQ(Read(), "/after.txt");
}

}  // namespace
}  // namespace kelvara::test
