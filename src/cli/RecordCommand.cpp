#include "cli/RecordCommand.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <memory>
#include <system_error>

#include "app/LiveSession.h"
#include "base/Fault.h"
#include "cli/ConsoleMachine.h"
#include "cli/FileClash.h"
#include "cli/NumberChecks.h"
#include "cli/ResultOutputs.h"
#include "cli/StatusLine.h"
#include "link/ComPort.h"
#include "platform/MemorySettingsStore.h"
#include "platform/qt/PathText.h"
#include "platform/qt/QtTimer.h"
#include "ports/PortTable.h"
#include "sim/DemoSerialPort.h"
#include "sim/SiteFile.h"

namespace kelvara::cli {
namespace {

constexpr double kMaxSpeed = 1000.0;
constexpr int kMaxBaud = 4000000;
constexpr int kMaxReports = 1000000000;
/// Ten years.
constexpr double kMaxSeconds = 315360000.0;
constexpr int kCheckMilliseconds = 50;

/// A trace's file, opened to check that it can be written to, with its content unchanged.
class NewTrace {
 public:
  /// Throws a file fault if the path cannot be written to. Does nothing without a path.
  NewTrace(platform::FileSystem& fileSystem, const std::optional<std::string>& path)
      : madePath_(path && !Exists(*path) ? path : std::nullopt),
        file_(path ? fileSystem.OpenForAppend(*path) : nullptr) {}

  /// Removes the file if it did not exist before. It is closed, since not every system removes an
  /// open file.
  void TakeBack() {
    file_.reset();
    std::error_code ignored;
    if (madePath_) {
      std::filesystem::remove(qt::MachinePath(*madePath_), ignored);
    }
  }

 private:
  static bool Exists(const std::string& path) {
    std::error_code unknown;
    return std::filesystem::exists(qt::MachinePath(path), unknown);
  }

