#pragma once

#include <fstream>
#include <string>

namespace kelvara::bench {

/// The resident memory of the process in kilobytes.
inline long ResidentKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    if (word == "VmRSS:") {
      long kilobytes = 0;
      status >> kilobytes;
      return kilobytes;
    }
  }
  return 0;
}

}  // namespace kelvara::bench
