#include "app/WrappedText.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>

#include "platform/widgets/DialogControls.h"

namespace kelvara::app {
namespace {

constexpr int kMostLines = 6;
constexpr int kFewestCharacters = 12;

}  // namespace

WrappedText::WrappedText(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  // Otherwise the label would have the height of one line.
  setWordWrap(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize WrappedText::sizeHint() const {
  return {fontMetrics().horizontalAdvance(text()), widgets::HeightOf(*this, 1)};
}

QSize WrappedText::minimumSizeHint() const {
  return {widgets::WidthOf(*this, kFewestCharacters), widgets::HeightOf(*this, 1)};
}

int WrappedText::heightForWidth(int width) const {
  return widgets::HeightOf(*this, static_cast<int>(Lines(width).size()));
}

void WrappedText::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  const QStringList lines = Lines(width());
  const int spacing = widgets::HeightOf(*this, 1);
  int top = (height() - spacing * static_cast<int>(lines.size())) / 2;
  for (const QString& line : lines) {
    painter.drawText(QRect(0, top, width(), spacing), Qt::AlignLeft | Qt::AlignVCenter, line);
    top += spacing;
  }
}

QStringList WrappedText::Lines(int width) const {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  QTextLayout layout(text(), font());
  layout.setTextOption(option);
  layout.beginLayout();
  QStringList lines;
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    if (lines.size() == kMostLines - 1) {
      lines += fontMetrics().elidedText(text().mid(line.textStart()), Qt::ElideRight, width);
      break;
    }
    lines += text().mid(line.textStart(), line.textLength()).trimmed();
  }
  layout.endLayout();
  return lines.isEmpty() ? QStringList(QString()) : lines;
}

}  // namespace kelvara::app