  std::optional<std::string> madePath_;
  std::unique_ptr<platform::OutputFile> file_;
};

auto WholeNumber(std::uint64_t most) {
  return [most](const std::string& text) { return CheckWholeNumber(text, 1, most); };
}

auto PositiveNumber(double most) {
  return [most](const std::string& text) { return CheckPositiveNumber(text, most); };
}

/// The real milliseconds, at least 1, in which a clock `speed` times as fast advances by
/// `milliseconds`.
int Interval(int milliseconds, double speed) {
  constexpr double kLongest = std::numeric_limits<int>::max();
  return std::max(1, static_cast<int>(std::lround(std::min(milliseconds / speed, kLongest))));
}

}  // namespace

void RecordCommand::AddTo(CLI::App& program) {
  CLI::App* command = program.add_subcommand(
      "record",
      "Poll a beltpack over a serial port and write the results at the end: after a number of\n"
      "reports or seconds, or at Ctrl+C.");
  // A plain heading: the parser does not terminate on an empty argument before an option group.
  constexpr const char* kSource = "Source (one of them)";
  command->add_option("--port", device_, "This device")->type_name("DEVICE")->group(kSource);
  command->add_option("--com", comPort_, "The device that this port number stands for")
      ->check(WholeNumber(platform::kLastComPort))
      ->type_name("N")
      ->group(kSource);
  command->add_flag("--demo", demo_, "The built-in beltpack")->group(kSource);
  command
      ->add_option("--demo-site", demoSitePath_,
                   "The built-in beltpack in the site of this file, as for simulate")
      ->type_name("FILE")
      ->group(kSource);
  command->add_option("--baud", baud_, "Baud rate")
      ->check(WholeNumber(kMaxBaud))
      ->type_name("RATE")
      ->capture_default_str();
  command->add_option("--reports", reports_, "End after N reports")
      ->check(WholeNumber(kMaxReports))
      ->type_name("N");
  command->add_option("--for", seconds_, "End after this many seconds")
      ->check(PositiveNumber(kMaxSeconds))
      ->type_name("SECONDS");
  command->add_option("--raw", rawPath_, "Write a trace of the line to this file, for replay")
      ->type_name("PATH");
  command
      ->add_option("--speed", speed_, "With --demo or --demo-site: the clock runs X times as fast")
      ->check(PositiveNumber(kMaxSpeed))
      ->type_name("X");
  options_.AddTo(*command);
}

ExitCode RecordCommand::Run(const Streams& streams, const CommandMachine& machine) {
  const bool isDemo = demo_ || demoSitePath_;
  if (int{device_.has_value()} + int{comPort_.has_value()} + int{isDemo} != 1) {
    streams.Complain("exactly one of --port, --com and --demo (or --demo-site) is required");
    return ExitCode::WrongCommandLine;
  }
  if (speed_ && !isDemo) {
    streams.Complain("--speed requires --demo");
    return ExitCode::WrongCommandLine;
  }
  std::vector<std::string> outputs = options_.OutputPaths();
  if (rawPath_) {
    outputs.push_back(*rawPath_);
  }
  const std::string clash =
      FileClash(demoSitePath_ ? std::vector{*demoSitePath_} : std::vector<std::string>{}, outputs);
  if (!clash.empty()) {
    streams.Complain(clash);
    return ExitCode::WrongCommandLine;
  }
  int argumentCount = 1;
  std::array<char, 12> name{"kelvara-cli"};
  std::array<char*, 2> arguments{name.data(), nullptr};
  const QCoreApplication application(argumentCount, arguments.data());
  try {
    return isDemo ? RunOnDemo(streams, machine) : RunOnDevice(streams, machine);
  } catch (const base::Fault& fault) {
    streams.Complain(fault.what());
    return ExitCode::Failed;
  }
}

ExitCode RecordCommand::RunOnDemo(const Streams& streams, const CommandMachine& machine) {
  sim::Beltpack beltpack(demoSitePath_ ? sim::ReadSite(machine.fileSystem, *demoSitePath_)
                                       : sim::DemoSite());
  ConsoleMachine console(streams, machine, Speed());
  qt::QtTimer delivery(Interval(sim::kDeliveryMilliseconds, Speed()));
  sim::DemoSerialPort port(beltpack, console.Machine().clock, delivery);
  return RunOn(machine, console, port);
}

ExitCode RecordCommand::RunOnDevice(const Streams& streams, const CommandMachine& machine) {
  ConsoleMachine console(streams, machine);
  ports::PortTable table(machine.portSettings);
  if (device_) {
    table.Assign({1, *device_});
  }
  const std::unique_ptr<platform::SerialPort> port = machine.makePort(table);
  port->SetPortNumber(static_cast<std::int16_t>(comPort_.value_or(1)));
  return RunOn(machine, console, *port);
}

ExitCode RecordCommand::RunOn(const CommandMachine& machine, ConsoleMachine& console,
                              platform::SerialPort& port) {
  qt::QtTimer rfpsTimer(Interval(link::kRfpsTimerMilliseconds, Speed()));
  qt::QtTimer timerComPort(Interval(link::kTimerComPortMilliseconds, Speed()));
  qt::QtTimer silenceTimer(Interval(link::kSilenceMilliseconds, Speed()));
  // The stored options are the desktop program's; here the command line says how to display.
  platform::MemorySettingsStore settingsStore;
  sync::GridCells grid;
  app::LiveSession live(console.Machine(), grid, nullptr,
                        {.MSComm1 = port,
                         .RfpsTimer = rfpsTimer,
                         .TimerComPort = timerComPort,
                         .silenceTimer = silenceTimer},
                        settingsStore);

  port.SetSettings(platform::PortSettings(baud_));
  port.SetOpen(true);
  live.StartLink();
  app::Session& session = live.Results();
  session.Options() = {options_.Display()};
  // The trace replaces an existing file, so until the log has started it is only opened as a check.
  NewTrace newTrace(console.Machine().fileSystem, rawPath_);
  if (StartLog(session, options_, console.Out()) != ExitCode::Done) {
    newTrace.TakeBack();
    return ExitCode::Failed;
  }
  if (rawPath_) {
    live.StartTrace(*rawPath_, false);
  }

  StatusLine statusLine(live, console.Out());
  const std::int64_t start = console.Machine().clock.TickCount();
  const std::shared_ptr<void> stop = machine.atStop([] { QCoreApplication::quit(); });
  qt::QtTimer check(Interval(kCheckMilliseconds, Speed()));
  const auto endIfDone = [&] {
    statusLine.Show();
    if (HasEnded(session, console.Machine().clock.TickCount() - start)) {
      QCoreApplication::quit();
    }
  };
  check.SetTick(endIfDone);
  live.SetReportTaken(endIfDone);
  check.SwitchOn();
  QCoreApplication::exec();
  check.SwitchOff();
  statusLine.Remove();

  live.StopPolling();
  ExitCode result = WriteResults(session, grid, console, options_);
  live.Shutdown();
  if (const std::string failure = live.TraceFailure(); !failure.empty()) {
    console.Out().Complain(failure);
    result = ExitCode::Failed;
  }
  return result;
}

bool RecordCommand::HasEnded(const app::Session& session, std::int64_t milliseconds) const {
  return (reports_ && session.Model().ReportCount() >= *reports_) ||
         (seconds_ && static_cast<double>(milliseconds) >= *seconds_ * 1000.0);
}

}  // namespace kelvara::cli
