#include "survey/SurveyTableModel.h"

#include <algorithm>
#include <utility>

#include "survey/StatusSign.h"

namespace kelvara::survey {
namespace {

bool IsLess(const SurveyCell& one, const SurveyCell& other) {
  if (one.key && other.key) {
    return *one.key < *other.key;
  }
  if (one.key.has_value() != other.key.has_value()) {
    return one.key.has_value();
  }
  return one.text.compare(other.text, Qt::CaseInsensitive) < 0;
}

}  // namespace

SurveyTableModel::SurveyTableModel(std::vector<SurveyColumn> columns, QObject* parent)
    : QAbstractTableModel(parent), columns_(std::move(columns)) {}

void SurveyTableModel::SetRows(std::vector<SurveyRow> rows) {
  std::vector<SurveyRow> before = std::move(rows_);
  given_ = std::move(rows);
  rows_ = given_;
  SortRows();
  if (!std::equal(
          before.begin(), before.end(), rows_.begin(), rows_.end(),
          [](const SurveyRow& one, const SurveyRow& other) { return one.id == other.id; })) {
    rows_.swap(before);
    beginResetModel();
    rows_.swap(before);
    endResetModel();
    return;
  }
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    if (rows_[row] != before[row]) {
      const int changed = static_cast<int>(row);
      emit dataChanged(index(changed, 0), index(changed, columnCount() - 1));
    }
  }
}

int SurveyTableModel::RowOf(int id) const {
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [id](const SurveyRow& row) { return row.id == id; });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

int SurveyTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int SurveyTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant SurveyTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const SurveyRow& row = rows_[static_cast<std::size_t>(index.row())];
  const auto column = static_cast<std::size_t>(index.column());
  switch (role) {
    case Qt::DisplayRole:
      return row.cells[column].text;
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(Qt::Alignment(Qt::AlignVCenter) |
                                 (columns_[column].isNumber ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::ToolTipRole:
      return row.toolTip.isEmpty() ? QVariant() : row.toolTip;
    case Qt::DecorationRole:
      return row.status && index.column() + 1 == columnCount() ? StatusSign(*row.status)
                                                               : QVariant();
    default:
      return {};
  }
}

QVariant SurveyTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
    return {};
  }
  const SurveyColumn& column = columns_[static_cast<std::size_t>(section)];
  switch (role) {
    case Qt::DisplayRole:
      return column.title;
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return column.toolTip;
    default:
      return {};
  }
}

void SurveyTableModel::sort(int column, Qt::SortOrder order) {
  sortColumn_ = column < columnCount() ? column : -1;
  sortOrder_ = order;
  emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
  const std::vector<SurveyRow> before = std::move(rows_);
  rows_ = given_;
  SortRows();
  const QModelIndexList from = persistentIndexList();
  QModelIndexList to;
  for (const QModelIndex& cell : from) {
    to.append(index(RowOf(before[static_cast<std::size_t>(cell.row())].id), cell.column()));
  }
  changePersistentIndexList(from, to);
  emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void SurveyTableModel::SortRows() {
  if (sortColumn_ < 0) {
    return;
  }
  const auto column = static_cast<std::size_t>(sortColumn_);
  std::stable_sort(rows_.begin(), rows_.end(), [&](const SurveyRow& one, const SurveyRow& other) {
    return sortOrder_ == Qt::AscendingOrder ? IsLess(one.cells[column], other.cells[column])
                                            : IsLess(other.cells[column], one.cells[column]);
  });
}

}  // namespace kelvara::survey
