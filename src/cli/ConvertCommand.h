#pragma once

#include <string>

#include "cli/Command.h"

namespace CLI {
class Option;
}

namespace kelvara::cli {

/// `kelvara-cli convert`: one Update of the converter.
class ConvertCommand : public Command {
 public:
  void AddTo(CLI::App& program) override;

  ExitCode Run(const Streams& streams, const CommandMachine& machine) override;

 private:
  std::string field_;
  std::string text_;
  const CLI::Option* value_ = nullptr;
};

}  // namespace kelvara::cli
