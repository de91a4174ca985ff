#pragma once

#include <string_view>

namespace kelvara::platform {

/// The panels of `StatusBar1`, numbered as the system numbers them.
enum class StatusPanel {
  Link = 1,
  Capture = 2,
  Reports = 3,
  Aas = 4,
  Port = 5,
  Rate = 6,
};

/// The status bar of the main window.
class StatusBar {
 public:
  virtual ~StatusBar() = default;

  virtual void SetPanel(StatusPanel panel, std::string_view text) = 0;
};

}  // namespace kelvara::platform
