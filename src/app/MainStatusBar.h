#pragma once

#include <QLabel>
#include <QStatusBar>
#include <array>

#include "platform/StatusBar.h"

namespace kelvara::app {

/// The status bar `StatusBar1` with its six panels: link, capture, reports, antennas, port, rate.
class MainStatusBar : public QStatusBar, public platform::StatusBar {
 public:
  explicit MainStatusBar(QWidget* parent = nullptr);

  void SetPanel(platform::StatusPanel panel, std::string_view text) override;

 private:
  std::array<QLabel*, 6> panels_{};
};

}  // namespace kelvara::app
