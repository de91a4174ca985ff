#include "cli/SimulateCommand.h"

#include <poll.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdint>
#include <limits>
#include <memory>
#include <ostream>

#include "base/Fault.h"
#include "cli/NumberChecks.h"
#include "platform/posix/CaughtSignals.h"
#include "platform/qt/QtFileSystem.h"
#include "sim/Beltpack.h"
#include "sim/ControlLines.h"
#include "sim/PseudoTerminal.h"
#include "sim/SiteFile.h"

namespace kelvara::cli {
namespace {

/// Milliseconds since the simulation began.
class Stopwatch {
 public:
  std::int64_t Ms() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Time::now() - begin_).count();
  }

 private:
  using Time = std::chrono::steady_clock;
  Time::time_point begin_ = Time::now();
};

/// How long the loop may sleep, in milliseconds; -1 (no limit) when nothing is due.
int SleepMs(const sim::Beltpack& beltpack, std::int64_t nowMs) {
  const auto due = beltpack.NextDue();
  return due ? static_cast<int>(std::clamp<std::int64_t>(*due - nowMs, 0, INT_MAX)) : -1;
}

/// Executes the commands waiting on standard input; false at its end.
bool TakeControl(sim::ControlLines& control, const Streams& streams) {
  std::array<char, 4096> piece{};
  const ssize_t got = read(STDIN_FILENO, piece.data(), piece.size());
  if (got < 0 && errno == EINTR) {
    return true;
  }
  if (got <= 0) {
    return false;
  }
  for (const std::string& line : control.Feed({piece.data(), static_cast<std::size_t>(got)})) {
    streams.Complain("\"" + line + "\" is not a command of the simulated beltpack");
  }
  return true;
}

void PrintDeviceName(const sim::PseudoTerminal& terminal, const Streams& streams) {
  streams.out << terminal.DeviceName() << std::endl;
}

/// Answers until a signal, or until the end of standard input if that carries commands.
void Serve(sim::Beltpack& beltpack, sim::PseudoTerminal& terminal, bool takesControl,
           const Stopwatch& stopwatch, const posix::CaughtSignals& caughtSignals,
           const Streams& streams) {
  sim::ControlLines control(beltpack);
  PrintDeviceName(terminal, streams);
  while (true) {
    std::array<pollfd, 4> waits{{{caughtSignals.Descriptor(), POLLIN, 0},
                                 {takesControl ? STDIN_FILENO : -1, POLLIN, 0},
                                 {terminal.Descriptor(), POLLIN, 0},
                                 {terminal.HandlesDescriptor(), POLLIN, 0}}};
    if (poll(waits.data(), waits.size(), SleepMs(beltpack, stopwatch.Ms())) < 0) {
      continue;
    }
    // A line fault set before a command was sent must apply to its answer.
    const bool goesOn =
        waits[0].revents == 0 && (waits[1].revents == 0 || TakeControl(control, streams));
    if (!goesOn) {
      return;
    }
    if (sim::PassOn(beltpack, terminal, stopwatch.Ms())) {
      PrintDeviceName(terminal, streams);
    }
  }
}

std::string FaultNames() {
  std::string names;
  for (const sim::LineFaultName& faultName : sim::kLineFaultNames) {
    names += names.empty() ? "" : ", ";
    names += faultName.name;
  }
  return names;
}

}  // namespace

void SimulateCommand::AddTo(CLI::App& program) {
  CLI::App* command = program.add_subcommand(
      "simulate",
      "Simulate a beltpack on a pseudo-terminal. Prints the terminal's device name and answers\n"
      "until it is ended by a signal.");
  command
      ->add_option("--site", sitePath_,
                   "The beltpack's site: RPN, FPS, FPN, cable length and "
                   "optionally the place (x y, in metres) of an antenna on each line "
                   "(default: a site of 12 antennas)")
      ->type_name("FILE");
  command->add_option("--link", linkPath_, "Make this symbolic link to the terminal")
      ->type_name("PATH");
  command->add_option("--seed", seed_, "Seed of the beltpack's walk and readings")
      ->type_name("N")
      ->capture_default_str()
      ->check([](const std::string& text) {
        return CheckWholeNumber(text, 0, std::numeric_limits<std::uint64_t>::max());
      });
  command
      ->add_option("--fault", fault_,
                   "What goes wrong on the line: " + FaultNames() +
                       "; optionally followed by :once, :always or :N (every Nth answer)")
      ->type_name("NAME[:RULE]")
      ->check([](const std::string& text) {
        return sim::ParseFaultRule(text) ? std::string() : "\"" + text + "\" is not a fault";
      });
  command
      ->add_option("--log-commands", commandLogPath_,
                   "Write each received command to this file, with the milliseconds since the "
                   "start")
      ->type_name("PATH");
  command->add_flag("--control", takesControl_,
                    "Take \"fault NAME[:RULE]\", \"unplug\" and \"plug\" as lines from standard "
                    "input, and end when it ends");
}

ExitCode SimulateCommand::Run(const Streams& streams, const CommandMachine& /*machine*/) {
  try {
    qt::QtFileSystem fileSystem;
    sim::BeltpackManner manner;
    manner.seed = seed_;
    sim::Beltpack beltpack(
        sitePath_.empty() ? sim::DemoSite() : sim::ReadSite(fileSystem, sitePath_), manner);
    beltpack.SetFault(sim::ParseFaultRule(fault_).value());
    std::unique_ptr<platform::OutputFile> commandLog;
    if (!commandLogPath_.empty()) {
      commandLog = fileSystem.OpenForOutput(commandLogPath_);
      beltpack.SetCommandNotification([&](std::string_view text, std::int64_t nowMs) {
        std::string line = std::to_string(nowMs);
        line += ' ';
        line += text;
        line += '\n';
        commandLog->Write(line);
      });
    }
    const posix::CaughtSignals caughtSignals;
    const Stopwatch stopwatch;
    sim::PseudoTerminal terminal(linkPath_);
    terminal.Open();
    Serve(beltpack, terminal, takesControl_, stopwatch, caughtSignals, streams);
  } catch (const base::Fault& fault) {
    streams.Complain(fault.what());
    return ExitCode::Failed;
  }
  return ExitCode::Done;
}

}  // namespace kelvara::cli
