#include "cli/PortsCommand.h"

#include <CLI/CLI.hpp>
#include <iostream>

#include "link/ComPort.h"
#include "qt/PortProbe.h"
#include "qt/PortTable.h"
#include "qt/QtSettingsStore.h"

namespace kelvara::cli {

void PortsCommand::AddTo(CLI::App& program) {
  CLI::App* command = program.add_subcommand(
      "ports",
      "List COM1 to COM12: the port, the device it stands for, and \"present\" or \"absent\".\n"
      "Why a device that is present cannot be opened is told on standard error.");
  command->add_option("--com", assignments_, "Let port N stand for DEVICE in this run")
      ->check(qt::PortAssignmentFault)
      ->allow_extra_args(false)
      ->type_name("N=DEVICE");
}

ExitCode PortsCommand::Run() {
  const qt::QtSettingsStore settings;
  qt::PortTable table(settings);
  for (const std::string& assignment : assignments_) {
    table.Assign(qt::ReadPortAssignment(assignment));
  }
  std::vector<std::string> obstacles;
  for (int port = 1; port <= link::kLastComPort; ++port) {
    const std::string device = table.DeviceOf(port);
    const qt::PortFinding finding = qt::ProbePort(device);
    const std::string name = "COM" + std::to_string(port);
    std::cout << name << ' ' << device << ' ' << (finding.IsPresent() ? "present" : "absent")
              << '\n';
    if (finding.IsPresent() && !finding.reason.empty()) {
      obstacles.push_back(name + " cannot be opened: " + finding.reason);
    }
  }
  std::cout.flush();
  for (const std::string& obstacle : obstacles) {
    Complain(obstacle);
  }
  if (!std::cout) {
    Complain("cannot write to standard output");
    return ExitCode::Failed;
  }
  return ExitCode::Done;
}

}  // namespace kelvara::cli
