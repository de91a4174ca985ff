#include "system/desktop/DesktopSession.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <filesystem>
#include <sstream>

namespace kelvara::test {

void DesktopSession::Capture(const DesktopProgram& program, const std::string& name) const {
  program.Press(program.MainWindow(), {"alt+t", "l"});
  const DesktopWindow dialog = program.Open("Capture Sync Reports To File");
  program.FillIn(dialog, "File", PathOf(name));
  program.Press(dialog, {"Return"});
  program.WaitUntilClosed(dialog);
}

std::vector<std::string> DesktopSession::CapturedLines(const std::string& name) const {
  std::vector<std::string> lines;
  std::istringstream log(Exists(name) ? Read(name) : "");
  for (std::string line; std::getline(log, line);) {
    EXPECT_FALSE(log.eof()) << "no line end: " << line;
    EXPECT_TRUE(line.size() > 1 && line.back() == '\r') << line;
    lines.push_back(line.substr(0, line.size() - 1));
  }
  return lines;
}

std::vector<std::string> DesktopSession::CapturedReadings(const std::string& name) const {
  std::vector<std::string> readings;
  for (const std::string& line : CapturedLines(name)) {
    const std::size_t entry = line.find(", ");
    EXPECT_NE(entry, std::string::npos) << line;
    if (line.find("->", entry) != std::string::npos) {
      readings.push_back(line.substr(entry + 2));
    }
  }
  return readings;
}

void DesktopSession::AwaitReadings(const std::string& name, std::size_t count) const {
  DesktopProgram::Await(std::to_string(count) + " readings in " + name,
                        [&] { return CapturedReadings(name).size() >= count; });
}

DesktopSession::GridText DesktopSession::ReplayedGrid(const std::string& trace,
                                                      const Arguments& options) const {
  Arguments arguments = {"replay", PathOf(trace), "--json", "-"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const QJsonObject results =
      QJsonDocument::fromJson(QByteArray::fromStdString(CliOutput(arguments))).object();
  GridText grid;
  for (const QJsonValue row : results["grid"]["text"].toArray()) {
    grid.emplace_back();
    for (const QJsonValue cell : row.toArray()) {
      grid.back().push_back(cell.toString().toStdString());
    }
  }
  return grid;
}

bool DesktopSession::Holds(const DesktopProgram& program, const std::string& device) {
  namespace fs = std::filesystem;
  std::error_code ignored;
  for (const fs::directory_entry& handle :
       fs::directory_iterator("/proc/" + std::to_string(program.Id()) + "/fd", ignored)) {
    // The name of a removed device has a suffix.
    if (fs::read_symlink(handle, ignored).string().rfind(device, 0) == 0) {
      return true;
    }
  }
  return false;
}

std::size_t FilledCells(const std::vector<std::vector<std::string>>& grid) {
  std::size_t filled = 0;
  for (std::size_t row = 1; row < grid.size(); ++row) {
    for (std::size_t column = 1; column < grid[row].size(); ++column) {
      filled += grid[row][column].empty() ? 0 : 1;
    }
  }
  return filled;
}

}  // namespace kelvara::test
