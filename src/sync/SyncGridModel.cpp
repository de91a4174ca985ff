#include "sync/SyncGridModel.h"

#include <QBrush>
#include <QColor>
#include <algorithm>
#include <utility>

#include "base/CheckedInteger.h"
#include "platform/qt/Text.h"

namespace kelvara::sync {

SyncGridModel::SyncGridModel(QObject* parent)
    : QAbstractTableModel(parent), cells_(1), widths_(1) {}

int SyncGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int SyncGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns_;
}

QVariant SyncGridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const Cell& cell = At(index.row(), index.column());
  switch (role) {
    case Qt::DisplayRole:
      return cell.text;
    case Qt::TextAlignmentRole:
      return cell.centred ? QVariant(Qt::AlignCenter) : QVariant();
    case Qt::BackgroundRole:
      return cell.background ? QVariant(QBrush(QColor(*cell.background))) : QVariant();
    case Qt::ForegroundRole:
      // The palette's colours are light, so their text is dark in every theme.
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

void SyncGridModel::SetSize(int rows, int columns) {
  if (redrawDepth_ > 0 && !paintingSuspended_ && (rows != rows_ || columns != columns_)) {
    paintingSuspended_ = true;
    emit PaintingSuspended();
  }
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    Resize(rows, columns_);
    endInsertRows();
  } else if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    Resize(rows, columns_);
    endRemoveRows();
  }
  if (columns > columns_) {
    beginInsertColumns({}, columns_, columns - 1);
    Resize(rows_, columns);
    endInsertColumns();
  } else if (columns < columns_) {
    beginRemoveColumns({}, columns, columns_ - 1);
    Resize(rows_, columns);
    endRemoveColumns();
  }
}

void SyncGridModel::Resize(int rows, int columns) {
  std::vector<Cell> cells(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
  for (int row = 0; row < std::min(rows, rows_); ++row) {
    for (int column = 0; column < std::min(columns, columns_); ++column) {
      cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
            static_cast<std::size_t>(column)] = std::move(At(row, column));
    }
  }
  cells_ = std::move(cells);
  widths_.resize(static_cast<std::size_t>(columns));
  rows_ = rows;
  columns_ = columns;
  changed_ &= QRect(0, 0, columns, rows);
}

void SyncGridModel::SetColumnWidth(int column, int twips) {
  int& width = base::At(widths_, column);
  if (width != twips) {
    width = twips;
    emit ColumnWidthChanged(column, twips);
  }
}

void SyncGridModel::SetText(int row, int column, std::string_view text) {
  Cell& cell = At(row, column);
  // Compared as it comes, so that a redraw that changes nothing makes no new texts.
  if (cell.text != QLatin1String(text.data(), static_cast<qsizetype>(text.size()))) {
    cell.text = qt::ToQString(text);
    Changed(row, column);
  }
}

std::string SyncGridModel::Text(int row, int column) const {
  return qt::ToText(At(row, column).text);
}

void SyncGridModel::SetCentred(int row, int column) {
  Cell& cell = At(row, column);
  if (!cell.centred) {
    cell.centred = true;
    Changed(row, column);
  }
}

void SyncGridModel::SetBackground(int row, int column, platform::Colour colour) {
  Cell& cell = At(row, column);
  const QRgb background = qRgb(colour.Red(), colour.Green(), colour.Blue());
  if (cell.background != background) {
    cell.background = background;
    Changed(row, column);
  }
}

void SyncGridModel::BeginRedraw() { ++redrawDepth_; }

void SyncGridModel::EndRedraw() {
  // A redraw within another one tells what it knows too: the outer one may wait for a dialog.
  --redrawDepth_;
  TellChanges();
  if (paintingSuspended_) {
    paintingSuspended_ = false;
    emit PaintingResumed();
  }
}

std::size_t SyncGridModel::Index(int row, int column) const {
  const std::size_t checkedRow = base::CheckedIndex(row, static_cast<std::size_t>(rows_));
  const std::size_t checkedColumn = base::CheckedIndex(column, static_cast<std::size_t>(columns_));
  return checkedRow * static_cast<std::size_t>(columns_) + checkedColumn;
}

void SyncGridModel::Changed(int row, int column) {
  changed_ |= QRect(column, row, 1, 1);
  if (redrawDepth_ == 0) {
    TellChanges();
  }
}

void SyncGridModel::TellChanges() {
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
