#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "support/Process.h"
#include "support/WaitUntil.h"

namespace kelvara::test {

/// A command that the beltpack received.
struct ReceivedCommand {
  int milliseconds;  ///< Since the beltpack was switched on.
  std::string text;
};

/// A running `kelvara-cli simulate`: a beltpack on a pseudo-terminal, with a symbolic link to it
/// named "beltpack" in the folder where it runs.
class SimulatedBeltpack {
 public:
  /// The port's name for a program that runs in the same folder.
  static constexpr const char* kPort = "beltpack";

  /// Starts the request, a "simulate" with or without options, and waits for the device.
  explicit SimulatedBeltpack(const ProcessRequest& request)
      : link_(request.folder + "/" + kPort),
        commandLog_(request.folder + "/commands.log"),
        process_(Controlled(request)) {
    const auto device = process_.ReadLine();
    if (!device) {
      throw std::runtime_error("no simulated beltpack: " + process_.Finish().errors);
    }
    device_ = *device;
  }

  /// The device at the start.
  const std::string& Device() const { return device_; }

  /// Sets a line fault, given as its name and rule.
  void SetFault(const std::string& rule) { process_.Send("fault " + rule + "\n"); }

  /// Unplugs the cable and waits until the device is gone.
  void Unplug() { Move("unplug\n", false); }

  /// Plugs the cable in and waits until the device is back.
  void Plug() { Move("plug\n", true); }

  /// The commands received so far.
  std::vector<ReceivedCommand> Commands() const {
    std::vector<ReceivedCommand> commands;
    std::ifstream log(commandLog_);
    ReceivedCommand command;
    while (log >> command.milliseconds && std::getline(log >> std::ws, command.text)) {
      commands.push_back(command);
    }
    return commands;
  }

  void WaitForCommands(std::size_t count) const {
    Expect(WaitUntil([&] { return Commands().size() >= count; }, Process::kPatience));
  }

 private:
  ProcessRequest Controlled(ProcessRequest request) const {
    for (const std::string& argument : {std::string("--control"), std::string("--link"), link_,
                                        std::string("--log-commands"), commandLog_}) {
      request.arguments.push_back(argument);
    }
    request.inputStaysOpen = true;
    return request;
  }

  void Move(const std::string& command, bool isThere) {
    process_.Send(command);
    Expect(
        WaitUntil([&] { return std::filesystem::exists(link_) == isThere; }, Process::kPatience));
  }

  static void Expect(bool happened) {
    if (!happened) {
      throw std::runtime_error("the simulated beltpack does not react");
    }
  }

  std::string link_;
  std::string commandLog_;
  Process process_;
  std::string device_;
};

}  // namespace kelvara::test
