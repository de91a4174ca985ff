#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>

#include "base/Fault.h"
#include "help/HelpCommands.h"
#include "platform/qt/QtSettingsStore.h"
#include "platform/qt/RealFilesRig.h"
#include "report/RememberedFields.h"
#include "report/ReportDialog.h"
#include "report/TestReport.h"
#include "sim/SiteFile.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"
#include "support/TextFile.h"

namespace kelvara::test {
namespace {

/// What a program may find in place of one of its files.
enum class Found { Missing, Empty, Truncated, Binary, Unreadable, Folder };

constexpr std::array kAllFound = {Found::Missing, Found::Empty,      Found::Truncated,
                                  Found::Binary,  Found::Unreadable, Found::Folder};

void PrintTo(Found found, std::ostream* stream) {
  constexpr std::array kNames{"missing", "empty", "truncated", "binary", "unreadable", "a folder"};
  *stream << kNames.at(static_cast<std::size_t>(found));
}

/// Bytes of all values, in an order that begins no known format.
std::string BinaryText() {
  std::string bytes;
  for (int byte = 255; byte >= 0; --byte) {
    bytes += static_cast<char>(byte);
  }
  return bytes + bytes;
}

/// A folder with one file in some condition, as an unprivileged user sees it.
class StartUpFilesTest : public testing::Test {
 protected:
  /// The contents of a file in the condition.
  static std::string Text(Found found, const std::string& whole) {
    return found == Found::Empty       ? ""
           : found == Found::Truncated ? whole.substr(0, whole.size() / 2)
           : found == Found::Binary    ? BinaryText()
                                       : whole;
  }

  /// Creates a file in the condition; a truncated one has half of its text.
  void Put(Found found, const std::string& name, const std::string& whole) {
    const std::string path = folder.PathOf(name);
    std::filesystem::remove_all(path);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::filesystem::permissions(std::filesystem::path(path).parent_path(),
                                 std::filesystem::perms::all);
    if (found == Found::Folder) {
      std::filesystem::create_directory(path);
    } else if (found != Found::Missing) {
      WriteTextFile(path, Text(found, whole));
      ::chmod(path.c_str(), found == Found::Unreadable ? 0 : 0666);
    }
  }

  /// The contents of a file, even if nobody may read it.
  std::string TextOf(const std::string& name) const {
    ::chmod(folder.PathOf(name).c_str(), 0666);
    return ReadTextFile(folder.PathOf(name));
  }

  /// What an unprivileged user finds, as one line.
  static std::string AsUser(const std::function<std::string(RealFilesRig& rig)>& work) {
    return ReportOfChild(
        [&](const auto& report) {
          RealFilesRig rig;
          std::string text = work(rig);
          std::replace(text.begin(), text.end(), '\n', '|');
          std::erase(text, '\r');
          report(text);
        },
        RunAs::Nobody);
  }

  static std::string Boxes(const RealFilesRig& rig) {
    std::string text;
    for (const auto& box : rig.boxes.boxes) {
      text += " [" + box.text + "]";
    }
    return text;
  }

  TemporaryFolder folder;
};

TEST_F(StartUpFilesTest, SettingsThatCannotBeReadAreSetAsideAndStartEmpty) {
  const std::string name = "CorvanaSync/CorvanaSync.ini";
  const std::string whole = "[Settings]\nLastFile=/log\nComPort=3\n";
  for (const Found found : kAllFound) {
    SCOPED_TRACE(testing::PrintToString(found));
    std::filesystem::remove_all(folder.PathOf("CorvanaSync"));
    Put(found, name, whole);
    const std::string port = AsUser([&](RealFilesRig&) {
      qt::QtSettingsStore store(
          QString::fromStdString(folder.PathOf("CorvanaSync/CorvanaSync.ini")), "Settings");
      std::string text = store.Read("ComPort", "1");
      store.Write("ComPort", "4");
      text += store.Read("ComPort", "1");
      return text;
    });
    // Half of the file ends in a line that has no "=" yet.
    EXPECT_EQ(port, "14");
    const std::string aside = name + ".broken-1";
    ASSERT_EQ(std::filesystem::exists(folder.PathOf(aside)),
              found != Found::Missing && found != Found::Empty);
    if (found == Found::Folder) {
      EXPECT_TRUE(std::filesystem::is_directory(folder.PathOf(aside)));
    } else if (std::filesystem::exists(folder.PathOf(aside))) {
      EXPECT_EQ(TextOf(aside), Text(found, whole));
    }
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf(name + ".broken-2")));
    EXPECT_EQ(ReadTextFile(folder.PathOf(name)), "[Settings]\nComPort=4\n");
  }
}

