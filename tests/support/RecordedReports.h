#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "support/ReportText.h"

/// Reports of 29 lines, as in a recorded session.
namespace kelvara::test {

/// "rfps", the given lines, then empty lines up to the 29th.
inline std::string RecordedReport(const std::vector<std::string>& lines) {
  constexpr std::size_t kLines = 29;
  std::string text = CrLf("rfps");
  for (const std::string& line : lines) {
    text += CrLf(line);
  }
  for (std::size_t line = lines.size() + 1; line < kLines; ++line) {
    text += CrLf("");
  }
  return text;
}

/// The identity of an antenna with FPN 5A and FPS 3.
inline std::string AntennaIdentity(int rpn) { return Identity(0x5A, 3, rpn); }

inline std::string SyncLine(int rpn) { return SyncText(AntennaIdentity(rpn)); }

/// A neighbour with one reading, of at most three characters.
inline std::string NeighbourLine(int rpn, int phase) {
  char text[16];
  std::snprintf(text, sizeof text, "%3d", phase);
  return AntennaIdentity(rpn) + " " + ReadingText(text);
}

inline std::string OneNeighbourReport(int syncRpn, int rpn, int phase) {
  return RecordedReport({SyncLine(syncRpn), NeighbourLine(rpn, phase)});
}

/// An antenna and `count` neighbours with the RPNs from `firstRpn` on.
inline std::string CrowdedReport(int syncRpn, int firstRpn, int count) {
  std::vector<std::string> lines = {SyncLine(syncRpn)};
  for (int rpn = firstRpn; rpn < firstRpn + count; ++rpn) {
    lines.push_back(NeighbourLine(rpn, 1));
  }
  return RecordedReport(lines);
}

/// Six reports with 52 antennas, RPN 0 to 51: one antenna too many.
inline std::string FiftyTwoAntennas() {
  std::string text;
  for (int firstRpn = 1; firstRpn < 46; firstRpn += 9) {
    text += CrowdedReport(0, firstRpn, 9);
  }
  return text + CrowdedReport(0, 46, 6);
}

}  // namespace kelvara::test
