#include "system/SiteTruth.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <cmath>
#include <optional>
#include <regex>
#include <sstream>

#include "support/TextFile.h"

namespace kelvara::test {
namespace {

constexpr double kMetresPerPhaseUnit = 29.0;
constexpr int kMetresPerSyncUnit = 130;
constexpr int kHexadecimal = 16;

std::optional<SiteAntenna> Find(const SiteAntennas& site, int rpn) {
  const auto found = std::find_if(site.begin(), site.end(),
                                  [&](const SiteAntenna& antenna) { return antenna.rpn == rpn; });
  return found == site.end() ? std::nullopt : std::optional(*found);
}

/// The rows of a report's table of cable lengths.
SiteAntennas ReportedAntennas(const std::string& report) {
  const std::string cell = "<td width=75>([0-9A-F]+)</td>\r\n";
  const std::regex row("<tr>\r\n" + cell + cell + cell + cell + cell + "</tr>");
  SiteAntennas antennas;
  for (std::sregex_iterator match(report.begin(), report.end(), row), end; match != end; ++match) {
    antennas.push_back({std::stoi((*match)[3]), std::stoi((*match)[2], nullptr, kHexadecimal),
                        std::stoi((*match)[1], nullptr, kHexadecimal), std::stoi((*match)[5])});
  }
  return antennas;
}

}  // namespace

std::string ExampleSitePath(const std::string& name) {
  return std::string(KELVARA_EXAMPLES_DIR) + "/" + name;
}

SiteAntennas ExampleSiteAntennas(const std::string& name) {
  SiteAntennas site;
  std::istringstream text(ReadTextFile(ExampleSitePath(name)));
  for (std::string line; std::getline(text, line);) {
    std::istringstream values(line.substr(0, line.find('#')));
    SiteAntenna antenna{};
    if (values >> antenna.rpn >> antenna.fps >> antenna.fpn >> antenna.metres) {
      site.push_back(antenna);
    }
  }
  return site;
}

QJsonObject ParsedResults(const std::string& json) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(json), &error);
  EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
  return document.object();
}

bool IsHeardAllRound(const QJsonObject& results, std::size_t antennas) {
  return results["aas"].toArray().size() == static_cast<qsizetype>(antennas) &&
         results["cells"].toArray().size() == static_cast<qsizetype>(antennas * (antennas - 1));
}

void ExpectTrueReadings(const QJsonObject& results, const SiteAntennas& site) {
  // Less than one unit of noise, plus half a unit for each of two roundings.
  constexpr double kMostNoise = 2.0;
  SiteAntennas heard;
  for (const QJsonValue aa : results["aas"].toArray()) {
    const int rpn = aa["rpn"].toInt();
    const std::optional<SiteAntenna> antenna = Find(site, rpn);
    ASSERT_TRUE(antenna) << "RPN " << rpn;
    EXPECT_EQ(aa["fps"].toInt(), antenna->fps) << "RPN " << rpn;
    EXPECT_EQ(aa["fpn"].toInt(), antenna->fpn) << "RPN " << rpn;
    heard.push_back(*antenna);
  }
  for (const QJsonValue cell : results["cells"].toArray()) {
    const SiteAntenna& from = heard.at(static_cast<std::size_t>(cell["from"].toInt()));
    const SiteAntenna& to = heard.at(static_cast<std::size_t>(cell["to"].toInt()));
    const double phase = (from.metres - to.metres) / kMetresPerPhaseUnit;
    const double mean = cell["sum"].toDouble() / cell["count"].toDouble();
    for (const double reading : {mean, cell["max"].toDouble(), cell["min"].toDouble()}) {
      EXPECT_NEAR(reading, phase, kMostNoise) << "from RPN " << from.rpn << " to RPN " << to.rpn;
    }
  }
}

void ExpectTrueLengths(const std::string& report, const SiteAntennas& site) {
  const SiteAntennas reported = ReportedAntennas(report);
  EXPECT_EQ(reported.size(), site.size());
  int shortest = site.at(0).metres;
  for (const SiteAntenna& antenna : site) {
    shortest = std::min(shortest, antenna.metres);
  }
  for (const SiteAntenna& antenna : site) {
    const std::optional<SiteAntenna> row = Find(reported, antenna.rpn);
    ASSERT_TRUE(row) << "RPN " << antenna.rpn;
    EXPECT_EQ(row->fps, antenna.fps) << "RPN " << antenna.rpn;
    EXPECT_EQ(row->fpn, antenna.fpn) << "RPN " << antenna.rpn;
    EXPECT_LE(std::abs(row->metres - (antenna.metres - shortest)), kMetresPerSyncUnit)
        << "RPN " << antenna.rpn;
  }
}

}  // namespace kelvara::test
