#include "app/MainStatusBar.h"

#include <QEvent>
#include <QFontInfo>
#include <QFontMetrics>
#include <algorithm>
#include <cstddef>
#include <numeric>

#include "platform/qt/Text.h"

namespace kelvara::app {
namespace {

/// The widest text that a panel shows, and what it means.
struct PanelForm {
  const char* widest;
  const char* meaning;
};

constexpr std::array<PanelForm, 6> kPanelForms{{{"Attempting To Connect To Beltpack...", "Link"},
                                                {"Logging Paused...", "Capture"},
                                                {"Reports: 99999", "Reports"},
                                                {"AAs: 51", "Active Antennas"},
                                                {"No Comms", "Port"},
                                                {"115200", "Baud rate"}}};
/// The margin on either side of a panel, in pixels.
constexpr int kPanelMargin = 4;
/// A label needs slightly more than the width of its text.
constexpr int kLabelPadding = 2;
constexpr int kSmallestFontPixels = 7;
/// The first panel of the second line, counted from 0: the counts and the port.
constexpr std::size_t kSecondLineFrom = 2;

}  // namespace

MainStatusBar::MainStatusBar(QWidget* parent) : QStatusBar(parent), area_(new QWidget(this)) {
  setObjectName(QStringLiteral("StatusBar1"));
  for (std::size_t i = 0; i < panels_.size(); ++i) {
    auto* const panel = new QLabel(area_);
    panel->setObjectName(QStringLiteral("Panel%1").arg(i + 1));
    panel->setTextFormat(Qt::PlainText);
    // A screen reader already reads the text itself as the name.
    panel->setAccessibleDescription(QString::fromLatin1(kPanelForms.at(i).meaning));
    panels_.at(i) = panel;
  }
  area_->installEventFilter(this);
  addWidget(area_, 1);
}

void MainStatusBar::SetPanel(StatusPanel panel, std::string_view text) {
  QLabel& label = *panels_.at(static_cast<std::size_t>(panel) - 1);
  const QString shown = qt::ToQString(text);
  if (label.text() != shown) {
    label.setText(shown);
    PlacePanels();
  }
}

bool MainStatusBar::eventFilter(QObject* watched, QEvent* event) {
  if (watched == area_ && event->type() == QEvent::Resize) {
    PlacePanels();
  }
  return QStatusBar::eventFilter(watched, event);
}

void MainStatusBar::changeEvent(QEvent* event) {
  QStatusBar::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    PlacePanels();
  }
}

std::array<int, 6> MainStatusBar::PanelWidths(const QFont& font) const {
  const QFontMetrics metrics(font);
  std::array<int, 6> widths{};
  for (std::size_t i = 0; i < panels_.size(); ++i) {
    const QString widest = QString::fromLatin1(kPanelForms.at(i).widest);
    widths.at(i) = kLabelPadding + 2 * kPanelMargin +
                   std::max(metrics.horizontalAdvance(widest),
                            metrics.horizontalAdvance(panels_.at(i)->text()));
  }
  return widths;
}

void MainStatusBar::PlacePanels() {
  QFont fitted = font();
  std::array<int, 6> widths = PanelWidths(fitted);
  const auto needed = [&widths](std::size_t from, std::size_t to) {
    return std::accumulate(widths.begin() + static_cast<std::ptrdiff_t>(from),
                           widths.begin() + static_cast<std::ptrdiff_t>(to), 0);
  };
  const bool oneLine = needed(0, widths.size()) <= area_->width();
  const auto isTooWide = [&] {
    return !oneLine && std::max(needed(0, kSecondLineFrom),
                                needed(kSecondLineFrom, widths.size())) > area_->width();
  };
  for (int pixels = QFontInfo(fitted).pixelSize() - 1; isTooWide() && pixels >= kSmallestFontPixels;
       --pixels) {
    fitted.setPixelSize(pixels);
    widths = PanelWidths(fitted);
  }
  const int lineHeight = QFontMetrics(font()).height();
  const auto placeLine = [&](std::size_t from, std::size_t to, int top) {
    // The line's first panel takes the space that the others leave.
    int right = area_->width();
    for (std::size_t i = to; i-- > from;) {
      const int left = i == from ? 0 : right - widths.at(i);
      panels_.at(i)->setFont(fitted);
      panels_.at(i)->setGeometry(left + kPanelMargin, top, right - left - 2 * kPanelMargin,
                                 lineHeight);
      right = left;
    }
  };
  if (oneLine) {
    placeLine(0, panels_.size(), 0);
  } else {
    placeLine(0, kSecondLineFrom, 0);
    placeLine(kSecondLineFrom, panels_.size(), lineHeight);
  }
  area_->setFixedHeight(oneLine ? lineHeight : 2 * lineHeight);
}

}  // namespace kelvara::app
