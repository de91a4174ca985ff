#include "cli/SurveyJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace kelvara::cli {
namespace {

using survey::DelayChange;
using survey::SurveyAntenna;
using survey::SurveyPair;
using survey::SurveyResult;

template <typename Number>
QJsonValue NumberOrNull(const std::optional<Number>& number) {
  return number ? QJsonValue(*number) : QJsonValue::Null;
}

QJsonValue Rpn(const SurveyResult& survey, int antenna) { return survey.Antenna(antenna).rpn; }

QJsonObject Summary(const SurveyResult& survey) {
  const survey::SurveySummary& summary = survey.summary;
  QJsonArray bridges;
  for (const auto& [a, b] : summary.bridges) {
    bridges.append(QJsonArray{Rpn(survey, a), Rpn(survey, b)});
  }
  const auto rpns = [&](const std::vector<int>& antennas) {
    QJsonArray list;
    for (const int antenna : antennas) {
      list.append(Rpn(survey, antenna));
    }
    return list;
  };
  return {{"reports", summary.reports},
          {"antennas", static_cast<qint64>(survey.antennas.size())},
          {"parts", summary.parts},
          {"pairs", static_cast<qint64>(survey.pairs.size())},
          {"pairs_possible", summary.pairsPossible},
          {"one_way", summary.oneWay},
          {"thin", summary.thin},
          {"bridges", bridges},
          {"articulation", rpns(summary.articulation)},
          {"dof", summary.degreesOfFreedom},
          {"sigma_reading", summary.sigmaReading},
          {"sigma_pair", summary.sigmaPair},
          {"path_excess", NumberOrNull(summary.pathExcess)},
          {"path_scatter", NumberOrNull(summary.pathScatter)},
          {"critical", summary.critical},
          {"settled", summary.settled},
          {"reference", rpns(summary.references)}};
}

QJsonObject Antenna(const SurveyAntenna& antenna) {
  const std::string_view status = survey::StatusText(antenna.status);
  return {{"rpn", antenna.rpn},
          {"part", antenna.part},
          {"pairs", antenna.pairs},
          {"readings", qint64{antenna.readings}},
          {"stood_at", antenna.stoodAt},
          {"phase", antenna.phase},
          {"se", antenna.standardError},
          {"metres", antenna.metres},
          {"metres_se", antenna.metresStandardError},
          {"aa_sync", qint64{antenna.aaSync}},
          {"aa_sync_low", qint64{antenna.aaSyncLow}},
          {"aa_sync_high", qint64{antenna.aaSyncHigh}},
          {"status", QString::fromUtf8(status.data(), static_cast<qsizetype>(status.size()))},
          {"report_metres", NumberOrNull(antenna.reportMetres)}};
}

QJsonObject Pair(const SurveyResult& survey, const SurveyPair& pair) {
  return {{"a", Rpn(survey, pair.a)},
          {"b", Rpn(survey, pair.b)},
          {"n_ab", pair.countAb},
          {"n_ba", pair.countBa},
          {"difference", pair.difference},
          {"residual", pair.residual},
          {"redundancy", pair.redundancy},
          {"w", NumberOrNull(pair.w)},
          {"smallest_detectable", NumberOrNull(pair.smallestDetectable)},
          {"path_excess", NumberOrNull(pair.pathExcess)},
          {"direction_t", NumberOrNull(pair.directionT)},
          {"thin", pair.thin},
          {"bridge", pair.bridge},
          {"rejected", pair.rejected},
          {"suspect", pair.suspect}};
}

QJsonArray Changes(const std::vector<DelayChange>& changes) {
  QJsonArray list;
  for (const DelayChange& change : changes) {
    list.append(QJsonObject{{"rpn", change.rpn},
                            {"metres", change.Metres()},
                            {"t", change.t},
                            {"changed", change.changed}});
  }
  return list;
}

QJsonArray Drift(const std::vector<DelayChange>& drift) {
  QJsonArray list;
  for (const DelayChange& change : drift) {
    list.append(QJsonObject{{"rpn", change.rpn}, {"phase", change.phase}, {"t", change.t}});
  }
  return list;
}

}  // namespace

std::string SurveyJson(const SurveyOutput& output) {
  const SurveyResult& survey = output.survey;
  QJsonArray antennas;
  for (const SurveyAntenna& antenna : survey.antennas) {
    antennas.append(Antenna(antenna));
  }
  QJsonArray pairs;
  for (const SurveyPair& pair : survey.pairs) {
    pairs.append(Pair(survey, pair));
  }
  QJsonArray suspects;
  for (const std::size_t index : survey.Suspects()) {
    suspects.append(Pair(survey, survey.pairs[index]));
  }
  QJsonArray next;
  for (const survey::SurveyPlace& place : survey.next) {
    next.append(QJsonObject{{"stand_at", Rpn(survey, place.antenna)}, {"gain", place.gain}});
  }
  QJsonObject document{{"summary", Summary(survey)},
                       {"antennas", antennas},
                       {"pairs", pairs},
                       {"suspects", suspects},
                       {"next", next}};
  if (output.changes) {
    document.insert("changes", Changes(*output.changes));
  }
  if (output.drift) {
    document.insert("drift", Drift(*output.drift));
  }
  return QJsonDocument(document).toJson(QJsonDocument::Compact).toStdString() + "\n";
}

}  // namespace kelvara::cli
