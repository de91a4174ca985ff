#include "sync/SyncGridModel.h"

#include <QBrush>
#include <QColor>
#include <utility>

#include "platform/qt/Text.h"

namespace kelvara::sync {

int SyncGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Rows();
}

int SyncGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Columns();
}

QVariant SyncGridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const Cell& cell = At(index.row(), index.column());
  switch (role) {
    case Qt::DisplayRole:
      return qt::ToQString(cell.text);
    case Qt::TextAlignmentRole:
      return cell.centred ? QVariant(Qt::AlignCenter) : QVariant();
    case Qt::BackgroundRole:
      return cell.background
                 ? QVariant(QBrush(QColor(cell.background->Red(), cell.background->Green(),
                                          cell.background->Blue())))
                 : QVariant();
    case Qt::ForegroundRole:
      // The palette's colours are light, so text on them is dark in every theme.
      return cell.background ? QVariant(QBrush(Qt::black)) : QVariant();
    default:
      return {};
  }
}

QVariant SyncGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) {
    return {};
  }
  return orientation == Qt::Horizontal ? CellText(0, section) : CellText(section, 0);
}

QString SyncGridModel::CellText(int row, int column) const {
  return qt::ToQString(Text(row, column));
}

void SyncGridModel::SetSize(int rows, int columns) {
  if (redrawDepth_ > 0 && !paintingSuspended_ && (rows != Rows() || columns != Columns())) {
    paintingSuspended_ = true;
    emit PaintingSuspended();
  }
  changed_ &= QRect(0, 0, columns, rows);
  if (rows > Rows()) {
    beginInsertRows({}, Rows(), rows - 1);
    GridCells::SetSize(rows, Columns());
    endInsertRows();
  } else if (rows < Rows()) {
    beginRemoveRows({}, rows, Rows() - 1);
    GridCells::SetSize(rows, Columns());
    endRemoveRows();
  }
  if (columns > Columns()) {
    beginInsertColumns({}, Columns(), columns - 1);
    GridCells::SetSize(Rows(), columns);
    endInsertColumns();
  } else if (columns < Columns()) {
    beginRemoveColumns({}, columns, Columns() - 1);
    GridCells::SetSize(Rows(), columns);
    endRemoveColumns();
  }
}

void SyncGridModel::SetColumnWidth(int column, int twips) {
  if (ColumnWidth(column) != twips) {
    GridCells::SetColumnWidth(column, twips);
    emit ColumnWidthChanged(column, twips);
  }
}

void SyncGridModel::SetText(int row, int column, std::string_view text) {
  if (Text(row, column) != text) {
    GridCells::SetText(row, column, text);
    Changed(row, column);
  }
}

void SyncGridModel::SetCentred(int row, int column) {
  if (!At(row, column).centred) {
    GridCells::SetCentred(row, column);
    Changed(row, column);
  }
}

void SyncGridModel::SetBackground(int row, int column, Colour colour) {
  if (At(row, column).background != colour) {
    GridCells::SetBackground(row, column, colour);
    Changed(row, column);
  }
}

void SyncGridModel::BeginRedraw() { ++redrawDepth_; }

void SyncGridModel::EndRedraw() {
  // A nested redraw reports its changes too, because the outer one may be waiting for a dialog.
  --redrawDepth_;
  ReportChanges();
  if (paintingSuspended_) {
    paintingSuspended_ = false;
    emit PaintingResumed();
  }
  emit Redrawn();
}

void SyncGridModel::Changed(int row, int column) {
  changed_ |= QRect(column, row, 1, 1);
  if (redrawDepth_ == 0) {
    ReportChanges();
  }
}

void SyncGridModel::ReportChanges() {
  if (changed_.isEmpty()) {
    return;
  }
  const QRect changed = std::exchange(changed_, QRect());
  emit dataChanged(index(changed.top(), changed.left()), index(changed.bottom(), changed.right()));
  if (changed.top() == 0) {
    emit headerDataChanged(Qt::Horizontal, changed.left(), changed.right());
  }
  if (changed.left() == 0) {
    emit headerDataChanged(Qt::Vertical, changed.top(), changed.bottom());
  }
}

}  // namespace kelvara::sync