TEST_F(StartUpFilesTest, SettingsCutOffAnywhereAreReadAsFarAsTheyGoOrSetAside) {
  const std::string name = "CorvanaSync/CorvanaSync.ini";
  const std::string whole = "[Settings]\nComPort=12\nLastFile=/log.txt\n\n[Ports]\nCOM1=/dev/x\n";
  std::filesystem::create_directories(folder.PathOf("CorvanaSync"));
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    const std::string cut = whole.substr(0, size);
    WriteTextFile(folder.PathOf(name), cut);
    const qt::QtSettingsStore store(
        QString::fromStdString(folder.PathOf("CorvanaSync/CorvanaSync.ini")), "Settings");
    const std::string port = store.Read("ComPort", "default");
    const std::string aside = folder.PathOf(name + ".broken-1");
    if (std::filesystem::exists(aside)) {
      EXPECT_EQ(ReadTextFile(aside), cut);
      EXPECT_EQ(port, "default");
      std::filesystem::remove(aside);
    } else {
      const std::size_t value = cut.find("ComPort=");
      EXPECT_EQ(port,
                value == std::string::npos
                    ? "default"
                    : cut.substr(value + 8, std::min(cut.find('\n', value), size) - value - 8));
      EXPECT_EQ(ReadTextFile(folder.PathOf(name)), cut);
    }
  }
}

TEST_F(StartUpFilesTest, RememberedFieldsAreReadAsFarAsTheyGo) {
  const std::string whole = "hall\r\nR. Marlow\r\n 0 \r\nnotes\r\n";
  const std::map<Found, std::string> expected = {
      {Found::Missing, "old site,old tester,1,old notes"},
      {Found::Empty, "old site,old tester,1,old notes"},
      {Found::Truncated, "hall,R. Marlo,1,old notes"},
      {Found::Unreadable, "old site,old tester,1,old notes"},
      {Found::Folder, "old site,old tester,1,old notes"}};
  for (const auto& [found, fieldsText] : expected) {
    SCOPED_TRACE(testing::PrintToString(found));
    Put(found, "rfields.ds", whole);
    const std::string read = AsUser([&](RealFilesRig& rig) {
      report::ReportFields fields{"old site", "old tester", true, "old notes"};
      report::RememberedFields(rig.files, folder.Path()).LoadOrCreate(fields);
      return fields.site + "," + fields.tester + "," + (fields.showReport ? "1" : "0") + "," +
             fields.notes;
    });
    EXPECT_EQ(read, fieldsText);
    if (found == Found::Missing) {
      EXPECT_EQ(ReadTextFile(folder.PathOf("rfields.ds")),
                "old site\r\nold tester\r\n 1 \r\nold notes\r\n");
    } else if (found == Found::Unreadable) {
      EXPECT_EQ(TextOf("rfields.ds"), whole);
    }
  }
}

TEST_F(StartUpFilesTest, SavingReplacesTheRememberedFieldsOrFailsSilently) {
  const std::string whole = "hall\r\nR. Marlow\r\n 0 \r\nnotes\r\n";
  for (const Found found : kAllFound) {
    SCOPED_TRACE(testing::PrintToString(found));
    Put(found, "rfields.ds", whole);
    const std::string boxes = AsUser([&](RealFilesRig& rig) {
      report::RememberedFields(rig.files, folder.Path()).Save({"s", "t", true, "n"});
      return "boxes:" + Boxes(rig);
    });
    EXPECT_EQ(boxes, "boxes:");
    if (found == Found::Folder) {
      EXPECT_TRUE(std::filesystem::is_directory(folder.PathOf("rfields.ds")));
    } else {
      EXPECT_EQ(TextOf("rfields.ds"),
                found == Found::Unreadable ? whole : "s\r\nt\r\n 1 \r\nn\r\n");
    }
  }
}

TEST_F(StartUpFilesTest, RememberedFieldsMayHoldAnyBytes) {
  Put(Found::Binary, "rfields.ds", "");
  const std::string bytes = BinaryText();
  RealFilesRig rig;
  report::ReportFields fields;
  report::RememberedFields(rig.files, folder.Path()).LoadOrCreate(fields);
  EXPECT_EQ(fields.site, bytes.substr(0, bytes.find('\n')));
  EXPECT_EQ(ReadTextFile(folder.PathOf("rfields.ds")), bytes);
}

TEST_F(StartUpFilesTest, ASiteFileIsReadOrRefusedWithItsName) {
  const std::string path = folder.PathOf("site.txt");
  for (const Found found : kAllFound) {
    SCOPED_TRACE(testing::PrintToString(found));
    Put(found, "site.txt", "1 0 90 50\n200 1 90 100\n");
    const std::string result = AsUser([&](RealFilesRig& rig) -> std::string {
      try {
        return std::to_string(sim::ReadSite(rig.files, path).antennas.size()) + " antennas";
      } catch (const base::Fault& fault) {
        return fault.what();
      }
    });
    // Half of the file is the first antenna and the beginning of the second.
    if (found == Found::Truncated) {
      EXPECT_EQ(result.substr(0, path.size() + 10), "\"" + path + "\", line 2");
    } else {
      EXPECT_NE(result.find("\"" + path + "\""), std::string::npos) << result;
    }
    for (const char character : result) {
      EXPECT_GE(character, ' ') << "nothing that a terminal would act on";
    }
  }
}

