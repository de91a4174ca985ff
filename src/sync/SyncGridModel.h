#pragma once

#include <QAbstractTableModel>
#include <QRect>
#include <QRgb>
#include <QString>
#include <optional>
#include <vector>

#include "platform/GridControl.h"

namespace kelvara::sync {

/// The cells of the grid control, header row 0 and header column 0 included. Views learn of changed
/// cells once, at the end of a redraw, and of another size at once; a redraw that changes the size
/// tells them when to stop painting and when to go on.
class SyncGridModel : public QAbstractTableModel, public platform::GridControl {
  Q_OBJECT

 public:
  explicit SyncGridModel(QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  /// The header row and column, so that views can show them as headers that stay in place.
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  void SetSize(int rows, int columns) override;
  int Rows() const override { return rows_; }
  int Columns() const override { return columns_; }
  void SetColumnWidth(int column, int twips) override;
  void SetText(int row, int column, std::string_view text) override;
  std::string Text(int row, int column) const override;
  void SetCentred(int row, int column) override;
  void SetBackground(int row, int column, platform::Colour colour) override;
  void BeginRedraw() override;
  void EndRedraw() override;

  /// What a cell shows, without the detour through roles.
  const QString& CellText(int row, int column) const { return At(row, column).text; }
  std::optional<QRgb> CellBackground(int row, int column) const {
    return At(row, column).background;
  }

 signals:
  void ColumnWidthChanged(int column, int twips);
  void PaintingSuspended();
  void PaintingResumed();

 private:
  struct Cell {
    QString text;
    bool centred = false;
    std::optional<QRgb> background;
  };

  std::size_t Index(int row, int column) const;
  const Cell& At(int row, int column) const { return cells_[Index(row, column)]; }
  Cell& At(int row, int column) { return cells_[Index(row, column)]; }
  void Resize(int rows, int columns);
  void Changed(int row, int column);
  void TellChanges();

  int rows_ = 1;
  int columns_ = 1;
  std::vector<Cell> cells_;
  std::vector<int> widths_;
  int redrawDepth_ = 0;
  bool paintingSuspended_ = false;
  QRect changed_;
};

}  // namespace kelvara::sync
