#include <algorithm>
#include <vector>

#include "survey/Figures.h"
#include "survey/HtmlText.h"
#include "survey/SurveyReportParts.h"

namespace kelvara::survey {
namespace {

/// The columns that fit across a printed page.
constexpr int kMostColumns = 17;

/// Which cells belong to a suspect pair, by both indices.
std::vector<bool> SuspectCells(const SurveyResult& survey) {
  const std::size_t antennas = survey.antennas.size();
  std::vector<bool> suspect(antennas * antennas, false);
  for (const std::size_t index : survey.Suspects()) {
    const auto a = static_cast<std::size_t>(survey.pairs[index].a);
    const auto b = static_cast<std::size_t>(survey.pairs[index].b);
    suspect[a * antennas + b] = true;
    suspect[b * antennas + a] = true;
  }
  return suspect;
}

std::string CellHtml(const sync::SyncModel& model, int from, int to, bool suspect) {
  if (from == to) {
    return "<td class=\"same\"></td>";
  }
  const sync::PhaseCell& cell = model.Cell(from, to);
  if (cell.Count <= 0) {
    return "<td></td>";
  }
  const std::string mean = Decimals(cell.Mean(), 1);
  return suspect ? "<td class=\"suspect\">" + mean + "!</td>" : "<td>" + mean + "</td>";
}

}  // namespace

std::string MatrixHtml(const sync::SyncModel& model, const SurveyResult& survey) {
  const auto antennas = static_cast<int>(survey.antennas.size());
  const int blocks = (antennas + kMostColumns - 1) / kMostColumns;
  const std::vector<bool> suspect = SuspectCells(survey);
  std::string html;
  for (int block = 0; block < blocks; ++block) {
    const int first = antennas * block / blocks;
    const int last = antennas * (block + 1) / blocks;
    html += "<table class=\"matrix\"><thead><tr><th scope=\"col\">RPN</th>";
    for (int to = first; to < last; ++to) {
      html += "<th scope=\"col\">" + RpnText(survey.Antenna(to).rpn) + "</th>";
    }
    html += "</tr></thead><tbody>\n";
    for (int from = 0; from < antennas; ++from) {
      html += "<tr><th scope=\"row\">" + RpnText(survey.Antenna(from).rpn) + "</th>";
      for (int to = first; to < last; ++to) {
        html += CellHtml(model, from, to,
                         suspect[static_cast<std::size_t>(from) * survey.antennas.size() +
                                 static_cast<std::size_t>(to)]);
      }
      html += "</tr>\n";
    }
    html += kHtmlTableEnd;
  }
  return html;
}

}  // namespace kelvara::survey
