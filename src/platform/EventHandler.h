#pragma once

#include <exception>
#include <utility>

#include "platform/Beeper.h"

namespace kelvara::platform {

/// Runs the work of an event handler. No exception passes: if the work throws, it ends there and
/// the machine beeps once.
template <typename Work>
void HandleEvent(platform::Beeper& beeper, Work&& work) {
  try {
    std::forward<Work>(work)();
  } catch (const std::exception&) {
    beeper.Beep();
  }
}

}  // namespace kelvara::platform
