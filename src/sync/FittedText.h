#pragma once

#include <QPainter>
#include <QString>

namespace kelvara::sync {

/// Draws a line of text in the middle of a cell. A text that is too wide is narrowed until it fits.
void DrawFittedText(QPainter& painter, const QRect& cell, const QString& text);

}  // namespace kelvara::sync
