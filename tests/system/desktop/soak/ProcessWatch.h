#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

namespace kelvara::test {

/// What a process held at one moment.
struct ProcessSample {
  int kilobytes;  ///< Its memory.
  int files;      ///< The port, its lock and what is written to, open at some moments only.
  int handles;    ///< All other handles.
};

/// What a process held over time.
class ProcessWatch {
 public:
  using Samples = std::vector<ProcessSample>;

  /// Counts the files of `folder`, and the serial ports with their locks, apart.
  ProcessWatch(pid_t process, std::string folder);

  /// Looks at the process every five seconds; throws when it has ended.
  void Look();

  const Samples& All() const { return samples_; }

  /// A quarter of the samples, 0 being the first. There must be a sample.
  Samples Quarter(std::size_t number) const;

 private:
  using Clock = std::chrono::steady_clock;

  int Kilobytes() const;
  bool IsFile(const std::string& target) const;

  std::string process_;
  std::string folder_;
  Samples samples_;
  Clock::time_point next_ = Clock::now();
};

}  // namespace kelvara::test
