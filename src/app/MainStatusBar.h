#pragma once

#include <QFont>
#include <QLabel>
#include <QStatusBar>
#include <array>
#include <string_view>

namespace kelvara::app {

/// The panels of `StatusBar1`, numbered as the system numbers them.
enum class StatusPanel { Link = 1, Capture, Reports, Aas, Port, Rate };

/// The status bar `StatusBar1` with its six panels: link, capture, reports, antennas, port, rate.
/// Every text is shown in full: a window too narrow for one line of panels gets two lines.
class MainStatusBar : public QStatusBar {
 public:
  explicit MainStatusBar(QWidget* parent = nullptr);

  void SetPanel(StatusPanel panel, std::string_view text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  /// The width that each panel needs for its widest text in a font, in pixels.
  std::array<int, 6> PanelWidths(const QFont& font) const;

  /// Puts the panels into one line or two, in the largest font at which they all fit.
  void PlacePanels();

  QWidget* area_;
  std::array<QLabel*, 6> panels_{};
};

}  // namespace kelvara::app
