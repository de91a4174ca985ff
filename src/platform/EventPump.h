#pragma once

namespace kelvara::platform {

/// Lets other pending events run in the middle of a long loop.
class EventPump {
 public:
  virtual ~EventPump() = default;

  /// Serves the pending events. False when the program is ending: the caller then leaves its loop
  /// at once and touches nothing more.
  virtual bool ProcessEvents() = 0;

  /// From now on the program is ending.
  virtual void End() = 0;
};

}  // namespace kelvara::platform
