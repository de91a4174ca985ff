#include "cli/JsonResults.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

#include "cli/Quoted.h"

namespace kelvara::cli {
namespace {

std::string ColourText(const std::optional<sync::Colour>& colour) {
  if (!colour) {
    return "null";
  }
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%02x%02x%02x", colour->Red(), colour->Green(),
                colour->Blue());
  return Quoted(text.data());
}

/// A JSON array of `count` items.
template <typename ItemText>
std::string Array(int count, ItemText itemText, const char* separator) {
  std::string text = "[";
  for (int i = 0; i < count; ++i) {
    text += i == 0 ? "" : separator;
    text += itemText(i);
  }
  return text + "]";
}

/// The antennas that the model holds; one refused for want of room is counted but not held.
int HeldAas(const sync::SyncModel& model) { return std::min<int>(model.AaCount(), sync::kMaxAas); }

std::string Aas(const sync::SyncModel& model) {
  return Array(
      HeldAas(model),
      [&](int aa) {
        return "{\"rpn\": " + std::to_string(model.AaRpn(aa)) +
               ", \"fps\": " + std::to_string(model.AaFps(aa)) +
               ", \"fpn\": " + std::to_string(model.AaFpn(aa)) + "}";
      },
      ",\n    ");
}

std::string Cells(const sync::SyncModel& model) {
  std::string text = "[";
  for (int from = 0; from < HeldAas(model); ++from) {
    for (int to = 0; to < HeldAas(model); ++to) {
      const sync::PhaseCell& cell = model.Cell(from, to);
      if (cell.Count < 1) {
        continue;
      }
      text += text.size() == 1 ? "" : ",\n    ";
      text +=
          "{\"from\": " + std::to_string(from) + ", \"to\": " + std::to_string(to) +
          ", \"sum\": " + std::to_string(cell.Sum) + ", \"count\": " + std::to_string(cell.Count) +
          ", \"max\": " + std::to_string(cell.Max) + ", \"min\": " + std::to_string(cell.Min) + "}";
    }
  }
  return text + "]";
}

template <typename CellText>
std::string GridRows(const sync::GridCells& grid, CellText cellText) {
  return Array(
      grid.Rows(),
      [&](int row) {
        return Array(
            grid.Columns(), [&](int column) { return cellText(row, column); }, ", ");
      },
      ",\n      ");
}

}  // namespace

std::string JsonResults(const app::Session& session, const sync::GridCells& grid,
                        bool gridComplete) {
  const sync::SyncModel& model = session.Model();
  std::string text = "{\"reports\": " + std::to_string(model.ReportCount());
  text += ", \"abandoned\": " + std::to_string(session.Parser().AbandonedCount());
  text += ",\n  \"aas\": " + Aas(model);
  text += ",\n  \"cells\": " + Cells(model);
  text += ",\n  \"grid\": {\"complete\": ";
  text += gridComplete ? "true" : "false";
  text += ",\n    \"text\": ";
  // A cell's text is made of digits, signs, brackets and "RPN": nothing in it needs escaping.
  text += GridRows(grid, [&](int row, int column) { return Quoted(grid.Text(row, column)); });
  text += ",\n    \"colour\": ";
  text += GridRows(
      grid, [&](int row, int column) { return ColourText(grid.At(row, column).background); });
  text += "}}\n";
  return text;
}

}  // namespace kelvara::cli
