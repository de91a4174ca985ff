#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kelvara::sync {

/// One antenna of one report: who the beltpack is synchronised to, whom it hears, and how that
/// one's phase stands to the first, in RFPS units.
struct RfpsEntry {
  std::int16_t FromRpn = 0;
  std::int16_t ToRpn = 0;
  std::int16_t FromFps = 0;
  std::int16_t ToFps = 0;
  std::int16_t FromFpn = 0;
  std::int16_t ToFpn = 0;
  std::int16_t Phase = 0;
};

/// What one RFPS report says, read from its text. The From fields are not filled yet.
struct RfpsReport {
  static constexpr std::size_t kMaxEntries = 11;

  std::array<RfpsEntry, kMaxEntries> entries{};
  /// How many entries were kept, in the order of the text.
  std::int16_t count = 0;
  /// The entry of the antenna that the beltpack is synchronised to; 0 when the report names none.
  std::int16_t syncIndex = 0;
};

/// Reads the text of one report, line ends included. Any text is accepted; more entries than the
/// table holds are a subscript fault, a phase sum that leaves 16 bits an overflow fault.
RfpsReport ReadRfpsReport(std::string_view text);

}  // namespace kelvara::sync
