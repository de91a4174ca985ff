#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kelvara::sync {

/// One antenna of a report: the antenna that the beltpack is synchronised to ("From"), the one it
/// hears ("To"), and the phase of the second relative to the first, in RFPS units.
struct RfpsEntry {
  std::int16_t FromRpn = 0;
  std::int16_t ToRpn = 0;
  std::int16_t FromFps = 0;
  std::int16_t ToFps = 0;
  std::int16_t FromFpn = 0;
  std::int16_t ToFpn = 0;
  std::int16_t Phase = 0;
};

/// The contents of one RFPS report. The From fields are not filled yet.
struct RfpsReport {
  static constexpr std::size_t kMaxEntries = 11;

  std::array<RfpsEntry, kMaxEntries> entries{};
  /// The number of entries kept.
  std::int16_t count = 0;
  /// The index of the antenna that the beltpack is synchronised to; 0 if the report names none.
  std::int16_t syncIndex = 0;
};

/// Reads the text of one report, including its line ends. Any text is accepted. More entries than
/// the table holds are a subscript fault; a phase sum outside 16 bits is an overflow fault.
RfpsReport ReadRfpsReport(std::string_view text);

}  // namespace kelvara::sync
