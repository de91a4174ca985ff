#pragma once

#include <sys/types.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// Runs programs as a user's shell does. POSIX only.
namespace kelvara::test {

/// How to start a program.
struct ProcessRequest {
  std::vector<std::string> arguments;              ///< The first is the program's path.
  std::map<std::string, std::string> environment;  ///< Complete; nothing is inherited.
  std::string folder;                              ///< Where it runs.
  std::string input;                               ///< Standard input, unless a path is given.
  std::optional<std::string> inputPath;
  bool inputStaysOpen = false;            ///< So that `Send` can add more input.
  std::optional<std::string> outputPath;  ///< A file for standard output, which is then not kept.
  std::optional<std::uint64_t> fileSizeLimit;  ///< Writes beyond this many bytes fail.
  bool withoutRights = false;                  ///< Runs as "nobody"; needs the superuser.
  bool errorsToTerminal = false;               ///< Standard error is a terminal.
};

/// How a program ended.
struct ProcessResult {
  int exitCode = -1;  ///< -1 if a signal ended it.
  int signal = 0;     ///< The signal that ended it, or 0.
  bool timedOut = false;
  std::string output;
  std::string errors;
  std::int64_t peakKilobytes = 0;  ///< Peak resident memory.
};

/// A program that runs in parallel with the test. The destructor kills it if it is still running. A
/// program that cannot be started ends with exit code 127.
class Process {
 public:
  using Duration = std::chrono::milliseconds;

  /// Longer than any tested program needs, shorter than the time limit of a test.
  static constexpr Duration kPatience{60000};

  explicit Process(const ProcessRequest& request);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  pid_t Id() const { return id_; }

  /// The next line of standard output without its line feed; empty if the output or the time ends
  /// first.
  std::optional<std::string> ReadLine(Duration limit = kPatience);

  /// Waits until standard error contains a text. False if standard error or the time ends first.
  bool WaitForErrors(const std::string& text, Duration limit = kPatience);

  /// Adds to the standard input of a program whose input stays open.
  void Send(const std::string& text);

  /// Sends a signal to the program if it is still running.
  void Signal(int number) const;

  /// The user and system processor time that the running program has used.
  Duration ProcessorTime() const;

  /// Closes the input and waits for the program to end; kills it if it still runs after `limit`.
  /// The result holds all output since the start.
  ProcessResult Finish(Duration limit = kPatience);

 private:
  using Deadline = std::chrono::steady_clock::time_point;

  [[noreturn]] static void BecomeProgram(const ProcessRequest& request,
                                         const std::array<int, 3>& standard);
  bool Pump(Deadline deadline);
  void FeedInput();
  static void Collect(int& end, std::string& text);
  void Reap(Deadline deadline);

  pid_t id_ = -1;
  int inputEnd_ = -1;
  int outputEnd_ = -1;
  int errorsEnd_ = -1;
  std::string input_;
  std::size_t inputTaken_ = 0;
  bool inputStaysOpen_;
  std::size_t linesRead_ = 0;
  ProcessResult result_;
};

/// Starts a program and waits for its end.
ProcessResult RunProcess(const ProcessRequest& request,
                         Process::Duration limit = Process::kPatience);

}  // namespace kelvara::test
