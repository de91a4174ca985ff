#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <optional>

#include "system/desktop/DesktopSession.h"

namespace kelvara::test {
namespace {

namespace fs = std::filesystem;

enum class Condition { Missing, Empty, Truncated, Binary, Unreadable, Folder };

constexpr std::array kNames{"Missing", "Empty", "Truncated", "Binary", "Unreadable", "Folder"};
std::string NameOf(Condition condition) { return kNames.at(static_cast<std::size_t>(condition)); }

void PrintTo(Condition condition, std::ostream* stream) { *stream << NameOf(condition); }

/// Bytes of all values, none of which begins anything known.
std::string BinaryText() {
  std::string bytes;
  for (int byte = 255; byte >= 0; --byte) {
    bytes += static_cast<char>(byte);
  }
  return bytes + bytes;
}

/// A user to whom a file's rights apply: the superuser gives up the power to pass over them.
/// Nothing where that cannot be done.
std::optional<ProcessRequest> BoundByRights(ProcessRequest request) {
  const std::string tool = "/usr/bin/setpriv";
  if (::geteuid() == 0) {
    if (!fs::exists(tool)) {
      return {};
    }
    request.arguments.insert(
        request.arguments.begin(),
        {tool, "--inh-caps=-all", "--bounding-set=-dac_override,-dac_read_search", "--"});
  }
  return request;
}

/// The program finds a file of its own in a condition that it did not leave it in.
class DesktopStartUpFilesTest : public DesktopSession {
 protected:
  void Put(const std::string& name, Condition condition, const std::string& whole,
           const std::string& cut) const {
    if (condition == Condition::Folder) {
      fs::create_directories(PathOf(name));
    } else if (condition != Condition::Missing) {
      Write(name, condition == Condition::Empty       ? ""
                  : condition == Condition::Truncated ? cut
                  : condition == Condition::Binary    ? BinaryText()
                                                      : whole);
      ::chmod(PathOf(name).c_str(), condition == Condition::Unreadable ? 0 : 0644);
    }
  }

