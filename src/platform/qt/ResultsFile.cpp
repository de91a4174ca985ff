#include "platform/qt/ResultsFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdint>
#include <limits>
#include <optional>

namespace kelvara::qt {
namespace {

/// The whole number of a member, if it is one and fits.
template <typename Integer>
std::optional<Integer> WholeNumber(const QJsonValue& value) {
  const double number = value.toDouble(0.5);
  if (!value.isDouble() || number < std::numeric_limits<Integer>::min() ||
      number > std::numeric_limits<Integer>::max() ||
      number != static_cast<double>(static_cast<Integer>(number))) {
    return std::nullopt;
  }
  return static_cast<Integer>(number);
}

bool AddAntenna(const QJsonObject& antenna, sync::SyncModel& model) {
  const auto rpn = WholeNumber<std::int16_t>(antenna["rpn"]);
  const auto fps = WholeNumber<std::int16_t>(antenna["fps"]);
  const auto fpn = WholeNumber<std::int16_t>(antenna["fpn"]);
  if (!rpn || !fps || !fpn) {
    return false;
  }
  // An RPN that is listed twice is found instead of added.
  const int before = model.AaCount();
  return model.FindOrAddAa(*rpn, *fps, *fpn) == before;
}

bool SetCell(const QJsonObject& values, sync::SyncModel& model) {
  const auto from = WholeNumber<std::int32_t>(values["from"]);
  const auto to = WholeNumber<std::int32_t>(values["to"]);
  const auto sum = WholeNumber<std::int32_t>(values["sum"]);
  const auto count = WholeNumber<std::int32_t>(values["count"]);
  const auto max = WholeNumber<std::int16_t>(values["max"]);
  const auto min = WholeNumber<std::int16_t>(values["min"]);
  const auto isAntenna = [&](const std::optional<std::int32_t>& index) {
    return index && *index >= 0 && *index < model.AaCount();
  };
  if (!isAntenna(from) || !isAntenna(to) || from == to || !sum || !count || *count < 1 || !max ||
      !min || *max < *min || model.Cell(*from, *to).Count > 0) {
    return false;
  }
  model.SetCell(*from, *to, {.Sum = *sum, .Count = *count, .Max = *max, .Min = *min});
  return true;
}

}  // namespace

bool ReadResults(const std::string& text, sync::SyncModel& model) {
  model.Clear();
  const QJsonObject results = QJsonDocument::fromJson(QByteArray::fromStdString(text)).object();
  const auto reports = WholeNumber<std::int32_t>(results["reports"]);
  if (!reports || *reports < 0 || !results["aas"].isArray() || !results["cells"].isArray()) {
    return false;
  }
  model.SetReportCount(*reports);
  const QJsonArray antennas = results["aas"].toArray();
  if (antennas.size() > static_cast<qsizetype>(sync::kMaxAas)) {
    return false;
  }
  for (const QJsonValue& antenna : antennas) {
    if (!AddAntenna(antenna.toObject(), model)) {
      return false;
    }
  }
  for (const QJsonValue& cell : results["cells"].toArray()) {
    if (!SetCell(cell.toObject(), model)) {
      return false;
    }
  }
  return true;
}

}  // namespace kelvara::qt
