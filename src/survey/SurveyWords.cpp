#include "survey/SurveyWords.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "survey/Figures.h"

namespace kelvara::survey {
namespace {

using Words = std::vector<std::string>;

/// More names than this would make a sentence too long.
constexpr std::size_t kMostNames = 4;

std::string Name(const SurveyResult& survey, int antenna, const sync::DisplayOptions& options) {
  return options.RpnText(survey.Antenna(antenna).rpn);
}

/// "3 antennas", "1 antenna".
std::string Counted(std::size_t count, const std::string& singular, const std::string& plural) {
  return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

/// "a, b and c"; a list that is too long ends in "and 9 more".
std::string Listed(Words names) {
  if (names.size() > kMostNames + 1) {
    const std::size_t more = names.size() - kMostNames;
    names.resize(kMostNames);
    names.push_back(std::to_string(more) + " more");
  }
  std::string text;
  for (std::size_t name = 0; name < names.size(); ++name) {
    if (name > 0) {
      text += name + 1 == names.size() ? " and " : ", ";
    }
    text += names[name];
  }
  return text;
}

bool IsNearStep(const SurveyAntenna& antenna) { return antenna.aaSyncLow != antenna.aaSyncHigh; }

/// The antennas that share a pair with this one and are near a step.
Words NeighboursNearStep(const SurveyResult& survey, int antenna,
                         const sync::DisplayOptions& options) {
  Words names;
  for (const SurveyPair& pair : survey.pairs) {
    if (pair.a != antenna && pair.b != antenna) {
      continue;
    }
    const int other = pair.a == antenna ? pair.b : pair.a;
    if (IsNearStep(survey.Antenna(other))) {
      names.push_back(Name(survey, other, options));
    }
  }
  return names;
}

/// Why standing at an antenna helps.
std::string Reason(const SurveyResult& survey, int place, const sync::DisplayOptions& options) {
  const SurveyAntenna& antenna = survey.Antenna(place);
  Words reasons;
  if (!antenna.stoodAt) {
    reasons.emplace_back("no beltpack has stood there yet");
  }
  const bool isUncertain = IsNearStep(antenna) && antenna.pairs > 0;
  const Words neighbours = NeighboursNearStep(survey, place, options);
  if (isUncertain || !neighbours.empty()) {
    std::string uncertain = isUncertain ? "its own AA Sync units" : "the AA Sync units";
    if (!neighbours.empty()) {
      uncertain += std::string(isUncertain ? " and those" : "") + " of its neighbour" +
                   (neighbours.size() == 1 ? " " : "s ") + Listed(neighbours);
    }
    reasons.push_back(uncertain + " are uncertain");
  }
  if (reasons.empty()) {
    reasons.emplace_back("more readings there lower the remaining errors most");
  }
  return reasons.size() == 1 ? reasons.front() : reasons[0] + ", and " + reasons[1];
}

}  // namespace

std::string AntennaRemark(const SurveyResult& survey, int antenna,
                          const sync::DisplayOptions& options) {
  const SurveyAntenna& figures = survey.Antenna(antenna);
  const int reference = survey.summary.references[static_cast<std::size_t>(figures.part)];
  std::string remark(StatusText(figures.status));
  if (figures.status == AntennaStatus::Apart && reference != antenna) {
    remark += ", from " + Name(survey, reference, options);
  } else if (reference == antenna && figures.pairs > 0) {
    remark += ", reference";
  }
  return remark + (SurveyResult::ReportDiffers(figures) ? ", report differs" : "");
}

std::string_view StatusMeaning(AntennaStatus status) {
  switch (status) {
    case AntennaStatus::Apart:
      return "Not connected to the main part of the network.";
    case AntennaStatus::Suspect:
      return "One of its pairs contradicts the others and could not be left out.";
    case AntennaStatus::Unchecked:
      return "Too few pairs to notice a wrong one.";
    case AntennaStatus::NearStep:
      return "Its AA Sync units may be one more or one less.";
    case AntennaStatus::Settled:
      return "Its AA Sync units are certain.";
  }
  return "";
}

std::string PairMarks(const SurveyPair& pair) {
  Words marks;
  if (pair.suspect) {
    marks.emplace_back(pair.rejected ? "left out" : "in doubt");
  }
  if (pair.bridge) {
    marks.emplace_back("bridge");
  }
  if (pair.countAb == 0 || pair.countBa == 0) {
    marks.emplace_back("one way");
  }
  if (pair.thin) {
    marks.emplace_back("thin");
  }
  std::string text;
  for (const std::string& mark : marks) {
    text += (text.empty() ? "" : ", ") + mark;
  }
  return text;
}

std::string SummaryWords(const SurveyResult& survey, bool lengthGiven,
                         const sync::DisplayOptions& options) {
  const SurveySummary& summary = survey.summary;
  if (survey.antennas.empty()) {
    return "No antennas yet. The survey follows the reports as they arrive.";
  }
  std::string text =
      Counted(survey.antennas.size(), "antenna", "antennas") + ", " +
      std::to_string(summary.settled) + " settled; " + std::to_string(survey.pairs.size()) +
      " of " + Counted(static_cast<std::size_t>(summary.pairsPossible), "pair", "pairs") + ", " +
      std::to_string(summary.oneWay) + " one-way, " + std::to_string(summary.thin) + " thin, " +
      std::to_string(survey.Suspects().size()) + " suspect. ";
  if (summary.parts > 1) {
    text += "The network is in " + std::to_string(summary.parts) +
            " parts, whose lengths cannot be compared. ";
  }
  const int reference = summary.references[static_cast<std::size_t>(summary.mainPart)];
  const std::string name = Name(survey, reference, options);
  if (lengthGiven) {
    return text + "Lengths rest on the length given for " + name + ": if it is wrong, all are.";
  }
  return text + "Only differences can be observed: lengths are above that of " + name + ".";
}

std::string NextWords(const SurveyResult& survey, const sync::DisplayOptions& options) {
  if (survey.antennas.empty()) {
    return "Stand at any antenna with the beltpack: the survey begins with the first reports.";
  }
  if (survey.next.empty()) {
    return survey.antennas.size() == 1
               ? "Stand where the beltpack hears a second antenna, because one alone has nothing "
                 "to be compared with."
               : "No place would improve the survey by a noticeable amount.";
  }
  const int place = survey.next.front().antenna;
  std::string text = "Stand next at " + Name(survey, place, options);
  Words others;
  for (std::size_t other = 1; other < survey.next.size(); ++other) {
    others.push_back(Name(survey, survey.next[other].antenna, options));
  }
  if (!others.empty()) {
    text += " (after that, at " + Listed(others) + ")";
  }
  return text + " for three reports: " + Reason(survey, place, options) + ".";
}

std::string ChangeWords(const std::vector<DelayChange>& changes, const std::string& earlier,
                        const sync::DisplayOptions& options) {
  Words changed;
  for (const DelayChange& change : changes) {
    if (change.changed) {
      changed.push_back(options.RpnText(change.rpn) + " is " +
                        Decimals(std::abs(change.Metres()), 0) + " m " +
                        (change.phase > 0.0 ? "longer" : "shorter"));
    }
  }
  const std::string since = "Since " + earlier + ": ";
  if (changes.empty()) {
    return since + "no antenna is in both.";
  }
  if (changed.empty()) {
    return since + (changes.size() == 1 ? "the one antenna in both has nothing to change against."
                                        : "none of the " + std::to_string(changes.size()) +
                                              " antennas in both has changed.");
  }
  return since + Listed(changed) + ", of " + Counted(changes.size(), "antenna", "antennas") +
         " in both.";
}

std::string NetworkWords(const SurveyResult& survey, const sync::DisplayOptions& options) {
  const SurveySummary& summary = survey.summary;
  if (survey.antennas.empty()) {
    return "No antennas.";
  }
  const auto pairName = [&](int a, int b) {
    return Name(survey, a, options) + " with " + Name(survey, b, options);
  };
  std::string text = Counted(survey.antennas.size(), "antenna", "antennas") + " on a circle, " +
                     Counted(survey.pairs.size(), "pair", "pairs") + " as lines, " +
                     Counted(static_cast<std::size_t>(summary.parts), "part", "parts") + ".";
  const auto add = [&text](const std::string& title, const Words& names) {
    if (!names.empty()) {
      text += " " + title + ": " + Listed(names) + ".";
    }
  };
  Words open;
  for (std::size_t antenna = 0; antenna < survey.antennas.size(); ++antenna) {
    if (survey.antennas[antenna].status != AntennaStatus::Settled) {
      open.push_back(Name(survey, static_cast<int>(antenna), options));
    }
  }
  Words suspects;
  Words oneWay;
  for (const SurveyPair& pair : survey.pairs) {
    if (pair.suspect) {
      suspects.push_back(pairName(pair.a, pair.b));
    }
    if (pair.countAb == 0 || pair.countBa == 0) {
      oneWay.push_back(pairName(pair.a, pair.b));
    }
  }
  Words bridges;
  for (const auto& [a, b] : summary.bridges) {
    bridges.push_back(pairName(a, b));
  }
  Words places;
  for (const SurveyPlace& place : survey.next) {
    places.push_back(Name(survey, place.antenna, options));
  }
  add("Not settled", open);
  add("Suspect", suspects);
  add("Bridges", bridges);
  add("One way", oneWay);
  add("Stand next at", places);
  return text;
}

}  // namespace kelvara::survey
