#include "link/PortMarkDelegate.h"

#include <QPainter>

namespace kelvara::link {
namespace {

/// The widest name of a port, with the space after it.
constexpr const char* kNameColumn = "COM12   ";

}  // namespace

void PortMarkDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  const QString mark = index.data(kPortMarkRole).toString();
  if (mark.isEmpty()) {
    return;
  }
  const int name = option.fontMetrics.horizontalAdvance(QString::fromLatin1(kNameColumn));
  const QRect place = option.rect.adjusted(name, 0, 0, 0);
  const bool isSelected = (option.state & QStyle::State_Selected) != 0;
  painter->save();
  painter->setFont(option.font);
  painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
  painter->drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
                    option.fontMetrics.elidedText(QStringLiteral("\u25CF ") + mark, Qt::ElideRight,
                                                  place.width()));
  painter->restore();
}

}  // namespace kelvara::link
