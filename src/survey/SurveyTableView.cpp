#include "survey/SurveyTableView.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QEvent>
#include <QFontMetrics>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <algorithm>
#include <utility>

namespace kelvara::survey {
namespace {

constexpr int kRowPadding = 6;

}  // namespace

SurveyTableView::SurveyTableView(std::vector<SurveyColumn> columns, QWidget* parent)
    : QTableView(parent), table_(new SurveyTableModel(std::move(columns), this)) {
  setModel(table_);
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setAlternatingRowColors(true);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  setSortingEnabled(true);
  FitRows();

  auto* const copy = new QAction(QStringLiteral("&Copy"), this);
  copy->setObjectName(QStringLiteral("mnuCopyTable"));
  connect(copy, &QAction::triggered, this, [this] { Copy(); });
  addAction(copy);
  setContextMenuPolicy(Qt::ActionsContextMenu);
}

void SurveyTableView::ShowRows(std::vector<SurveyRow> rows) {
  const QScopedValueRollback showing(showing_, true);
  const int before = table_->rowCount();
  table_->SetRows(std::move(rows));
  const int row = table_->RowOf(chosenId_);
  if (row >= 0 && currentIndex().row() != row) {
    // Not setCurrentIndex() alone, which would also scroll to the row.
    const QModelIndex cell = table_->index(row, 0);
    selectionModel()->setCurrentIndex(
        cell, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  } else if (row < 0) {
    chosenId_ = -1;
  }
  if (before != table_->rowCount()) {
    FitColumns();
  }
}

void SurveyTableView::Choose(int id) {
  const int row = table_->RowOf(id);
  if (row >= 0) {
    setCurrentIndex(table_->index(row, std::max(currentIndex().column(), 0)));
  }
}

void SurveyTableView::FitColumns() {
  for (int column = 0; column + 1 < table_->columnCount(); ++column) {
    if (!isColumnHidden(column)) {
      resizeColumnToContents(column);
    }
  }
}

QString SurveyTableView::TableText() const {
  QString text;
  const auto addLine = [&](const auto& cellText) {
    QString line;
    for (int column = 0; column < table_->columnCount(); ++column) {
      if (!isColumnHidden(column)) {
        line += (column == 0 ? QString() : QStringLiteral("\t")) + cellText(column);
      }
    }
    text += line + u'\n';
  };
  addLine([&](int column) {
    return table_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
  });
  for (int row = 0; row < table_->rowCount(); ++row) {
    addLine([&](int column) { return table_->index(row, column).data().toString(); });
  }
  return text;
}

void SurveyTableView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  // While rows are replaced, the chosen one is only put back.
  if (!showing_ && current.isValid() && table_->IdAt(current.row()) != chosenId_) {
    chosenId_ = table_->IdAt(current.row());
    emit Chosen(chosenId_);
  }
}

void SurveyTableView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    Copy();
    return;
  }
  QTableView::keyPressEvent(event);
}

void SurveyTableView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    FitRows();
    FitColumns();
  }
}

void SurveyTableView::Copy() const { QApplication::clipboard()->setText(TableText()); }

void SurveyTableView::FitRows() {
  const int height = QFontMetrics(font()).height();
  verticalHeader()->setDefaultSectionSize(height + kRowPadding);
  setIconSize({height, height});
}

}  // namespace kelvara::survey
