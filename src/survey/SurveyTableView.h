#pragma once

#include <QTableView>

#include "survey/SurveyTableModel.h"

namespace kelvara::survey {

/// A table of the survey on the screen: sortable by its headers, one row chosen at a time, copied
/// as tab-separated text.
class SurveyTableView : public QTableView {
  Q_OBJECT

 public:
  SurveyTableView(std::vector<SurveyColumn> columns, QWidget* parent);

  /// Shows these rows. The chosen one stays chosen and the order stays; columns become as wide as
  /// their texts need when rows come or go.
  void ShowRows(std::vector<SurveyRow> rows);

  /// The identity of the chosen row; -1 if none is.
  int ChosenId() const { return chosenId_; }
  void Choose(int id);

  void FitColumns();

  /// The table as it is shown: headers and rows, cells separated by tabs, a line feed after each
  /// line. Hidden columns are left out.
  QString TableText() const;

 signals:
  void Chosen(int id);

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Copy() const;
  void FitRows();

  SurveyTableModel* table_;
  int chosenId_ = -1;
  bool showing_ = false;
};

}  // namespace kelvara::survey
