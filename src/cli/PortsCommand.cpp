#include "cli/PortsCommand.h"

#include <CLI/CLI.hpp>
#include <ostream>

#include "link/ComPort.h"
#include "platform/qt/Console.h"
#include "ports/PortDevice.h"
#include "ports/PortTable.h"

namespace kelvara::cli {

void PortsCommand::AddTo(CLI::App& program) {
  CLI::App* command = program.add_subcommand(
      "ports",
      "List COM1 to COM12: the port, the device it stands for, and \"present\" or \"absent\".\n"
      "If a device is present but cannot be opened, the reason goes to standard error.");
  command->add_option("--com", assignments_, "Use DEVICE as port N in this run")
      ->check(ports::PortAssignmentFault)
      ->allow_extra_args(false)
      ->type_name("N=DEVICE");
  command->add_flag("--long", long_, "Name the adapter behind each device, where it is known");
}

ExitCode PortsCommand::Run(const Streams& streams, const CommandMachine& machine) {
  ports::PortTable table(machine.portSettings);
  for (const std::string& assignment : assignments_) {
    table.Assign(ports::ReadPortAssignment(assignment));
  }
  std::vector<std::string> obstacles;
  for (int port = 1; port <= platform::kLastComPort; ++port) {
    const std::string device = table.DeviceOf(port);
    const ports::PortFinding finding = ports::LookAt(device);
    const std::string name = "COM" + std::to_string(port);
    const std::string adapter = long_ ? machine.adapterName(device) : std::string();
    streams.out << name << ' ' << qt::ConsoleText(device) << ' '
                << (finding.IsPresent() ? "present" : "absent") << (adapter.empty() ? "" : " ")
                << qt::ConsoleText(adapter) << '\n';
    if (finding.IsPresent() && !finding.reason.empty()) {
      obstacles.push_back(name + " cannot be opened: " + finding.reason);
    }
  }
  const ExitCode printed = streams.FlushOutput();
  for (const std::string& obstacle : obstacles) {
    streams.Complain(obstacle);
  }
  return printed;
}

}  // namespace kelvara::cli
