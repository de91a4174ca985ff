#pragma once

#include <QAbstractTableModel>
#include <QRect>

#include "sync/GridCells.h"

namespace kelvara::sync {

/// The sync grid for Qt's views. Views learn of changed cells once, at the end of a redraw, and of
/// a new size at once. A redraw that changes the size also tells them to suspend painting until it
/// is over.
class SyncGridModel : public QAbstractTableModel, public GridCells {
  Q_OBJECT

 public:
  explicit SyncGridModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  /// The header row and column, so that views can show them as headers that stay in place.
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  void SetSize(int rows, int columns) override;
  void SetColumnWidth(int column, int twips) override;
  void SetText(int row, int column, std::string_view text) override;
  void SetCentred(int row, int column) override;
  void SetBackground(int row, int column, Colour colour) override;
  void BeginRedraw() override;
  void EndRedraw() override;

  /// A cell's text as Qt shows it.
  QString CellText(int row, int column) const;

 signals:
  void ColumnWidthChanged(int column, int twips);
  void PaintingSuspended();
  void PaintingResumed();
  /// At the end of every redraw.
  void Redrawn();

 private:
  void Changed(int row, int column);
  void ReportChanges();

  int redrawDepth_ = 0;
  bool paintingSuspended_ = false;
  QRect changed_;
};

}  // namespace kelvara::sync
