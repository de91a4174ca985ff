#pragma once

namespace kelvara::platform {

/// The machine's default alert sound.
class Beeper {
 public:
  virtual ~Beeper() = default;

  virtual void Beep() = 0;
};

}  // namespace kelvara::platform
