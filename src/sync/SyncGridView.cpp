#include "sync/SyncGridView.h"

#include <QApplication>
#include <QClipboard>
#include <QEvent>
#include <QFontMetrics>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QToolTip>
#include <algorithm>

#include "platform/widgets/Twips.h"
#include "sync/GridCellDelegate.h"
#include "sync/GridHeader.h"
#include "sync/SyncGrid.h"

namespace kelvara::sync {
namespace {

/// The widest texts that must fit in a cell.
const std::initializer_list<QString> kWidestTexts = {QStringLiteral("-12350"),
                                                     QStringLiteral("63[15]")};
constexpr int kSmallestFontPixels = 6;
constexpr int kRowPadding = 8;
/// The line between two cells, and one pixel on either side of the text.
constexpr int kColumnPadding = 3;

}  // namespace

SyncGridView::SyncGridView(QWidget* parent) : QTableView(parent), corner_(new QLabel(this)) {
  setHorizontalHeader(new GridHeader(Qt::Horizontal, this));
  setVerticalHeader(new GridHeader(Qt::Vertical, this));
  setItemDelegate(new GridCellDelegate(this));
  setCornerButtonEnabled(false);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setVerticalScrollMode(ScrollPerPixel);
  corner_->setAlignment(Qt::AlignCenter);
  corner_->setAttribute(Qt::WA_TransparentForMouseEvents);
  FitFont();
}

void SyncGridView::SetGridModel(SyncGridModel* model) {
  gridModel_ = model;
  setModel(model);
  connect(model, &QAbstractItemModel::rowsInserted, this, &SyncGridView::HideHeaderCells);
  connect(model, &QAbstractItemModel::columnsInserted, this, &SyncGridView::HideHeaderCells);
  connect(model, &QAbstractItemModel::dataChanged, this, &SyncGridView::ShowCorner);
  connect(model, &SyncGridModel::PaintingSuspended, this, [this] { setUpdatesEnabled(false); });
  connect(model, &SyncGridModel::PaintingResumed, this, [this] { setUpdatesEnabled(true); });
  connect(model, &SyncGridModel::ColumnWidthChanged, this, [this](int column, int twips) {
    if (column > 0) {
      setColumnWidth(column, widgets::TwipsToPixels(*this, twips));
    }
  });
  HideHeaderCells();
  ShowCorner();
}

QString SyncGridView::GridText() const {
  QString text;
  for (int row = 0; row < gridModel_->Rows(); ++row) {
    for (int column = 0; column < gridModel_->Columns(); ++column) {
      text += column == 0 ? QString() : QStringLiteral("\t");
      text += gridModel_->CellText(row, column);
    }
    text += u'\n';
  }
  return text;
}

bool SyncGridView::event(QEvent* event) {
  const bool done = QTableView::event(event);
  // The view has set its own font size, so a new size of the application's font does not change the
  // view's font.
  if (event->type() == QEvent::ApplicationFontChange) {
    FitFont();
  }
  return done;
}

void SyncGridView::updateGeometries() {
  QTableView::updateGeometries();
  corner_->setGeometry(frameWidth(), frameWidth(), verticalHeader()->width(),
                       horizontalHeader()->height());
}

bool SyncGridView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex cell = indexAt(help->pos());
    const QString text =
        cell.isValid() && toolTips_ ? toolTips_(cell.row(), cell.column()) : QString();
    QToolTip::showText(help->globalPos(), text, viewport(),
                       cell.isValid() ? visualRect(cell) : QRect());
    return true;
  }
  return QTableView::viewportEvent(event);
}

void SyncGridView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    QApplication::clipboard()->setText(GridText());
    return;
  }
  QTableView::keyPressEvent(event);
}

void SyncGridView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    FitFont();
  }
}

void SyncGridView::HideHeaderCells() {
  setRowHidden(0, true);
  setColumnHidden(0, true);
}

void SyncGridView::FitFont() {
  if (fitting_) {
    return;
  }
  const QScopedValueRollback fitting(fitting_, true);
  const int columnWidth = widgets::TwipsToPixels(*this, kGridColumnTwips);
  const int available = columnWidth - kColumnPadding;
  // Starts from the program's font, because the view's own, fitted earlier, could only shrink.
  QFont fitted = QApplication::font(this);
  int pixels = QFontInfo(fitted).pixelSize();
  const auto widest = [&] {
    fitted.setPixelSize(pixels);
    const QFontMetrics metrics(fitted);
    int width = 0;
    for (const QString& text : kWidestTexts) {
      width = std::max(width, metrics.horizontalAdvance(text));
    }
    return width;
  };
  // Trying a size loads a font, so the text's width is used to estimate the next size.
  for (int width = widest(); width > available && pixels > kSmallestFontPixels; width = widest()) {
    pixels = std::clamp(pixels * available / width + 1, kSmallestFontPixels, pixels - 1);
  }
  setFont(fitted);
  corner_->setFont(fitted);
  horizontalHeader()->setFont(fitted);
  verticalHeader()->setFont(fitted);
  const int rowHeight = QFontMetrics(fitted).height() + kRowPadding;
  horizontalHeader()->setDefaultSectionSize(columnWidth);
  verticalHeader()->setDefaultSectionSize(rowHeight);
  horizontalHeader()->setFixedHeight(rowHeight);
  verticalHeader()->setFixedWidth(columnWidth);
}

void SyncGridView::ShowCorner() { corner_->setText(gridModel_->CellText(0, 0)); }

}  // namespace kelvara::sync
