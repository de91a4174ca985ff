#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

namespace kelvara::test {

/// The resident memory of a process. Throws if it has ended.
int ResidentKilobytes(pid_t process);

/// The resources of a process at one moment.
struct ProcessSample {
  int kilobytes;  ///< Resident memory.
  int files;      ///< The port, its lock and output files; not all are open all the time.
  int handles;    ///< All other handles.
};

/// Samples the resources of a process over time.
class ProcessWatch {
 public:
  using Samples = std::vector<ProcessSample>;

  /// Counts files in `folder`, serial ports and their locks apart from other handles.
  ProcessWatch(pid_t process, std::string folder);

  /// Takes a sample if the last is five seconds old. Throws if the process has ended.
  void Look();

  const Samples& All() const { return samples_; }

  /// A quarter of the samples, 0 being the first. There must be a sample.
  Samples Quarter(std::size_t number) const;

 private:
  using Clock = std::chrono::steady_clock;

  bool IsFile(const std::string& target) const;

  pid_t process_;
  std::string folder_;
  Samples samples_;
  Clock::time_point next_ = Clock::now();
};

}  // namespace kelvara::test
