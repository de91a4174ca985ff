#pragma once

namespace kelvara::platform {

/// Lets pending events run during a long loop.
class EventPump {
 public:
  virtual ~EventPump() = default;

  /// Processes the pending events. Returns false when the program is ending; the caller must then
  /// leave its loop at once and touch nothing more.
  virtual bool ProcessEvents() = 0;

  /// Marks the program as ending.
  virtual void End() = 0;
};

}  // namespace kelvara::platform
