/// survey_proof [FOLDER]: measures the survey and the report on simulated sites against the truth,
/// and prints the results as tables in Markdown. Writes a session of each kind of site to FOLDER.
/// Exits with 1 if a goal is missed.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "proof/SurveyScore.h"

namespace kelvara::bench {
namespace {

constexpr int kSitesOfKind = 100;
constexpr int kSitesOfWalk = 40;
constexpr int kReportsPerAntenna = 6;
constexpr std::array<int, 3> kSizes = {12, 30, 51};

std::string Percent(double part, double whole, int decimals = 1) {
  if (whole == 0.0) {
    return "-";
  }
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.*f %%", decimals, 100.0 * part / whole);
  return text.data();
}

double RootMean(double squares, int count) { return std::sqrt(squares / std::max(count, 1)); }

const char* NameOf(Density density) { return density == Density::Dense ? "dense" : "sparse"; }

const char* NameOf(Disturbance disturbance) {
  switch (disturbance) {
    case Disturbance::BadPair:
      return "a bad pair";
    case Disturbance::Multipath:
      return "multipath";
    case Disturbance::None:
      break;
  }
  return "clean";
}

struct Row {
  SiteKind kind;
  SurveyScore score;
};

void WriteSession(const std::filesystem::path& folder, const SiteKind& kind,
                  const SimulatedSession& session) {
  const std::string name = std::string(NameOf(kind.density)) + ", " + NameOf(kind.disturbance) +
                           ", " + std::to_string(kind.antennas) + ".txt";
  std::ofstream file(folder / name, std::ios::binary);
  file.exceptions(std::ios::failbit | std::ios::badbit);
  file << session.Text() << std::flush;
}

/// Writes no sessions if the folder is empty.
std::vector<Row> MeasureAll(const std::filesystem::path& folder) {
  std::vector<Row> rows;
  std::uint64_t seed = 0;
  for (const Density density : {Density::Dense, Density::Sparse}) {
    for (const Disturbance disturbance :
         {Disturbance::None, Disturbance::BadPair, Disturbance::Multipath}) {
      for (const int antennas : kSizes) {
        Row row{.kind = {.antennas = antennas, .density = density, .disturbance = disturbance},
                .score = {}};
        for (int site = 0; site < kSitesOfKind; ++site) {
          SimulatedSession session(row.kind, ++seed);
          session.Walk(kReportsPerAntenna * antennas);
          row.score.Add(session);
          if (site == 0 && !folder.empty()) {
            WriteSession(folder, row.kind, session);
          }
        }
        rows.push_back(row);
      }
    }
  }
  return rows;
}

template <typename Condition>
SurveyScore Total(const std::vector<Row>& rows, Condition condition) {
  SurveyScore total;
  for (const Row& row : rows) {
    if (condition(row.kind)) {
      total.Add(row.score);
    }
  }
  return total;
}

void PrintLengths(const std::vector<Row>& rows) {
  std::puts(
      "| sites | antennas | report right | survey right | report RMS | survey RMS | "
      "in the 95 % interval | settled | of these right |\n"
      "|---|--:|--:|--:|--:|--:|--:|--:|--:|");
  for (const Row& row : rows) {
    const SurveyScore& score = row.score;
    std::printf("| %s, %s | %d | %s | %s | %.0f m | %.1f m | %s | %s | %s |\n",
                NameOf(row.kind.density), NameOf(row.kind.disturbance), row.kind.antennas,
                Percent(score.reportRight, score.antennas).c_str(),
                Percent(score.surveyRight, score.antennas).c_str(),
                RootMean(score.reportSquares, score.antennas),
                RootMean(score.surveySquares, score.antennas),
                Percent(score.covered, score.intervals).c_str(),
                Percent(score.settled, score.intervals).c_str(),
                Percent(score.settledRight, score.settled).c_str());
  }
}

void PrintSuspects(const std::vector<Row>& rows) {
  std::puts(
      "\n| sites | antennas | disturbed pairs | found | detectable | found | suspects | "
      "false |\n|---|--:|--:|--:|--:|--:|--:|--:|");
  for (const Row& row : rows) {
    const SurveyScore& score = row.score;
    std::printf("| %s, %s | %d | %d | %s | %d | %s | %d | %d |\n", NameOf(row.kind.density),
                NameOf(row.kind.disturbance), row.kind.antennas, score.planted,
                Percent(score.plantedFound, score.planted).c_str(), score.detectable,
                Percent(score.detectableFound, score.detectable).c_str(), score.suspects,
                score.falseSuspects);
  }
}

/// The mean numbers of reports over some sites, and at how many sites they did not suffice.
struct MeanReports {
  double reports = 0.0;
  int unfinished = 0;

