#pragma once

#include <sys/types.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// Programs run as a user's shell runs them. POSIX only.
namespace kelvara::test {

/// How a program is started.
struct ProcessRequest {
  std::vector<std::string> arguments;              ///< The program's own path comes first.
  std::map<std::string, std::string> environment;  ///< All of it; nothing is inherited.
  std::string folder;                              ///< Where it runs.
  std::string input;                               ///< Its standard input, unless a path is given.
  std::optional<std::string> inputPath;
  bool inputStaysOpen = false;                 ///< For more of it by `Send`.
  std::optional<std::string> outputPath;       ///< Standard output goes there and is not kept.
  std::optional<std::uint64_t> fileSizeLimit;  ///< Writes beyond so many bytes fail.
  bool withoutRights = false;     ///< Runs as "nobody"; only the superuser can ask for that.
  bool errorsToTerminal = false;  ///< Standard error is a terminal.
};

/// How a program ended.
struct ProcessResult {
  int exitCode = -1;  ///< -1 when a signal ended it.
  int signal = 0;     ///< The signal that ended it, or 0.
  bool timedOut = false;
  std::string output;
  std::string errors;
  std::int64_t peakKilobytes = 0;  ///< The most memory that it held at a time.
};

/// A program that runs beside the test. One that still runs when this is destroyed is killed. A
/// program that cannot be started ends with exit code 127.
class Process {
 public:
  using Duration = std::chrono::milliseconds;

  /// Longer than any program of the tests needs, shorter than the patience of who waits for them.
  static constexpr Duration kPatience{60000};

  explicit Process(const ProcessRequest& request);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  pid_t Id() const { return id_; }

  /// The next line of standard output without its line feed; nothing when the output or the time
  /// ends before.
  std::optional<std::string> ReadLine(Duration limit = kPatience);

  /// Waits until standard error holds a text; false when it or the time ends before.
  bool WaitForErrors(const std::string& text, Duration limit = kPatience);

  /// Adds to the standard input of a program whose input stays open.
  void Send(const std::string& text);

  /// Sends a signal to a program that still runs.
  void Signal(int number) const;

  /// The processor time that a program which still runs has used, its own and the system's for it.
  Duration ProcessorTime() const;

  /// Ends the input and waits for the end of the program; one that is still running after `limit`
  /// is killed. The output is all that it wrote since it started.
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
