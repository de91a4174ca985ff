#include "system/desktop/DesktopTest.h"

#include <filesystem>
#include <sstream>

#include "support/TextFile.h"
#include "system/SimulatedBeltpack.h"

namespace kelvara::test {

namespace fs = std::filesystem;

DesktopTest::DesktopTest() {
  for (const char* const name : {"bin", "config", "tools", "run"}) {
    fs::create_directory(PathOf(name));
  }
  fs::permissions(PathOf("run"), fs::perms::owner_all);
  fs::copy(KELVARA_DESKTOP, PathOf("bin"));
  fs::copy(fs::path(KELVARA_DESKTOP).parent_path() / "Help", PathOf("bin/Help"),
           fs::copy_options::recursive);
  Write("tools/xdg-open", "#!/bin/sh\necho \"$1\" >>\"" + PathOf("opened.txt") + "\"\n");
  fs::permissions(PathOf("tools/xdg-open"), fs::perms::all);
  bus.emplace(PathOf("run"));
  screen.emplace(PathOf("run"));
}

ProcessRequest DesktopTest::Request(const Arguments& arguments) const {
  ProcessRequest request;
  request.arguments = {PathOf("bin/kelvara")};
  request.arguments.insert(request.arguments.end(), arguments.begin(), arguments.end());
  request.environment = {{"PATH", PathOf("tools")},
                         {"HOME", folder.Path()},
                         {"XDG_CONFIG_HOME", PathOf("config")},
                         {"XDG_RUNTIME_DIR", PathOf("run")},
                         {"DISPLAY", screen->Name()},
                         {"DBUS_SESSION_BUS_ADDRESS", bus->Address()},
                         {"QT_QPA_PLATFORM", "xcb"},
                         {"LANG", "C.UTF-8"},
                         {"TZ", "UTC0"}};
  request.folder = folder.Path();
  return request;
}

std::unique_ptr<DesktopProgram> DesktopTest::Start(const Arguments& arguments) const {
  return StartOn(*screen, arguments);
}

std::unique_ptr<DesktopProgram> DesktopTest::StartOn(const VirtualScreen& where,
                                                     const Arguments& arguments) const {
  ProcessRequest request = Request(arguments);
  request.environment["DISPLAY"] = where.Name();
  return std::make_unique<DesktopProgram>(where, *bus, request);
}

ProcessRequest DesktopTest::CliRequest(const Arguments& arguments) const {
  ProcessRequest request = Request(arguments);
  request.arguments.front() = KELVARA_CLI;
  return request;
}

std::string DesktopTest::CliOutput(const Arguments& arguments) const {
  const ProcessResult result = RunProcess(CliRequest(arguments));
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  return result.output;
}

std::string DesktopTest::BeltpackAsPort(int port) const {
  return std::to_string(port) + "=" + PathOf(SimulatedBeltpack::kPort);
}

std::string DesktopTest::Read(const std::string& name) const { return ReadTextFile(PathOf(name)); }

void DesktopTest::Write(const std::string& name, const std::string& text) const {
  fs::create_directories(fs::path(PathOf(name)).parent_path());
  WriteTextFile(PathOf(name), text);
}

bool DesktopTest::Exists(const std::string& name) const { return fs::exists(PathOf(name)); }

std::string DesktopTest::Settings() const {
  return Exists(kSettingsFile) ? Read(kSettingsFile) : "";
}

std::string DesktopTest::Complaints(const ProcessResult& result) {
  std::string complaints;
  std::istringstream errors(result.errors);
  for (std::string line; std::getline(errors, line);) {
    if (line.rfind("Unable to detect a ", 0) != 0) {
      complaints += line + "\n";
    }
  }
  return complaints;
}

void DesktopTest::ExpectCleanEnd(DesktopProgram& program) {
  const ProcessResult result = program.Finish();
  EXPECT_FALSE(result.timedOut);
  EXPECT_EQ(result.signal, 0);
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(Complaints(result), "");
}

}  // namespace kelvara::test
