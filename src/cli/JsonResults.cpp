#include "cli/JsonResults.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

namespace kelvara::cli {
namespace {

QJsonValue ColourText(const std::optional<sync::Colour>& colour) {
  if (!colour) {
    return QJsonValue::Null;
  }
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%02x%02x%02x", colour->Red(), colour->Green(),
                colour->Blue());
  return QLatin1String(text.data());
}

/// The number of antennas that the model holds. AaCount() also counts one refused by a full model.
int HeldAas(const sync::SyncModel& model) { return std::min<int>(model.AaCount(), sync::kMaxAas); }

QJsonArray Aas(const sync::SyncModel& model) {
  QJsonArray aas;
  for (int aa = 0; aa < HeldAas(model); ++aa) {
    aas.append(
        QJsonObject{{"rpn", model.AaRpn(aa)}, {"fps", model.AaFps(aa)}, {"fpn", model.AaFpn(aa)}});
  }
  return aas;
}

QJsonArray Cells(const sync::SyncModel& model) {
  QJsonArray cells;
  for (int from = 0; from < HeldAas(model); ++from) {
    for (int to = 0; to < HeldAas(model); ++to) {
      const sync::PhaseCell& cell = model.Cell(from, to);
      if (cell.Count > 0) {
        cells.append(QJsonObject{{"from", from},
                                 {"to", to},
                                 {"sum", cell.Sum},
                                 {"count", cell.Count},
                                 {"max", cell.Max},
                                 {"min", cell.Min}});
      }
    }
  }
  return cells;
}

template <typename CellValue>
QJsonArray GridRows(const sync::GridCells& grid, CellValue cellValue) {
  QJsonArray rows;
  for (int row = 0; row < grid.Rows(); ++row) {
    QJsonArray cells;
    for (int column = 0; column < grid.Columns(); ++column) {
      cells.append(cellValue(row, column));
    }
    rows.append(cells);
  }
  return rows;
}

}  // namespace

std::string JsonResults(const app::Session& session, const sync::GridCells& grid,
                        bool gridComplete) {
  const QJsonArray text = GridRows(grid, [&](int row, int column) {
    return QJsonValue(QString::fromStdString(grid.Text(row, column)));
  });
  const QJsonArray colour = GridRows(
      grid, [&](int row, int column) { return ColourText(grid.At(row, column).background); });
  const QJsonObject results{
      {"reports", session.Model().ReportCount()},
      {"abandoned", qint64{session.Parser().AbandonedCount()}},
      {"aas", Aas(session.Model())},
      {"cells", Cells(session.Model())},
      {"grid", QJsonObject{{"complete", gridComplete}, {"text", text}, {"colour", colour}}}};
  return QJsonDocument(results).toJson(QJsonDocument::Compact).toStdString() + "\n";
}

}  // namespace kelvara::cli