TEST_F(StartUpFilesTest, ASiteFileCutOffAnywhereNeverYieldsAnAntennaThatIsNotInIt) {
  const std::string whole = "1 0 90 50\n2 1 90 100\n3 2 90 150\n";
  const auto site = sim::ParseSite(whole, "site").antennas;
  int refused = 0;
  for (std::size_t size = 0; size < whole.size(); ++size) {
    try {
      const auto cut = sim::ParseSite(whole.substr(0, size), "site").antennas;
      ASSERT_LE(cut.size(), site.size());
      for (std::size_t antenna = 0; antenna < cut.size(); ++antenna) {
        EXPECT_EQ(cut[antenna].rpn, site[antenna].rpn);
        EXPECT_EQ(cut[antenna].fps, site[antenna].fps);
        EXPECT_EQ(cut[antenna].fpn, site[antenna].fpn);
      }
    } catch (const base::Fault& fault) {
      EXPECT_NE(std::string(fault.what()).find("\"site\""), std::string::npos);
      ++refused;
    }
  }
  EXPECT_GT(refused, 0);
}

TEST_F(StartUpFilesTest, AHelpPageIsOpenedOrReportedWithItsPath) {
  std::filesystem::create_directory(folder.PathOf("Help"));
  const std::string path = help::HelpPath(folder.Path());
  for (const Found found : kAllFound) {
    SCOPED_TRACE(testing::PrintToString(found));
    Put(found, "Help/index.htm", "<html></html>");
    const std::string result = AsUser([&](RealFilesRig& rig) {
      help::HelpCommands(rig.desktop).mnuContents_Click(path);
      return std::to_string(rig.opener.documents.size()) + Boxes(rig);
    });
    const bool readable =
        found == Found::Empty || found == Found::Truncated || found == Found::Binary;
    EXPECT_EQ(result,
              readable ? "1" : "0 [Error occured while attempting to display " + path + "]");
  }
}

TEST_F(StartUpFilesTest, APreviousReportIsReplacedOrKeptAndTheFailureReported) {
  const std::string path = folder.PathOf("report.html");
  const std::string question = " [" + path + " already exists.||Do you want to replace it?]";
  const std::string failure =
      " [Error occured while generating report.|Check the filename and path]";
  for (const Found found : kAllFound) {
    SCOPED_TRACE(testing::PrintToString(found));
    Put(found, "report.html", "<html>older</html>");
    const std::string result = AsUser([&](RealFilesRig& rig) {
      rig.boxes.answer = platform::MessageAnswer::Yes;
      rig.desktop.programFolder = folder.Path();
      report::ReportDialog dialog(rig.session.Model(), rig.session.Report(), rig.desktop);
      const bool closes = dialog.CommandGenerate_Click(path, {"a site", "a tester", false, ""});
      return (closes ? "written" : "stays open") + Boxes(rig);
    });
    const bool refused = found == Found::Unreadable || found == Found::Folder;
    EXPECT_EQ(result, refused                   ? "stays open" + failure
                      : found == Found::Missing ? "written"
                                                : "written" + question);
    if (found == Found::Unreadable) {
      EXPECT_EQ(TextOf("report.html"), "<html>older</html>");
    } else if (!refused) {
      EXPECT_TRUE(ReadTextFile(path).ends_with("</html>\r\n"));
    }
  }
}

TEST_F(StartUpFilesTest, APreviousTestReportIsReplacedWithoutAQuestionOrTheFailureReported) {
  for (const Found found : kAllFound) {
    SCOPED_TRACE(testing::PrintToString(found));
    Put(found, "test.html", "<html>older</html>");
    const std::string result = AsUser([&](RealFilesRig& rig) {
      rig.desktop.programFolder = folder.Path();
      report::TestReport test(rig.session.Model(), rig.session.Report(), rig.desktop);
      const bool written = test.Run([&] { rig.session.ClearSyncResults(); });
      return (written ? "written" : "failed") + Boxes(rig);
    });
    const bool refused = found == Found::Unreadable || found == Found::Folder;
    EXPECT_EQ(result,
              refused
                  ? "failed [Error occured while generating report.|Check the filename and path]"
                  : "written");
    if (!refused) {
      EXPECT_TRUE(ReadTextFile(folder.PathOf("test.html")).ends_with("</html>\r\n"));
    }
  }
}

}  // namespace
}  // namespace kelvara::test
