#include "system/desktop/soak/ProcessWatch.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace kelvara::test {

namespace fs = std::filesystem;

namespace {

std::string SystemFolder(pid_t process) { return "/proc/" + std::to_string(process); }

}  // namespace

int ResidentKilobytes(pid_t process) {
  const std::string name = "VmRSS:";
  std::ifstream status(SystemFolder(process) + "/status");
  for (std::string word; status >> word;) {
    if (word == name) {
      int kilobytes = 0;
      status >> kilobytes;
      return kilobytes;
    }
  }
  throw std::runtime_error("the program has ended");
}

ProcessWatch::ProcessWatch(pid_t process, std::string folder)
    : process_(process), folder_(std::move(folder)) {}

void ProcessWatch::Look() {
  constexpr std::chrono::seconds kInterval{5};
  if (Clock::now() < next_) {
    return;
  }
  next_ = Clock::now() + kInterval;
  ProcessSample sample{ResidentKilobytes(process_), 0, 0};
  for (const fs::directory_entry& handle : fs::directory_iterator(SystemFolder(process_) + "/fd")) {
    // A handle closed in the meantime cannot be read.
    std::error_code ignored;
    ++(IsFile(fs::read_symlink(handle, ignored).string()) ? sample.files : sample.handles);
  }
  samples_.push_back(sample);
}

ProcessWatch::Samples ProcessWatch::Quarter(std::size_t number) const {
  const std::size_t begin = samples_.size() * number / 4;
  const std::size_t end = std::max(samples_.size() * (number + 1) / 4, begin + 1);
  return {samples_.begin() + static_cast<std::ptrdiff_t>(begin),
          samples_.begin() + static_cast<std::ptrdiff_t>(end)};
}

bool ProcessWatch::IsFile(const std::string& target) const {
  return target.starts_with("/dev/pts/") || target.starts_with(folder_ + "/") ||
         target.find("/LCK..") != std::string::npos;
}

}  // namespace kelvara::test
