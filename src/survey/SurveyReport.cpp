#include "survey/SurveyReport.h"

#include <cmath>
#include <string_view>

#include "help/ProgramTitle.h"
#include "survey/Figures.h"
#include "survey/HtmlText.h"
#include "survey/SurveyReportParts.h"
#include "survey/SurveyWords.h"

namespace kelvara::survey {
namespace {

constexpr std::string_view kStyle =
    "@page { size: A4 landscape; margin: 12mm; }\n"
    "body { font: 10pt/1.35 sans-serif; color: #000; background: #fff; margin: 1em; }\n"
    "h1 { font-size: 16pt; margin: 0 0 .3em; } h2 { font-size: 12pt; margin: 1.2em 0 .4em; "
    "break-after: avoid; } h2 + p { break-after: avoid; }\n"
    "table { border-collapse: collapse; margin: 0 0 1em; }\n"
    "thead { display: table-header-group; } tr { break-inside: avoid; }\n"
    "th, td { border: 1px solid #999; padding: .15em .5em; text-align: right; }\n"
    "thead th { background: #eee; } .words td:last-child, .words th:last-child { text-align: left; "
    "}\n"
    ".matrix { font-size: 8pt; break-before: auto; } .matrix th, .matrix td { padding: .1em .3em; "
    "min-width: 2.8em; }\n"
    "td.same { background: #ccc; } td.suspect { font-weight: bold; }\n"
    ".network { display: flex; gap: 2em; align-items: center; break-inside: avoid; }\n"
    ".picture { width: 165mm; max-width: 62%; }\n"
    ".legend { list-style: none; padding: 0; } .legend svg { vertical-align: middle; }\n"
    "line { stroke: #555; } line.twoway { stroke: #999; } line.bridge { stroke: #06c; }\n"
    "line.rejected, line.doubtful { stroke: #c00; } .mark { stroke: #c00; stroke-width: 2.5; }\n"
    "circle { stroke: #000; stroke-width: 1.5; fill: #fff; } circle.settled { fill: #000; }\n"
    "circle.ring { fill: none; stroke-width: 2.5; }\n"
    ".picture text { font-size: 13px; text-anchor: middle; } .datum { text-decoration: underline; "
    "}\n"
    "p { max-width: 60em; } footer { font-size: 8pt; margin-top: 1.5em; }\n"
    "* { print-color-adjust: exact; -webkit-print-color-adjust: exact; }\n";

constexpr std::string_view kMeaning =
    "<p>Each length is the best estimate from all readings at once; behind it is its standard "
    "error. "
    "Only differences between antennas can be observed: lengths are above that of the reference, "
    "and a "
    "wrong length given for the reference shifts all of them. A constant delay inside an antenna "
    "looks "
    "like cable. <b>Settled</b> means that the AA Sync units are certain; <b>near a step</b>, that "
    "one "
    "more or one less may be right; <b>suspect</b>, that a reading contradicts the others; "
    "<b>unchecked</b>, that too few readings are there to notice a wrong one; <b>apart</b>, that "
    "no "
    "reading connects the antenna to the main part of the network. A pair that alone connects two "
    "parts, "
    "a bridge, cannot be checked, and a single triangle cannot show which of its sides is wrong. "
    "Pairs "
    "heard in one direction only contain an unknown path.</p>\n";

std::string Rpn(const SurveyResult& survey, int antenna) {
  return RpnText(survey.Antenna(antenna).rpn);
}

std::string SummaryHtml(const SurveyReportContents& contents) {
  const SurveyResult& survey = contents.survey;
  const SurveySummary& summary = survey.summary;
  std::string html = "<p>";
  if (!contents.source.empty()) {
    html += "From " + Escaped(contents.source) + ". ";
  }
  html += std::to_string(summary.reports) + " reports, " + std::to_string(survey.antennas.size()) +
          " antennas (" + std::to_string(summary.settled) + " settled), " +
          std::to_string(survey.pairs.size()) + " of " + std::to_string(summary.pairsPossible) +
          " pairs (" + std::to_string(summary.oneWay) + " one-way, " +
          std::to_string(summary.thin) + " with fewer than three readings), " +
          std::to_string(summary.parts) + (summary.parts == 1 ? " part, " : " parts, ") +
          std::to_string(summary.bridges.size()) +
          (summary.bridges.size() == 1 ? " bridge. " : " bridges. ");
  html += "Standard deviation of a reading " + Decimals(summary.sigmaReading, 2) + ", of a pair " +
          Decimals(summary.sigmaPair, 2) + ", usual extra path ";
  html += summary.pathExcess ? Decimals(*summary.pathExcess, 2) : "unknown";
  return html + " (RFPS units).</p>\n";
}

std::string AntennasHtml(const SurveyResult& survey) {
  std::string html =
      HtmlTableStart("words", {"RPN", "Pairs", "Readings", "Length, m", "Standard error, m",
                               "AA Sync units", "Length in the report, m", "Status"});
  for (std::size_t index = 0; index < survey.antennas.size(); ++index) {
    const SurveyAntenna& antenna = survey.antennas[index];
    // Without a pair there is nothing that a length could be measured from.
    const bool hasLength = antenna.pairs > 0;
    html += HtmlRow({RpnText(antenna.rpn), std::to_string(antenna.pairs),
                     std::to_string(antenna.readings), hasLength ? Decimals(antenna.metres, 0) : "",
                     hasLength ? Decimals(antenna.metresStandardError, 1) : "",
                     hasLength ? RangeText(antenna.aaSyncLow, antenna.aaSyncHigh) : "",
                     antenna.reportMetres ? std::to_string(*antenna.reportMetres) : "",
                     AntennaRemark(survey, static_cast<int>(index), {})});
  }
  return html + std::string(kHtmlTableEnd);
}

std::string SuspectsHtml(const SurveyResult& survey) {
  const std::vector<std::size_t> suspects = survey.Suspects();
  if (suspects.empty()) {
    return "<p>No pair contradicts the others.</p>\n";
  }
  const auto figure = [](const std::optional<double>& value) {
    return value ? Decimals(*value, 1) : std::string();
  };
  std::string html =
      HtmlTableStart("words", {"Pair", "Readings", "Off by, m", "w", "Direction", "Treatment"});
  for (const std::size_t index : suspects) {
    const SurveyPair& pair = survey.pairs[index];
    html += HtmlRow({Rpn(survey, pair.a) + " and " + Rpn(survey, pair.b),
                     std::to_string(pair.countAb) + " + " + std::to_string(pair.countBa),
                     Decimals(pair.residual * kMetresPerRfpsUnit, 0), figure(pair.w),
                     figure(pair.directionT),
                     pair.rejected ? "left out" : "in doubt, but cannot be left out"});
  }
  html += kHtmlTableEnd;
  return html +
         "<p>w and Direction are the test values of the difference and of the path, in "
         "standard deviations; the limit is " +
         Decimals(survey.summary.critical, 2) + ".</p>\n";
}

std::string ChangeRows(const std::vector<DelayChange>& changes) {
  std::string html = HtmlTableStart("plain", {"RPN", "Change, m", "t"});
  for (const DelayChange& change : changes) {
    if (change.changed) {
      html += HtmlRow({RpnText(change.rpn), Decimals(change.Metres(), 0), Decimals(change.t, 1)});
    }
  }
  return html + std::string(kHtmlTableEnd);
}

std::string ChangesHtml(const SurveyReportContents& contents) {
  const auto anyChanged = [](const std::vector<DelayChange>& changes) {
    for (const DelayChange& change : changes) {
      if (change.changed) {
        return true;
      }
    }
    return false;
  };
  std::string html;
  if (contents.changes != nullptr) {
    html += "<h2>Changes since " + Escaped(contents.older) + "</h2>\n";
    html +=
        anyChanged(*contents.changes)
            ? ChangeRows(*contents.changes)
            : "<p>None of " + std::to_string(contents.changes->size()) + " antennas changed.</p>\n";
  }
  if (contents.drift != nullptr && !contents.drift->empty()) {
    html += "<h2>Changes during the recording</h2>\n" + ChangeRows(*contents.drift);
  }
  return html;
}

std::string NextHtml(const SurveyResult& survey) {
  if (survey.next.empty()) {
    return "<p>There are too few antennas to say.</p>\n";
  }
  std::string html =
      "<p>Three more reports at each of these antennas would help most, the best first: ";
  for (std::size_t place = 0; place < survey.next.size(); ++place) {
    html += (place == 0 ? "<b>" : ", <b>") + Rpn(survey, survey.next[place].antenna) + "</b>";
  }
  return html + ".</p>\n";
}

}  // namespace

std::string SurveyReportHtml(const SurveyReportContents& contents) {
  const SurveyResult& survey = contents.survey;
  std::string html =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<title>Survey of the active antennas</title>\n<style>\n" +
      std::string(kStyle) + "</style>\n</head>\n<body>\n<h1>Survey of the active antennas</h1>\n";
  html += SummaryHtml(contents);
  if (!survey.antennas.empty()) {
    html += "<h2>Antennas</h2>\n" + AntennasHtml(survey) + std::string(kMeaning);
    html += "<h2>Suspect pairs</h2>\n" + SuspectsHtml(survey);
    html += ChangesHtml(contents);
    html += "<h2>Where to stand next</h2>\n" + NextHtml(survey);
    html += "<h2>Network</h2>\n" + NetworkHtml(survey);
    html +=
        "<h2>Mean phases, in RFPS units</h2>\n<p>Row: the antenna that the beltpack was "
        "synchronised to; column: the antenna heard. Suspect pairs are marked \"!\".</p>\n" +
        MatrixHtml(contents.model, survey);
  }
  return html + "<footer>Generated by " + Escaped(help::ProgramTitleAndVersion()) + " on " +
         Escaped(contents.date) + "</footer>\n</body>\n</html>\n";
}

}  // namespace kelvara::survey
