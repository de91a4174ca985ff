#pragma once

#include <QFont>
#include <QLabel>
#include <QStatusBar>
#include <array>

#include "platform/StatusBar.h"

namespace kelvara::app {

/// The status bar `StatusBar1` with its six panels: link, capture, reports, antennas, port, rate.
/// Every text is shown whole: in a window too narrow for one line of panels they stand in two.
class MainStatusBar : public QStatusBar, public platform::StatusBar {
 public:
  explicit MainStatusBar(QWidget* parent = nullptr);

  void SetPanel(platform::StatusPanel panel, std::string_view text) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  /// The room that each panel needs for its widest text in a font, in pixels.
  std::array<int, 6> PanelWidths(const QFont& font) const;

  /// Puts the panels into one line or two, in the largest font at which all of them have room.
  void PlacePanels();

  QWidget* area_;
  std::array<QLabel*, 6> panels_{};
};

}  // namespace kelvara::app
