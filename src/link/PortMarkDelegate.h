#pragma once

#include <QStyledItemDelegate>

namespace kelvara::link {

/// The item role of a port's mark: the name of its adapter, or an empty text.
inline constexpr int kPortMarkRole = Qt::UserRole;

/// Paints a port of the port dialog's list, with its mark after its name. A mark that does not fit
/// is shortened.
class PortMarkDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
};

}  // namespace kelvara::link
