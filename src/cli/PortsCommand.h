#pragma once

#include <string>
#include <vector>

#include "cli/Command.h"

namespace kelvara::cli {

/// `kelvara-cli ports`: the devices that COM1 to COM12 stand for.
class PortsCommand : public Command {
 public:
  void AddTo(CLI::App& program) override;

  /// Prints a line for each port; with --long, it ends with the adapter's name where that is known.
  /// If a device is present but cannot be opened, the reason goes to
  /// standard error.
  ExitCode Run(const Streams& streams, const CommandMachine& machine) override;

 private:
  std::vector<std::string> assignments_;
  bool long_ = false;
};

}  // namespace kelvara::cli
