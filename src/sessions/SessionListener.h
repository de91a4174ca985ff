#pragma once

#include "link/LineListener.h"

namespace kelvara::sessions {

/// Sees everything that the results of a live session depend on, in order.
class SessionListener : public link::LineListener {
 public:
  /// The results have been cleared. `keeps` is whether they can be restored, which those of at
  /// least one report can.
  virtual void Cleared(bool keeps) = 0;

  /// The results that were cleared have been restored.
  virtual void Restored() = 0;

  /// The session ends in order.
  virtual void Ended() = 0;
};

}  // namespace kelvara::sessions
