#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "system/SimulatedBeltpack.h"

namespace kelvara::test {

inline constexpr int kPollMilliseconds = 3000;

/// A machine busy with other tests may be late for single commands. A wrong interval adds up.
inline constexpr int kLateMilliseconds = 500;

/// Expects the commands to follow the polling cycle from its start: "rfps" four times, "cho",
/// "rfps" three times, "bho".
inline void ExpectCycleOrder(const std::vector<ReceivedCommand>& commands) {
  constexpr std::size_t kCycle = 9;
  constexpr std::size_t kChoStep = 4;
  constexpr std::size_t kBhoStep = 8;
  for (std::size_t index = 0; index < commands.size(); ++index) {
    const std::size_t step = index % kCycle;
    EXPECT_EQ(commands[index].text, step == kChoStep   ? "cho"
                                    : step == kBhoStep ? "bho"
                                                       : "rfps")
        << "command " << index;
  }
}

/// Expects one command every 3000 milliseconds.
inline void ExpectPollingBeat(const std::vector<ReceivedCommand>& commands) {
  for (std::size_t index = 1; index < commands.size(); ++index) {
    EXPECT_NEAR(commands[index].milliseconds - commands[index - 1].milliseconds, kPollMilliseconds,
                kLateMilliseconds)
        << "command " << index;
    EXPECT_NEAR(commands[index].milliseconds - commands[0].milliseconds,
                kPollMilliseconds * static_cast<int>(index), kLateMilliseconds)
        << "command " << index;
  }
}

}  // namespace kelvara::test
