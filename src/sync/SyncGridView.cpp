#include "sync/SyncGridView.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QEvent>
#include <QFontMetrics>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>

#include "platform/widgets/Twips.h"
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

constexpr int kUsualZoom = 100;
constexpr int kSmallestZoom = 50;
constexpr int kLargestZoom = 200;
constexpr int kZoomStep = 10;

}  // namespace

SyncGridView::SyncGridView(QWidget* parent)
    : QTableView(parent),
      corner_(new QLabel(this)),
      zoom_(kUsualZoom),
      columnHeader_(new GridHeader(Qt::Horizontal, this)),
      rowHeader_(new GridHeader(Qt::Vertical, this)) {
  setHorizontalHeader(columnHeader_);
  setVerticalHeader(rowHeader_);
  setItemDelegate(new GridCellDelegate(marks_, this));
  viewport()->setAttribute(Qt::WA_Hover);
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
  connect(model, &QAbstractItemModel::rowsRemoved, this, [this] { ShowMeasured({}); });
  connect(model, &QAbstractItemModel::rowsRemoved, this, &SyncGridView::DescribeEmptiness);
  connect(model, &QAbstractItemModel::rowsInserted, this, &SyncGridView::DescribeEmptiness);
  connect(model, &QAbstractItemModel::columnsRemoved, this, &SyncGridView::MarkCell);
  connect(model, &QAbstractItemModel::dataChanged, this, &SyncGridView::ShowCorner);
  connect(model, &SyncGridModel::PaintingSuspended, this, [this] { setUpdatesEnabled(false); });
  connect(model, &SyncGridModel::PaintingResumed, this, [this] { setUpdatesEnabled(true); });
  connect(model, &SyncGridModel::ColumnWidthChanged, this, [this](int column, int twips) {
    if (column > 0) {
      setColumnWidth(column, ColumnPixels(twips));
    }
  });
  HideHeaderCells();
  ShowCorner();
  DescribeEmptiness();
}

QString SyncGridView::CopiedText() const {
  const QModelIndexList selected = selectionModel()->selectedIndexes();
  QRect area(0, 0, gridModel_->Columns(), gridModel_->Rows());
  if (!selected.isEmpty()) {
    area = QRect();
    for (const QModelIndex& cell : selected) {
      area |= QRect(cell.column(), cell.row(), 1, 1);
    }
  }
  QString text;
  for (int row = area.top(); row <= area.bottom(); ++row) {
    for (int column = area.left(); column <= area.right(); ++column) {
      text += column == area.left() ? QString() : QStringLiteral("\t");
      if (selected.isEmpty() || selectionModel()->isSelected(gridModel_->index(row, column))) {
        text += gridModel_->CellText(row, column);
      }
    }
    text += u'\n';
  }
  return text;
}

void SyncGridView::SetZoom(int percent) {
  const int zoom = std::clamp(percent, kSmallestZoom, kLargestZoom);
  if (zoom != zoom_) {
    zoom_ = zoom;
    FitFont();
    MarkCell();
  }
}

void SyncGridView::ShowMeasured(std::vector<GridPosition> cells) {
  if (cells != marks_.measured) {
    marks_.measured = std::move(cells);
    viewport()->update();
  }
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
  if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverMove) {
    mouse_ = static_cast<QHoverEvent*>(event)->position().toPoint();
    MarkCell();
  } else if (event->type() == QEvent::HoverLeave) {
    mouse_.reset();
    MarkCell();
  }
  return QTableView::viewportEvent(event);
}

void SyncGridView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (gridModel_ != nullptr && gridModel_->Rows() <= 1) {
    QPainter painter(viewport());
    painter.setFont(QApplication::font(this));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
  }
}

void SyncGridView::wheelEvent(QWheelEvent* event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) {
    QTableView::wheelEvent(event);
    return;
  }
  // A fine wheel turns by less than a step at a time.
  wheelAngle_ += event->angleDelta().y();
  SetZoom(zoom_ + wheelAngle_ / QWheelEvent::DefaultDeltasPerStep * kZoomStep);
  wheelAngle_ %= QWheelEvent::DefaultDeltasPerStep;
  event->accept();
}

