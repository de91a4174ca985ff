#pragma once

#include <QTimer>
#include <functional>

namespace kelvara::cli {

/// Ctrl+C, a hang-up of the terminal and the system's request to end, told as an ordinary event.
/// One lives at a time.
class StopSignal {
 public:
  explicit StopSignal(std::function<void()> stop);
  ~StopSignal();
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;

 private:
  QTimer look_;
};

}  // namespace kelvara::cli
