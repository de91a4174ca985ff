#pragma once

#include <QJsonObject>
#include <string>
#include <vector>

/// The true values of a site, and checks that results agree with them.
namespace kelvara::test {

/// An antenna as given by a site file or by a report. `metres` is the length of its cable.
struct SiteAntenna {
  int rpn;
  int fps;
  int fpn;
  int metres;
};

using SiteAntennas = std::vector<SiteAntenna>;

/// The path of one of the example sites.
std::string ExampleSitePath(const std::string& name);

/// The antennas of one of the example sites.
SiteAntennas ExampleSiteAntennas(const std::string& name);

/// Parses JSON results.
QJsonObject ParsedResults(const std::string& json);

/// Whether every antenna of a site with `antennas` antennas was heard from every other.
bool IsHeardAllRound(const QJsonObject& results, std::size_t antennas);

/// Expects only antennas of the site, and every reading to be the difference of the two cables in
/// units of 29 metres, give or take the noise.
void ExpectTrueReadings(const QJsonObject& results, const SiteAntennas& site);

/// Expects the HTML report to list every antenna, with a length relative to the shortest cable that
/// is correct to within one sync unit.
void ExpectTrueLengths(const std::string& report, const SiteAntennas& site);

}  // namespace kelvara::test
