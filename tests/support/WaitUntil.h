#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace kelvara::test {

/// Waits until `holds` returns true. False if the time ends first.
inline bool WaitUntil(const std::function<bool()>& holds, std::chrono::milliseconds limit) {
  constexpr std::chrono::milliseconds kPause{20};
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (!holds()) {
    if (std::chrono::steady_clock::now() >= deadline) {
      return false;
    }
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

}  // namespace kelvara::test