  /// Expects the link to have started, without a word, and the menus to work.
  static void ExpectUsable(const DesktopProgram& program, const SimulatedBeltpack& beltpack) {
    DesktopProgram::Await("the link's start", [&] { return Holds(program, beltpack.Device()); });
    program.MainWindow();
    EXPECT_TRUE(program.OtherWindows().empty());
    program.Choose({"Options", "Display FPS", "On"});
    DesktopProgram::Await("the option", [&] {
      return program.IsChecked({"Options", "Display FPS", "On"});
    });
  }
};

class DesktopStartUpSettingsTest : public DesktopStartUpFilesTest,
                                   public ::testing::WithParamInterface<Condition> {};

TEST_P(DesktopStartUpSettingsTest, ThatAreBrokenAreSetAsideAndTheLinkStarts) {
  const Condition condition = GetParam();
  // The port that they name is none that anything is plugged into.
  const std::string whole = "[Settings]\nRFPSUnits=2\nComPort=7\n";
  const std::string cut = "[Settings]\nRFPSUnits=2\nComPo";
  Put(kSettingsFile, condition, whole, cut);
  SimulatedBeltpack beltpack(CliRequest({"simulate"}));
  auto request = std::optional(Request({"--com", BeltpackAsPort(1)}));
  if (condition == Condition::Unreadable) {
    request = BoundByRights(*request);
  }
  if (!request) {
    GTEST_SKIP() << "the superuser may read everything";
  }
  DesktopProgram program(*screen, *bus, *request);
  ExpectUsable(program, beltpack);
  EXPECT_TRUE(program.IsChecked({"Options", "Display Format", "RFPS Units"}));
  program.RequestClose(program.MainWindow());
  ExpectCleanEnd(program);

  EXPECT_EQ(Settings(), "[Settings]\nFPSDisplay=True\n");
  const std::string aside = std::string(kSettingsFile) + ".broken-1";
  const bool broken = condition != Condition::Missing && condition != Condition::Empty;
  ASSERT_EQ(Exists(aside), broken);
  EXPECT_FALSE(Exists(std::string(kSettingsFile) + ".broken-2"));
  if (condition == Condition::Folder) {
    EXPECT_TRUE(fs::is_directory(PathOf(aside)));
  } else if (broken) {
    ::chmod(PathOf(aside).c_str(), 0600);
    EXPECT_EQ(Read(aside), condition == Condition::Truncated ? cut
                           : condition == Condition::Binary  ? BinaryText()
                                                             : whole);
  }
}

INSTANTIATE_TEST_SUITE_P(Found, DesktopStartUpSettingsTest,
                         ::testing::Values(Condition::Missing, Condition::Empty,
                                           Condition::Truncated, Condition::Binary,
                                           Condition::Unreadable, Condition::Folder),
                         [](const auto& tested) { return NameOf(tested.param); });

TEST_F(DesktopStartUpFilesTest, SettingsCutBehindAValueAreReadSoFar) {
  const std::string cut = "[Settings]\nRFPSUnits=2\nComPort=4";
  Write(kSettingsFile, cut);
  auto program = Start({"--com", "4=" + PathOf("no-such-device")});
  const DesktopWindow message = program->Open("Kelvara");
  EXPECT_EQ(program->MessageText(message), "Could not open COM  4");
  program->Press(message, {"Return"});
  program->WaitUntilClosed(message);
  const DesktopWindow dialog = program->Open("Select Serial Port");
  program->PressButton(dialog, "Cancel");
  program->WaitUntilClosed(dialog);
  program->RequestClose(program->MainWindow());
  ExpectCleanEnd(*program);
  EXPECT_EQ(Settings(), cut);

  SimulatedBeltpack beltpack(CliRequest({"simulate"}));
  program = Start({"--com", BeltpackAsPort(4)});
  ExpectUsable(*program, beltpack);
  EXPECT_TRUE(program->IsChecked({"Options", "Display Format", "Metres"}));
  program->RequestClose(program->MainWindow());
  ExpectCleanEnd(*program);
  EXPECT_FALSE(Exists(std::string(kSettingsFile) + ".broken-1"));
  EXPECT_EQ(Settings(), cut + "\nFPSDisplay=True\n");
}

TEST_F(DesktopStartUpFilesTest, HelpThatIsMissingIsToldWithItsPath) {
  fs::remove_all(PathOf("bin/Help"));
  SimulatedBeltpack beltpack(CliRequest({"simulate"}));
  auto program = Start({"--com", BeltpackAsPort(1)});
  ExpectUsable(*program, beltpack);
  program->Press(program->MainWindow(), {"F1"});
  const DesktopWindow message = program->Open("Kelvara Help");
  EXPECT_EQ(program->MessageText(message),
            "Error occured while attempting to display " + PathOf("bin") + "\\Help\\index.htm");
  EXPECT_EQ(program->Buttons(message), std::vector<std::string>{"OK"});
  program->Press(message, {"Return"});
  program->WaitUntilClosed(message);
  EXPECT_FALSE(Exists("opened.txt"));
  // What is put back is found without another start.
  Write("bin/Help/index.htm", "");
  program->Press(program->MainWindow(), {"F1"});
  DesktopProgram::Await("the opened page", [&] { return Exists("opened.txt"); });
  program->RequestClose(program->MainWindow());
  ExpectCleanEnd(*program);
}

class DesktopStartUpFieldsTest : public DesktopStartUpFilesTest,
                                 public ::testing::WithParamInterface<Condition> {};

TEST_P(DesktopStartUpFieldsTest, AreNoHindranceToAReport) {
  const Condition condition = GetParam();
  const std::string name = "bin/rfields.ds";
  Put(name, condition, "", "Hall\r\nR. Marl");
  auto program = Start({"--demo"});
  DesktopProgram::Await("a report", [&] { return program->GridRows() > 1; });
  EXPECT_EQ(Exists(name), condition != Condition::Missing) << "nobody has asked for the fields yet";
  program->Choose({"Tools", "Generate AA Cable Length Report..."});
  const DesktopWindow dialog = program->Open("Generate Reoprt");
  if (condition == Condition::Truncated) {
    EXPECT_EQ(program->FieldText(dialog, "Site"), "Hall");
    EXPECT_EQ(program->FieldText(dialog, "Tester"), "R. Marl");
  } else if (condition == Condition::Binary) {
    EXPECT_NE(program->FieldText(dialog, "Site"), "");
  } else {
    EXPECT_EQ(program->FieldText(dialog, "Site"), "");
  }
  if (condition == Condition::Missing) {
    EXPECT_EQ(Read(name), "\r\n\r\n 1 \r\n\r\n");
  }
  program->FillIn(dialog, "File", PathOf("report.html"));
  program->FillIn(dialog, "Site", "Harbour Theatre");
  program->FillIn(dialog, "Tester", "J. Reed");
  program->FillIn(dialog, "Notes", "");
  program->PressButton(dialog, "Generate Report");
  program->WaitUntilClosed(dialog);
  program->RequestClose(program->MainWindow());
  ExpectCleanEnd(*program);
  const std::string report = Read("report.html");
  EXPECT_NE(report.find("<td>Harbour Theatre</td>\r\n"), std::string::npos) << report;
  EXPECT_TRUE(report.ends_with("</html>\r\n"));
  // A folder of that name stays what it is.
  if (condition == Condition::Folder) {
    EXPECT_TRUE(fs::is_directory(PathOf(name)));
  } else {
    const std::string fields = Read(name);
    EXPECT_EQ(fields.substr(0, 26), "Harbour Theatre\r\nJ. Reed\r\n");
  }
}

INSTANTIATE_TEST_SUITE_P(Found, DesktopStartUpFieldsTest,
                         ::testing::Values(Condition::Missing, Condition::Empty,
                                           Condition::Truncated, Condition::Binary,
                                           Condition::Folder),
                         [](const auto& tested) { return NameOf(tested.param); });

}  // namespace
}  // namespace kelvara::test
