#include "survey/SurveyRows.h"

#include <algorithm>
#include <string>

#include "platform/qt/Text.h"
#include "survey/Figures.h"
#include "survey/SurveyWords.h"

namespace kelvara::survey {
namespace {

QString Text(std::string_view text) { return qt::ToQString(text); }

SurveyCell Number(double value, int decimals) { return {Text(Decimals(value, decimals)), value}; }

SurveyCell Nothing() { return {QStringLiteral("-"), std::nullopt}; }

SurveyCell ChangeCell(std::int16_t rpn, const std::vector<DelayChange>& changes) {
  const auto found = std::find_if(changes.begin(), changes.end(),
                                  [rpn](const DelayChange& change) { return change.rpn == rpn; });
  if (found == changes.end()) {
    return Nothing();
  }
  const double metres = found->Metres();
  std::string text = Decimals(metres, 0);
  if (text[0] != '-' && text != "0") {
    text.insert(0, "+");
  }
  return {Text(text + (found->changed ? " changed" : "")), metres};
}

/// The mean phase of a cell and its number of readings.
SurveyCell PhaseCell(const sync::SyncModel& model, int from, int to, std::int32_t count) {
  const sync::PhaseCell& cell = model.Cell(from, to);
  if (count < 1 || cell.Count < 1) {
    return Nothing();
  }
  return {Text(Decimals(cell.Mean(), 1) + " (" + std::to_string(cell.Count) + ")"), cell.Mean()};
}

SurveyCell Optional(const std::optional<double>& value, int decimals) {
  return value ? Number(*value, decimals) : Nothing();
}

}  // namespace

std::vector<SurveyColumn> AntennaColumns() {
  return {
      {QStringLiteral("RPN"), QStringLiteral("The antenna, in the chosen RPN base.")},
      {QStringLiteral("Pairs"), QStringLiteral("Antennas that it was measured against.")},
      {QStringLiteral("Readings"),
       QStringLiteral("Readings of all its pairs, in both directions.")},
      {QStringLiteral("Length, m"),
       QStringLiteral("Estimated from all readings. A constant delay inside an antenna looks like "
                      "cable.")},
      {QStringLiteral("Error, m"), QStringLiteral("Standard error of the length.")},
      {QStringLiteral("AA Sync"),
       QStringLiteral("AA Sync units of the length; two values where either may be right.")},
      {QStringLiteral("Report, m"),
       QStringLiteral("Length in the AA Cable Length Report of the same readings.")},
      {QStringLiteral("Change, m"), QStringLiteral("Change since the earlier session.")},
      {QStringLiteral("Status"), QStringLiteral("How far the length can be relied on."), false},
  };
}

std::vector<SurveyColumn> PairColumns() {
  return {
      {QStringLiteral("With"), QStringLiteral("The other antenna of the pair.")},
      {QStringLiteral("From here"),
       QStringLiteral("Mean phase of the other antenna while synchronised to this one, in RFPS "
                      "units, and the number of readings.")},
      {QStringLiteral("From there"),
       QStringLiteral("Mean phase of this antenna while synchronised to the other one, in RFPS "
                      "units, and the number of readings.")},
      {QStringLiteral("Residual, m"),
       QStringLiteral("By how much the pair contradicts the adjusted lengths.")},
      {QStringLiteral("w"), QStringLiteral("The residual in its standard deviations.")},
      {QStringLiteral("Marks"),
       QStringLiteral("Left out or in doubt: contradicts the others. Bridge: nothing checks it. "
                      "One way: carries an unknown path. Thin: fewer than three readings."),
       false},
  };
}

std::vector<SurveyRow> AntennaRows(const SurveyResult& survey,
                                   const std::vector<DelayChange>& changes,
                                   const sync::DisplayOptions& options) {
  std::vector<SurveyRow> rows;
  rows.reserve(survey.antennas.size());
  for (std::size_t index = 0; index < survey.antennas.size(); ++index) {
    const SurveyAntenna& antenna = survey.antennas[index];
    // Without a pair there is nothing that a length could be measured from.
    const bool hasLength = antenna.pairs > 0;
    SurveyRow row{.id = antenna.rpn,
                  .cells = {},
                  .toolTip = Text(StatusMeaning(antenna.status)),
                  .status = antenna.status};
    row.cells = {
        {Text(options.RpnText(antenna.rpn)), antenna.rpn},
        Number(antenna.pairs, 0),
        Number(static_cast<double>(antenna.readings), 0),
        hasLength ? Number(antenna.metres, 0) : Nothing(),
        hasLength ? Number(antenna.metresStandardError, 1) : Nothing(),
        hasLength ? SurveyCell{Text(RangeText(antenna.aaSyncLow, antenna.aaSyncHigh)),
                               static_cast<double>(antenna.aaSync)}
                  : Nothing(),
        antenna.reportMetres ? Number(*antenna.reportMetres, 0) : Nothing(),
        ChangeCell(antenna.rpn, changes),
        {Text(AntennaRemark(survey, static_cast<int>(index), options)),
         static_cast<double>(antenna.status)},
    };
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<SurveyRow> PairRows(const SurveyResult& survey, const sync::SyncModel& model,
                                int antenna, const sync::DisplayOptions& options) {
  std::vector<SurveyRow> rows;
  for (const SurveyPair& pair : survey.pairs) {
    if (pair.a != antenna && pair.b != antenna) {
      continue;
    }
    const bool isFirst = pair.a == antenna;
    const int other = isFirst ? pair.b : pair.a;
    const std::int16_t rpn = survey.Antenna(other).rpn;
    const double residual = (isFirst ? 1.0 : -1.0) * pair.residual * kMetresPerRfpsUnit;
    const std::string marks = PairMarks(pair);
    SurveyRow row{.id = rpn, .cells = {}, .toolTip = {}, .status = {}};
    row.cells = {{Text(options.RpnText(rpn)), rpn},
                 PhaseCell(model, antenna, other, isFirst ? pair.countAb : pair.countBa),
                 PhaseCell(model, other, antenna, isFirst ? pair.countBa : pair.countAb),
                 Number(residual, 0),
                 Optional(pair.w ? std::optional(isFirst ? *pair.w : -*pair.w) : pair.w, 1),
                 {Text(marks), marks.empty()  ? 1.0
                               : pair.suspect ? -1.0
                                              : 0.0}};
    if (pair.suspect) {
      row.status = AntennaStatus::Suspect;
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace kelvara::survey