  void Add(int needed, int most) {
    reports += static_cast<double>(needed) / kSitesOfWalk;
    unfinished += needed >= most ? 1 : 0;
  }
};

/// Prints the reports needed and returns the guided ones as a share of the random ones, which is
/// the mean over the sizes.
double PrintGuidance() {
  std::puts(
      "\n| sparse sites | with the guidance | at random | ratio | on the beltpack's walk | "
      "ratio | not all settled |\n|---|--:|--:|--:|--:|--:|---|");
  double sumOfRatios = 0.0;
  for (const int antennas : kSizes) {
    const SiteKind kind{.antennas = antennas, .density = Density::Sparse, .canSettle = true};
    const int most = kMostReportsPerAntenna * antennas;
    MeanReports guided;
    MeanReports random;
    MeanReports onWalk;
    for (int site = 0; site < kSitesOfWalk; ++site) {
      const auto seed = static_cast<std::uint64_t>(antennas * 1000 + site);
      const ReportsNeeded needed = CountReportsNeeded(kind, seed);
      guided.Add(needed.guided, most);
      random.Add(needed.random, most);
      onWalk.Add(needed.onWalk, most);
    }
    const double ratio = guided.reports / random.reports;
    std::printf("| %d antennas | %.0f | %.0f | %.2f | %.0f | %.2f | %d, %d, %d of %d |\n", antennas,
                guided.reports, random.reports, ratio, onWalk.reports,
                guided.reports / onWalk.reports, guided.unfinished, random.unfinished,
                onWalk.unfinished, kSitesOfWalk);
    sumOfRatios += ratio / kSizes.size();
  }
  return sumOfRatios;
}

void PrintFigure(const char* what, double part, double whole) {
  std::printf("| %s | %s |  |  |\n", what, Percent(part, whole, 2).c_str());
}

bool PrintGoal(const char* what, double part, double whole, const char* goal, double least,
               double most) {
  const double percent = 100.0 * part / whole;
  const bool isMet = percent >= least && percent <= most;
  std::printf("| %s | %s | %s | %s |\n", what, Percent(part, whole, 2).c_str(), goal,
              isMet ? "met" : "**missed**");
  return isMet;
}

SurveyScore TotalOf(const std::vector<Row>& rows, Disturbance disturbance) {
  return Total(rows, [&](const SiteKind& kind) { return kind.disturbance == disturbance; });
}

bool PrintGoals(const std::vector<Row>& rows, double guidance) {
  const SurveyScore all = Total(rows, [](const SiteKind&) { return true; });
  const SurveyScore bad = TotalOf(rows, Disturbance::BadPair);
  const SurveyScore multipath = TotalOf(rows, Disturbance::Multipath);
  std::printf("\n| over all %d sites | value | goal |  |\n|---|--:|--:|---|\n", all.sites);
  bool isMet = PrintGoal("truth within the 95 % interval", all.covered, all.intervals, "93 to 97 %",
                         93.0, 97.0);
  isMet &= PrintGoal("settled antennas that are right", all.settledRight, all.settled, ">= 99.4 %",
                     99.4, 100.0);
  isMet &= PrintGoal("detectable bad pairs found", bad.detectableFound, bad.detectable, ">= 97 %",
                     97.0, 100.0);
  PrintFigure("&nbsp; all bad pairs found, also those too small", bad.plantedFound, bad.planted);
  PrintFigure("&nbsp; detectable reflections found", multipath.detectableFound,
              multipath.detectable);
  PrintFigure("&nbsp; all reflections found, also those too small", multipath.plantedFound,
              multipath.planted);
  isMet &= PrintGoal("suspects that are disturbed pairs", all.suspects - all.falseSuspects,
                     all.suspects, ">= 90 %", 90.0, 100.0);
  PrintFigure("&nbsp; at the sites with one bad pair alone", bad.suspects - bad.falseSuspects,
              bad.suspects);
  isMet &= PrintGoal("reports with the guidance, of those at random", guidance, 1.0, "<= 50 %", 0.0,
                     50.0);
  PrintFigure("antennas that were not heard or not connected", all.missing,
              all.missing + all.antennas);
  return isMet;
}

}  // namespace
}  // namespace kelvara::bench

int main(int count, char** arguments) {
  using namespace kelvara::bench;
  const std::vector<Row> rows = MeasureAll(count > 1 ? arguments[1] : "");
  PrintLengths(rows);
  PrintSuspects(rows);
  const double guidance = PrintGuidance();
  return PrintGoals(rows, guidance) ? 0 : 1;
}
