// Benchmarks of the main window. Usage: desktop_bench start|memory|redraw [ANTENNAS]. All modes end
// after the first paint: "start" immediately, "memory" after filling in 51 antennas and printing
// the resident kilobytes, "redraw" after printing the milliseconds of a full redraw, of one that
// changes nothing, and of a plain table filled the same way.

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QHeaderView>
#include <QSize>
#include <QTableWidget>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "FullModel.h"
#include "app/DesktopProgram.h"
#include "app/FrmMain.h"
#include "desktop/FirstPaint.h"
#include "desktop/ResidentMemory.h"

namespace kelvara::bench {
namespace {

constexpr int kAas = static_cast<int>(sync::kMaxAas);
constexpr int kRounds = 15;
constexpr int kSettlingMilliseconds = 500;
/// Large enough to show every cell.
constexpr QSize kScreen(2000, 1060);

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

/// The median time of `work` and the painting it causes, in milliseconds. `prepare` is not timed.
template <typename Prepare, typename Work>
double MedianMilliseconds(Prepare prepare, Work work) {
  std::vector<double> samples;
  for (int round = 0; round < kRounds; ++round) {
    prepare(round);
    QCoreApplication::processEvents();
    QElapsedTimer timer;
    timer.start();
    work(round);
    QCoreApplication::processEvents();
    samples.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  return Median(samples);
}

/// A phase that differs from cell to cell and from round to round.
std::string CellText(int round, int row, int column) {
  return std::to_string((row * 7 + column * 13 + round * 31) % 900 - 450);
}

/// Lets the program finish the work that it delays until its window is shown.
void Settle() {
  QEventLoop loop;
  QTimer::singleShot(kSettlingMilliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

double PlainTableMilliseconds(int aas) {
  QTableWidget table(aas + 1, aas + 1);
  table.horizontalHeader()->setDefaultSectionSize(37);
  table.verticalHeader()->setDefaultSectionSize(18);
  table.resize(kScreen);
  table.show();
  QCoreApplication::processEvents();
  return MedianMilliseconds([](int) {},
                            [&table, aas](int round) {
                              for (int row = 0; row <= aas; ++row) {
                                for (int column = 0; column <= aas; ++column) {
                                  QCoreApplication::processEvents();
                                  auto* const item = new QTableWidgetItem(
                                      QString::fromStdString(CellText(round, row, column)));
                                  item->setTextAlignment(Qt::AlignCenter);
                                  item->setBackground(QColor(230, 230, 255));
                                  table.setItem(row, column, item);
                                }
                              }
                            });
}

void MeasureRedraw(app::FrmMain& window, std::int16_t aas) {
  window.resize(kScreen);
  QCoreApplication::processEvents();
  sync::SyncModel& model = window.Live().Results().Model();
  FillModel(model, aas);
  // Each reading changes a mean, so that every cell shows something new.
  const auto changeAll = [&model, aas](int round) {
    const auto phase = static_cast<std::int16_t>(round % 2 == 0 ? 900 : -900);
    for (std::int16_t from = 0; from < aas; ++from) {
      for (std::int16_t to = 0; to < aas; ++to) {
        if (from != to) {
          model.AddPhase(from, to, phase);
        }
      }
    }
  };
  const auto redraw = [&window](int) { window.UpdateSyncGrid(); };
  const double full = MedianMilliseconds(changeAll, redraw);
  const double unchanged = MedianMilliseconds([](int) {}, redraw);
  window.hide();
  std::printf("%.3f %.3f %.3f\n", full, unchanged, PlainTableMilliseconds(aas));
}

}  // namespace
}  // namespace kelvara::bench

int main(int argumentCount, char** arguments) {
  using namespace kelvara;
  const std::string mode = argumentCount > 1 ? arguments[1] : "";
  const auto aas =
      static_cast<std::int16_t>(argumentCount > 2 ? std::stoi(arguments[2]) : bench::kAas);
  int nameOnly = 1;
  const QApplication application(nameOnly, arguments);
  const bench::FirstPaint firstPaint([&mode, aas](QWidget& widget) {
    if (mode != "start") {
      auto& window = dynamic_cast<app::FrmMain&>(widget);
      if (mode == "redraw") {
        bench::MeasureRedraw(window, aas);
      } else {
        bench::FillModel(window.Live().Results().Model());
        window.UpdateSyncGrid();
        bench::Settle();
        std::printf("%ld\n", bench::ResidentKilobytes());
      }
      std::fflush(stdout);
    }
    std::_Exit(0);
  });
  app::DesktopOptions options;
  options.demo = true;
  return app::RunDesktopProgram(options);
}
