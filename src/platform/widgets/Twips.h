#pragma once

#include <QWidget>
#include <QtMath>

namespace kelvara::widgets {

/// A twip is 1/1440 inch: 15 to a pixel at 96 dots per inch.
inline constexpr int kTwipsPerInch = 1440;

/// A length in twips as whole pixels of the widget's screen.
inline int TwipsToPixels(const QWidget& widget, int twips) {
  return qRound(static_cast<double>(twips) * widget.logicalDpiX() / kTwipsPerInch);
}

/// A length in pixels of the widget's screen as twips.
inline int PixelsToTwips(const QWidget& widget, int pixels) {
  return pixels * kTwipsPerInch / widget.logicalDpiX();
}

}  // namespace kelvara::widgets
