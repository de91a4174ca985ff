#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QImage>
#include <QTest>
#include <vector>

#include "support/WindowDriver.h"
#include "sync/SyncGrid.h"
#include "sync/SyncGridView.h"

namespace kelvara::test {

/// The view of the grid with a model that tests fill, and what a user sees and copies of it.
class SyncGridViewRig : public testing::Test {
 protected:
  SyncGridViewRig() { view_.SetGridModel(&model_); }

  void Fill(int antennas) {
    model_.BeginRedraw();
    model_.SetSize(antennas + 1, antennas + 1);
    for (int i = 0; i <= antennas; ++i) {
      model_.SetColumnWidth(i, sync::kGridColumnTwips);
      for (int j = 0; j <= antennas; ++j) {
        model_.SetText(i, j, std::to_string(i * 100 + j));
        model_.SetCentred(i, j);
        if (i > 0 && j > 0) {
          model_.SetBackground(i, j, sync::Colour{0xFFE6E6});
        }
      }
    }
    model_.EndRedraw();
  }

  /// The colour at a point of a cell of the shown view, counted from its top left corner.
  QColor ColourIn(int row, int column, QPoint point) {
    QCoreApplication::processEvents();
    const QRect cell = view_.visualRect(model_.index(row, column));
    return view_.viewport()->grab().toImage().pixelColor(cell.topLeft() + point);
  }

  /// Whether a dashed line is drawn along the top of a cell of the shown view. Which of its pixels
  /// are black depends on the size of the cell, and so on the font.
  bool IsDashed(int row, int column) {
    QCoreApplication::processEvents();
    const QRect cell = view_.visualRect(model_.index(row, column));
    const QImage picture = view_.viewport()->grab().toImage();
    int black = 0;
    for (int x = cell.left(); x <= cell.right(); ++x) {
      black += picture.pixelColor(x, cell.top()) == QColor(Qt::black) ? 1 : 0;
    }
    return black > 0 && black < cell.width();
  }

  /// Whether a header's section is highlighted.
  bool IsMarked(QHeaderView& header, int section) {
    QCoreApplication::processEvents();
    const int middle = header.sectionViewportPosition(section) + header.sectionSize(section) / 2;
    const QPoint point =
        header.orientation() == Qt::Horizontal ? QPoint(middle, 2) : QPoint(2, middle);
    const QImage picture = header.viewport()->grab().toImage();
    return picture.valid(point) &&
           picture.pixelColor(point) == view_.palette().color(QPalette::Highlight);
  }

  /// The sections of both headers that are highlighted, as row and column.
  std::vector<sync::GridPosition> MarkedHeaders() {
    std::vector<sync::GridPosition> marked;
    for (int row = 1; row < model_.Rows(); ++row) {
      if (!IsMarked(*view_.verticalHeader(), row)) {
        continue;
      }
      for (int column = 1; column < model_.Columns(); ++column) {
        if (IsMarked(*view_.horizontalHeader(), column)) {
          marked.push_back({row, column});
        }
      }
    }
    return marked;
  }

  void PointAt(int row, int column) {
    const QPoint cell = view_.visualRect(model_.index(row, column)).center();
    QTest::mouseMove(view_.windowHandle(), view_.viewport()->mapTo(&view_, cell));
    QCoreApplication::processEvents();
  }

  QString Copied() {
    QApplication::clipboard()->clear();
    Press(view_, Qt::Key_C, Qt::ControlModifier);
    return QApplication::clipboard()->text();
  }

  QVariant Data(int row, int column, int role) { return model_.index(row, column).data(role); }

  sync::SyncGridModel model_;
  sync::SyncGridView view_;
};

}  // namespace kelvara::test
