#pragma once

#include <cstdint>
#include <string>

#include "cli/Command.h"

namespace kelvara::cli {

/// `kelvara-cli simulate`: simulates a beltpack on a pseudo-terminal until a signal ends it.
class SimulateCommand : public Command {
 public:
  void AddTo(CLI::App& program) override;

  ExitCode Run(const Streams& streams, const CommandMachine& machine) override;

 private:
  std::string sitePath_;
  std::string linkPath_;
  std::string fault_ = "none";
  std::string commandLogPath_;
  std::uint64_t seed_ = 1;
  bool takesControl_ = false;
};

}  // namespace kelvara::cli
