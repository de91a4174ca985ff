#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <optional>
#include <vector>

#include "survey/SurveyResult.h"

namespace kelvara::survey {

/// A column of a table of the survey.
struct SurveyColumn {
  QString title;
  QString toolTip;
  bool isNumber = true;
};

/// A cell: what is shown, and the number that rows are sorted by. A cell without a number is sorted
/// by its text, after those with one.
struct SurveyCell {
  QString text;
  std::optional<double> key;

  bool operator==(const SurveyCell&) const = default;
};

struct SurveyRow {
  int id = 0;  ///< What the row is about, such as an antenna's RPN. No two rows have the same.
  std::vector<SurveyCell> cells;
  QString toolTip;
  std::optional<AntennaStatus> status;  ///< Drawn as a sign before the last cell.

  bool operator==(const SurveyRow&) const = default;
};

/// A table of the survey, which keeps its order while its rows follow the results.
class SurveyTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  SurveyTableModel(std::vector<SurveyColumn> columns, QObject* parent);

  /// Replaces the rows. While they are the same in the same order, only their cells change.
  void SetRows(std::vector<SurveyRow> rows);

  /// The row with this identity; -1 if there is none.
  int RowOf(int id) const;
  int IdAt(int row) const { return rows_[static_cast<std::size_t>(row)].id; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  /// Sorts by a column; rows that are equal there keep the order in which they were given. Column
  /// -1 is the order in which all were given.
  void sort(int column, Qt::SortOrder order) override;

 private:
  void SortRows();

  std::vector<SurveyColumn> columns_;
  std::vector<SurveyRow> given_;  ///< In the order in which they were given.
  std::vector<SurveyRow> rows_;   ///< In the order in which they are shown.
  int sortColumn_ = -1;
  Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
};

}  // namespace kelvara::survey
