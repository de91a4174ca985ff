#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/Session.h"
#include "cli/Command.h"
#include "cli/ResultOptions.h"
#include "platform/PortSettings.h"
#include "platform/SerialPort.h"

namespace kelvara::cli {

class ConsoleMachine;

/// `kelvara-cli record`: the live link without a window.
class RecordCommand : public Command {
 public:
  void AddTo(CLI::App& program) override;

  ExitCode Run(const Streams& streams, const CommandMachine& machine) override;

 private:
  ExitCode RunOn(const CommandMachine& machine, ConsoleMachine& console,
                 platform::SerialPort& port);
  ExitCode RunOnDemo(const Streams& streams, const CommandMachine& machine);
  ExitCode RunOnDevice(const Streams& streams, const CommandMachine& machine);
  double Speed() const { return speed_.value_or(1.0); }
  bool HasEnded(const app::Session& session, std::int64_t milliseconds) const;

  ResultOptions options_;
  std::optional<std::string> device_;
  std::optional<int> comPort_;
  bool demo_ = false;
  std::optional<std::string> demoSitePath_;
  std::int32_t baud_ = platform::kUsualRate;
  std::optional<std::int32_t> reports_;
  std::optional<double> seconds_;
  std::optional<std::string> rawPath_;
  std::optional<double> speed_;
};

}  // namespace kelvara::cli
