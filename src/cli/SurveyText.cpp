#include "cli/SurveyText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>
#include <string>

#include "survey/Figures.h"
#include "survey/SurveyWords.h"

namespace kelvara::cli {
namespace {

using survey::Decimals;
using survey::DelayChange;
using survey::RpnText;
using survey::SurveyAntenna;
using survey::SurveyPair;
using survey::SurveyResult;

constexpr std::size_t kColumns = 8;
using Row = std::array<std::string, kColumns>;

std::string Rpn(const SurveyResult& survey, int antenna) {
  return RpnText(survey.Antenna(antenna).rpn);
}

std::string PairName(const SurveyResult& survey, int a, int b) {
  return Rpn(survey, a) + "-" + Rpn(survey, b);
}

/// ": 2 (01, 07)", or ": 0".
template <typename Items, typename Name>
std::string Listed(const Items& items, Name name) {
  std::string text;
  for (const auto& item : items) {
    text += (text.empty() ? " (" : ", ") + name(item);
  }
  return ": " + std::to_string(items.size()) + text + (text.empty() ? "" : ")");
}

std::string TotalsLine(const SurveyResult& survey) {
  const survey::SurveySummary& summary = survey.summary;
  return "Reports: " + std::to_string(summary.reports) +
         ", antennas: " + std::to_string(survey.antennas.size()) +
         ", settled: " + std::to_string(summary.settled) +
         ", pairs: " + std::to_string(survey.pairs.size()) + " of " +
         std::to_string(summary.pairsPossible) + ", one-way: " + std::to_string(summary.oneWay) +
         ", thin: " + std::to_string(summary.thin) + "\n";
}

std::string NetworkLine(const SurveyResult& survey) {
  const survey::SurveySummary& summary = survey.summary;
  std::string line = "Network: parts: " + std::to_string(summary.parts);
  line += ", bridges" + Listed(summary.bridges, [&](const std::pair<int, int>& bridge) {
            return PairName(survey, bridge.first, bridge.second);
          });
  line += ", antennas that join" +
          Listed(summary.articulation, [&](int antenna) { return Rpn(survey, antenna); });
  line += "; in RFPS units: reading +-" + Decimals(summary.sigmaReading, 2) + ", pair +-" +
          Decimals(summary.sigmaPair, 2) + ", path ";
  line += summary.pathExcess ? Decimals(*summary.pathExcess, 2) + " +-" +
                                   Decimals(summary.pathScatter.value_or(0.0), 2)
                             : "unknown";
  return line + "\n";
}

Row AntennaRow(const SurveyResult& survey, int index) {
  const SurveyAntenna& antenna = survey.Antenna(index);
  // Without a pair there is nothing that a length could be measured from.
  const bool hasLength = antenna.pairs > 0;
  return {RpnText(antenna.rpn),
          std::to_string(antenna.pairs),
          std::to_string(antenna.readings),
          hasLength ? Decimals(antenna.metres, 0) : "-",
          hasLength ? Decimals(antenna.metresStandardError, 0) : "-",
          hasLength ? survey::RangeText(antenna.aaSyncLow, antenna.aaSyncHigh) : "-",
          antenna.reportMetres ? std::to_string(*antenna.reportMetres) : "-",
          survey::AntennaRemark(survey, index, {})};
}

void PrintAntennas(const SurveyResult& survey, std::ostream& out) {
  std::vector<Row> rows = {
      {"RPN", "Pairs", "Readings", "Metres", "+-", "AA Sync", "Report", "Status"}};
  for (std::size_t antenna = 0; antenna < survey.antennas.size(); ++antenna) {
    rows.push_back(AntennaRow(survey, static_cast<int>(antenna)));
  }
  std::array<std::size_t, kColumns> widths{};
  for (const Row& row : rows) {
    for (std::size_t column = 0; column < kColumns; ++column) {
      widths[column] = std::max(widths[column], row[column].size());
    }
  }
  for (const Row& row : rows) {
    for (std::size_t column = 0; column + 1 < kColumns; ++column) {
      out << std::string(widths[column] - row[column].size(), ' ') << row[column] << "  ";
    }
    out << row.back() << '\n';
  }
}

void PrintSuspect(const SurveyResult& survey, const SurveyPair& pair, std::ostream& out) {
  out << "Suspect: " << PairName(survey, pair.a, pair.b)
      << (pair.rejected ? ", left out" : ", in doubt, but cannot be left out") << ", off by "
      << Decimals(pair.residual * survey::kMetresPerRfpsUnit, 0) << " m";
  if (pair.w) {
    out << ", w " << Decimals(*pair.w, 1);
  }
  if (pair.directionT) {
    out << ", direction " << Decimals(*pair.directionT, 1);
  }
  out << '\n';
}

void PrintChange(std::string_view title, const DelayChange& change, std::ostream& out) {
  out << title << ": " << RpnText(change.rpn) << " is " << Decimals(std::abs(change.Metres()), 0)
      << (change.phase > 0.0 ? " m longer" : " m shorter") << ", t " << Decimals(change.t, 1)
      << '\n';
}

void PrintChanges(const SurveyOutput& output, std::ostream& out) {
  if (output.changes) {
    bool any = false;
    for (const DelayChange& change : *output.changes) {
      if (change.changed) {
        PrintChange("Changed", change, out);
        any = true;
      }
    }
    if (!any) {
      out << "Changed: none of " << output.changes->size() << '\n';
    }
  }
  if (output.drift) {
    for (const DelayChange& change : *output.drift) {
      PrintChange("Drift during the recording", change, out);
    }
  }
}

void PrintNext(const SurveyResult& survey, std::ostream& out) {
  std::string places;
  for (const survey::SurveyPlace& place : survey.next) {
    places += (places.empty() ? "" : ", ") + Rpn(survey, place.antenna) + " (gain " +
              survey::Significant(place.gain, 2) + ")";
  }
  if (!places.empty()) {
    out << "Stand next at: " << places << '\n';
  }
}

}  // namespace

void PrintSurvey(const SurveyOutput& output, std::ostream& out) {
  const SurveyResult& survey = output.survey;
  out << TotalsLine(survey) << NetworkLine(survey);
  if (!survey.antennas.empty()) {
    PrintAntennas(survey, out);
  }
  const std::vector<std::size_t> suspects = survey.Suspects();
  for (const std::size_t index : suspects) {
    PrintSuspect(survey, survey.pairs[index], out);
  }
  if (suspects.empty()) {
    out << "Suspect: none\n";
  }
  PrintChanges(output, out);
  PrintNext(survey, out);
}

}  // namespace kelvara::cli
