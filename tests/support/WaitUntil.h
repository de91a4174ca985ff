#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace kelvara::test {

/// Looks again and again until something holds; false when the time ends before.
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
