#include "sim/RfpsReportText.h"

#include <algorithm>
#include <string_view>

#include "link/BeltpackCommands.h"
#include "link/ReportCollector.h"
#include "sync/HexPad.h"

namespace kelvara::sim {
namespace {

constexpr std::string_view kHeaderBegin = "Radio parts heard: ";
constexpr std::string_view kMarker = "100ec";
constexpr std::string_view kSyncText = " Sync";
constexpr std::string_view kBehindIdentity = " ";
constexpr std::string_view kWithoutIdentity = "           ";
constexpr std::string_view kBetweenReadings = "  ";
/// The phase field is 19 characters after the start of this.
constexpr std::string_view kReadingBegin = "Neighbour phase =  ";
constexpr int kPhaseWidth = 3;
constexpr int kLeastPhase = -99;
constexpr int kGreatestPhase = 999;
constexpr std::string_view kFiller = "-";

/// Collects lines and counts them.
class Lines {
 public:
  void Add(std::string_view line) {
    text_ += line;
    text_ += "\r\n";
    ++count_;
  }

  int Count() const { return count_; }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
  int count_ = 0;
};

std::string Hexadecimal(int value, std::int16_t width) {
  return sync::HexPad(static_cast<std::int16_t>(value), width);
}

std::string Identity(const Antenna& antenna) {
  std::string identity(kMarker);
  identity += Hexadecimal(antenna.fpn, 2);
  identity += Hexadecimal(antenna.fps, 1);
  identity += Hexadecimal(antenna.rpn, 2);
  return identity;
}

std::string ReadingText(const Reading& reading) {
  std::string field;
  if (reading.kind == Reading::Kind::Measured) {
    field = std::to_string(std::clamp(reading.phase, kLeastPhase, kGreatestPhase));
  } else if (reading.kind == Reading::Kind::Unknown) {
    field = "?";
  }
  std::string text(kReadingBegin);
  text.append(kPhaseWidth - field.size(), ' ');
  return text + field;
}

/// The first reading follows the identity, and the others share a line: only then do nine
/// neighbours fit into one report.
void AddNeighbour(const Neighbour& neighbour, Lines& lines) {
  std::string line = Identity(neighbour.antenna);
  line += kBehindIdentity;
  line += ReadingText(neighbour.readings.front());
  lines.Add(line);
  const std::size_t count = std::min(neighbour.readings.size(), kMaxReadings);
  if (count == 1) {
    return;
  }
  line = kWithoutIdentity;
  for (std::size_t reading = 1; reading < count; ++reading) {
    line += reading == 1 ? std::string_view() : kBetweenReadings;
    line += ReadingText(neighbour.readings[reading]);
  }
  lines.Add(line);
}

}  // namespace

std::string RfpsReportText(const Observation& observation) {
  const std::size_t count = std::min(observation.neighbours.size(), kMaxNeighbours);
  Lines lines;
  lines.Add(link::kRfpsCommand);
  std::string header(kHeaderBegin);
  header += std::to_string(count);
  lines.Add(header);
  std::string synchronised = Identity(observation.synchronised);
  synchronised += kSyncText;
  lines.Add(synchronised);
  for (std::size_t neighbour = 0; neighbour < count; ++neighbour) {
    AddNeighbour(observation.neighbours[neighbour], lines);
  }
  while (lines.Count() < link::kRfpsReportLines) {
    lines.Add(kFiller);
  }
  return lines.Text();
}

}  // namespace kelvara::sim