bool SyncGridView::ZoomByKey(const QKeyEvent& event) {
  // The plus key may need Shift, and may be the one of the number pad.
  const Qt::KeyboardModifiers others = Qt::ShiftModifier | Qt::KeypadModifier;
  if ((event.modifiers() & ~others) != Qt::ControlModifier) {
    return false;
  }
  switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      SetZoom(zoom_ + kZoomStep);
      return true;
    case Qt::Key_Minus:
      SetZoom(zoom_ - kZoomStep);
      return true;
    case Qt::Key_0:
      SetZoom(kUsualZoom);
      return true;
    default:
      return false;
  }
}

void SyncGridView::OpenContextMenu() {
  const QRect cell = visualRect(currentIndex()) & viewport()->rect();
  const QPoint place = cell.isEmpty() ? viewport()->rect().center() : cell.center();
  QContextMenuEvent menu(QContextMenuEvent::Keyboard, viewport()->mapTo(this, place),
                         viewport()->mapToGlobal(place));
  QApplication::sendEvent(this, &menu);
}

void SyncGridView::focusInEvent(QFocusEvent* event) {
  const bool isCellChosen = currentIndex().isValid();
  QTableView::focusInEvent(event);
  if (!isCellChosen) {
    // The view chooses its first cell, which nobody has asked for.
    selectionModel()->clearCurrentIndex();
  }
  MarkCell();
}

void SyncGridView::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  MarkCell();
}

void SyncGridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  MarkCell();
}

void SyncGridView::MarkCell() {
  QModelIndex cell = mouse_ ? indexAt(*mouse_) : QModelIndex();
  if (!cell.isValid() && hasFocus()) {
    cell = currentIndex();
  }
  const GridPosition mirror =
      cell.isValid() ? GridPosition{cell.column(), cell.row()} : GridPosition{};
  columnHeader_->SetMarked(mirror.row);
  rowHeader_->SetMarked(mirror.column);
  // A cell of the diagonal has no mirror.
  const GridPosition framed = mirror.row == mirror.column ? GridPosition{} : mirror;
  if (framed != marks_.mirror) {
    update(gridModel_->index(marks_.mirror.row, marks_.mirror.column));
    marks_.mirror = framed;
    update(gridModel_->index(framed.row, framed.column));
  }
}

void SyncGridView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    QApplication::clipboard()->setText(CopiedText());
    return;
  }
  if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
    OpenContextMenu();
    return;
  }
  if (ZoomByKey(*event)) {
    return;
  }
  const QModelIndex before = currentIndex();
  QTableView::keyPressEvent(event);
  if (currentIndex() != before) {
    mouse_.reset();
    MarkCell();
  }
}

void SyncGridView::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  MarkCell();
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
  const int columnWidth = ColumnPixels(kGridColumnTwips);
  const int available = columnWidth - kColumnPadding;
  // Starts from the program's font, because the view's own, fitted earlier, could only shrink.
  QFont fitted = QApplication::font(this);
  int pixels = std::max(kSmallestFontPixels, QFontInfo(fitted).pixelSize() * zoom_ / kUsualZoom);
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

int SyncGridView::ColumnPixels(int twips) const {
  return widgets::TwipsToPixels(*this, twips) * zoom_ / kUsualZoom;
}

void SyncGridView::ShowCorner() { corner_->setText(gridModel_->CellText(0, 0)); }

void SyncGridView::SetEmptyText(const QString& text) {
  if (text != emptyText_) {
    emptyText_ = text;
    DescribeEmptiness();
    viewport()->update();
  }
}

void SyncGridView::DescribeEmptiness() {
  setAccessibleDescription(gridModel_->Rows() <= 1 ? emptyText_ : QString());
}

}  // namespace kelvara::sync
