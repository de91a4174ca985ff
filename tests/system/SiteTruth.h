#pragma once

#include <QJsonObject>
#include <string>
#include <vector>

/// What a site really is, and whether results agree with it.
namespace kelvara::test {

/// An antenna of a site, or what a report says of it: a cable's length in metres.
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

/// Results from the text that a program wrote.
QJsonObject ParsedResults(const std::string& json);

/// Whether every antenna of a site of so many was heard from every other.
bool IsHeardAllRound(const QJsonObject& results, std::size_t antennas);

/// Expects antennas of the site alone, and every reading to be the difference of its cables in
/// units of 29 metres but for the noise. The antennas of a site have one FPN.
void ExpectTrueReadings(const QJsonObject& results, const SiteAntennas& site);

/// Expects the HTML report to list every antenna, with a length relative to the shortest cable that
/// is true within one sync unit.
void ExpectTrueLengths(const std::string& report, const SiteAntennas& site);

}  // namespace kelvara::test
