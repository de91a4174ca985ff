#pragma once

#include <string>
#include <vector>

#include "cli/Command.h"
#include "cli/ResultOptions.h"

namespace kelvara::cli {

/// `kelvara-cli replay`: turns recorded beltpack text into results.
class ReplayCommand : public Command {
 public:
  void AddTo(CLI::App& program) override;

  ExitCode Run(const Streams& streams, const CommandMachine& machine) override;

 private:
  ResultOptions options_;
  std::vector<std::string> files_;
  bool whole_ = false;
};

}  // namespace kelvara::cli
