#pragma once

#include <exception>
#include <utility>

#include "platform/Beeper.h"

namespace kelvara::platform {

/// Does what an event asks for. Nothing that goes wrong passes the event handler: where its feature
/// says nothing else, the machine beeps once and the work stops where it is.
template <typename Work>
void HandleEvent(platform::Beeper& beeper, Work&& work) {
  try {
    std::forward<Work>(work)();
  } catch (const std::exception&) {
    beeper.Beep();
  }
}

}  // namespace kelvara::platform
