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

/// Something that the program writes. `write` writes it and returns what the user is told when that
/// fails.
struct Writer {
  const char* name;
  const char* file;
  std::function<std::string(RealFilesRig& rig, const std::string& path)> write;
  const char* complaint;
  bool goesOn = false;
};

void PrintTo(const Writer& writer, std::ostream* stream) { *stream << writer.file; }

std::string Told(const RealFilesRig& rig) {
  return rig.boxes.boxes.empty() ? "" : rig.boxes.boxes.back().text;
}

constexpr int kEntries = 200;

/// Captures entries; returns the box of a start that fails, else how the first entry failed.
std::string Capture(RealFilesRig& rig, const std::string& path) {
  capture::DataCapture& capture = rig.session.Capture();
  if (!capture.StartLoggingToFile(path)) {
    return Told(rig);
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
  return rig.session.Report().GenerateReport(path, "a site", "a tester", "notes") ? "" : Told(rig);
}

std::string Csv(RealFilesRig& rig, const std::string& path) {
  const int beeps = rig.beeper.count;
  rig.session.Export().WriteResults(path);
  return rig.beeper.count == beeps ? "" : "beep";
}

std::string Trace(RealFilesRig& rig, const std::string& path) {
  try {
    sessions::LineTrace trace(rig.files.OpenForOutput(path));
    for (int poll = 0; poll < kEntries; ++poll) {
      trace.Sent("rfps");
      trace.Received("100ec5A301 Sync\r\n");
    }
    trace.Close();
    return trace.Failure().empty() ? "" : "failure";
  } catch (const base::Fault&) {
    return "fault";
  }
}

/// The fields are remembered without a word where they cannot be.
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
  /// What is written to a path when nothing is in the way.
  static std::string WholeText(const std::string& path) {
    // A report names its own file; the names of temporary folders are of one length.
    const TemporaryFolder folder;
    const std::string sparePath = folder.PathOf(GetParam().file);
    RealFilesRig rig;
    EXPECT_EQ(GetParam().write(rig, sparePath), "");
    std::string text = ReadTextFile(sparePath);
    const std::size_t named = text.find(sparePath);
    return named == std::string::npos ? text : text.replace(named, sparePath.size(), path);
  }

  /// How much of the whole text a disk with room for so many bytes holds: of a capture, which goes
  /// on when there is room again, the entries that fit whole.
  static std::size_t Kept(const std::string& whole, std::size_t room) {
    if (!GetParam().goesOn || room >= whole.size()) {
      return room;
    }
    const std::size_t lineEnd = room < 2 ? std::string::npos : whole.rfind("\r\n", room - 2);
    return lineEnd == std::string::npos ? 0 : lineEnd + 2;
  }

  /// Expects a disk with room for so many bytes to hold that much of the whole text, and the user
  /// to be told just when that is not all.
  static void ExpectBeginning(const std::string& whole, std::size_t room, const std::string& path,
                              const std::string& told) {
    SCOPED_TRACE("room for " + std::to_string(room) + " of " + std::to_string(whole.size()));
    EXPECT_EQ(ReadTextFile(path), whole.substr(0, Kept(whole, room)));
    if (room >= whole.size()) {
      EXPECT_EQ(told, "");
    } else if (told != kCaptureComplaint) {
      EXPECT_EQ(told, GetParam().complaint);
    } else {
      EXPECT_LT(room, whole.find("\r\n") + 2) << "only the first entry belongs to the start";
    }
  }
};

TEST_P(FullDiskTest, KeepsWhatThereIsRoomForWhereverItFillsUpAndTellsTheUser) {
  const TemporaryFolder folder;
  const std::string path = folder.PathOf(GetParam().file);
  const std::string whole = WholeText(path);
  constexpr std::size_t kStep = 37;
  for (std::size_t room = 0; room < whole.size() + kStep; room += kStep) {
    std::filesystem::remove(path);
    RealFilesRig rig;
    std::string told;
    {
      const FileSizeLimit limit(room);
      told = GetParam().write(rig, path);
    }
    ExpectBeginning(whole, room, path, told);
    // What stands in the log box stands in the file.
    const std::string shown = rig.logBox.text;
    EXPECT_EQ(shown, whole.substr(0, shown.size()));
    EXPECT_LE(shown.size(), room);
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
    const std::string told = GetParam().write(rig, path);
    ExpectBeginning(WholeText(path), pages * SmallDisk::kPageBytes, path, told);
  }
}

TEST_P(FullDiskTest, WritesTheWholeTextAgainOnceThereIsRoom) {
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

TEST_P(FullDiskTest, IsToldWhenTheFolderIsGoneAndMakesNone) {
  std::string path;
  {
    const TemporaryFolder folder;
    path = folder.PathOf(GetParam().file);
  }
  RealFilesRig rig;
  const std::string told = GetParam().write(rig, path);
  const std::string name = GetParam().name;
  EXPECT_EQ(told, name == "Capture" ? kCaptureComplaint
                  : name == "Trace" ? "fault"
                                    : GetParam().complaint);
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(path).parent_path()));
}

INSTANTIATE_TEST_SUITE_P(Writers, FullDiskTest, testing::ValuesIn(kWriters),
                         [](const testing::TestParamInfo<Writer>& tested) {
                           return tested.param.name;
                         });

TEST(LostCaptureFolderTest, ACaptureWhoseFolderGoesGoesOnAndTheNextStartIsTold) {
  RealFilesRig rig;
  auto folder = std::make_unique<TemporaryFolder>();
  const std::string path = folder->PathOf("log.txt");
  capture::DataCapture& capture = rig.session.Capture();
  ASSERT_TRUE(capture.StartLoggingToFile(path));
  folder.reset();
  EXPECT_NO_THROW(capture.PrintLogEntry("01->06=7"));
  EXPECT_NE(rig.logBox.text.find("01->06=7"), std::string::npos);
  EXPECT_NO_THROW(capture.StopLoggingToFile());
  EXPECT_FALSE(capture.StartLoggingToFile(path));
  EXPECT_EQ(Told(rig), kCaptureComplaint);
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
  std::size_t FilesThere() const {
    const std::filesystem::directory_iterator all(std::filesystem::path(FileName()).parent_path());
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
  }

  TemporaryFolder folder;
  qt::QtSettingsStore store{QString::fromStdString(folder.PathOf("CorvanaSync/CorvanaSync.ini")),
                            "Settings"};
};

TEST_F(FullSettingsTest, StayAsTheyWereWhereverTheDiskFillsUpAndTheUserIsTold) {
  Write("/before.txt");
  const std::string before = ReadTextFile(FileName());
  const std::string after(before.size() * 3, 'x');
  for (std::size_t room = 0; room < before.size() * 3; ++room) {
    {
      const FileSizeLimit limit(room);
      EXPECT_THROW(Write(after), base::Fault);
    }
    ASSERT_EQ(ReadTextFile(FileName()), before) << room;
    ASSERT_EQ(FilesThere(), 1U) << "what was written in part is taken away";
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

TEST_F(FullSettingsTest, BeginAnewWhenTheirFolderIsGone) {
  Write("/before.txt");
  std::filesystem::remove_all(folder.Path());
  EXPECT_EQ(Read(), "default");
  EXPECT_FALSE(std::filesystem::exists(folder.Path())) << "reading makes no folder";
  Write("/after.txt");
  EXPECT_EQ(Read(), "/after.txt");
}

}  // namespace
}  // namespace kelvara::test
