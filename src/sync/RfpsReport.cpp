#include "sync/RfpsReport.h"

#include "base/CheckedInteger.h"
#include "base/NumberReading.h"
#include "base/Rounding.h"
#include "sync/TextSearch.h"

namespace kelvara::sync {
namespace {

constexpr std::string_view kMarker = "100ec";
constexpr std::string_view kSyncWord = "sync";
constexpr std::string_view kNeighbourWord = "neighbour";
constexpr std::string_view kNoReading = "   ";
constexpr char kUnknownReading = '?';
constexpr std::size_t kPhaseOffset = 19;
constexpr std::size_t kPhaseWidth = 3;
constexpr int kMaxReadings = 3;

/// Marker positions count the text's first character as 1, and 0 stands for "no further marker".
/// As an index such a position is that of the character after the marker's first one: just where
/// the marker's block begins.
using Position = std::size_t;
constexpr Position kNoMarker = 0;

Position NextMarker(std::string_view text, Position after) {
  const std::size_t index = FindIgnoringCase(text, kMarker, after);
  return index == std::string_view::npos ? kNoMarker : index + 1;
}

/// Up to `width` characters, fewer or none where the text ends before.
std::string_view Middle(std::string_view text, std::size_t index, std::size_t width) {
  return index < text.size() ? text.substr(index, width) : std::string_view();
}

/// Hexadecimal digits up to the first character that is none; no digit at all gives 0.
std::int16_t ReadHexadecimal(std::string_view text) {
  int value = 0;
  for (const char character : text) {
    int digit = 0;
    if (character >= '0' && character <= '9') {
      digit = character - '0';
    } else if (character >= 'A' && character <= 'F') {
      digit = character - 'A' + 10;
    } else if (character >= 'a' && character <= 'f') {
      digit = character - 'a' + 10;
    } else {
      break;
    }
    value = value * 16 + digit;
  }
  return static_cast<std::int16_t>(value);
}

/// The identity behind a marker: two digits of FPN, one of FPS, two of RPN.
void ReadIdentity(std::string_view text, Position marker, RfpsEntry& entry) {
  entry.ToFpn = ReadHexadecimal(Middle(text, marker + 4, 2));
  entry.ToFps = ReadHexadecimal(Middle(text, marker + 6, 1));
  entry.ToRpn = ReadHexadecimal(Middle(text, marker + 7, 2));
}

/// The block's first three readings, as far as they are valid, averaged in 16-bit steps. False when
/// none is valid.
bool ReadMeanPhase(std::string_view block, std::int16_t& phase) {
  std::int16_t sum = 0;
  std::int16_t validReadings = 0;
  std::size_t word = FindIgnoringCase(block, kNeighbourWord, 0);
  for (int reading = 0; reading < kMaxReadings && word != std::string_view::npos; ++reading) {
    const std::string_view field = Middle(block, word + kPhaseOffset, kPhaseWidth);
    if (field.find(kUnknownReading) == std::string_view::npos && field != kNoReading) {
      sum = base::Round16(sum + base::ReadLeadingNumber(field, base::Blanks::Leading));
      ++validReadings;
    }
    word = FindIgnoringCase(block, kNeighbourWord, word + 1);
  }
  if (validReadings == 0) {
    return false;
  }
  phase = base::Round16(static_cast<double>(sum) / validReadings);
  return true;
}

/// Reads one block into the entry behind those kept so far, and keeps it if it says anything.
void ReadBlock(std::string_view text, Position marker, std::string_view block, RfpsReport& report) {
  RfpsEntry& entry = base::At(report.entries, report.count);
  ReadIdentity(text, marker, entry);
  if (FindIgnoringCase(block, kSyncWord, 0) != std::string_view::npos) {
    report.syncIndex = report.count;
    ++report.count;
  } else if (ReadMeanPhase(block, entry.Phase)) {
    ++report.count;
  }
}

}  // namespace

RfpsReport ReadRfpsReport(std::string_view text) {
  RfpsReport report;
  // The search starts behind the first character: a marker at the very start is not seen.
  Position next = NextMarker(text, 1);
  Position marker = kNoMarker;
  do {
    marker = next;
    next = NextMarker(text, marker);
    const std::size_t blockEnd = next == kNoMarker ? text.size() : next;
    // The last round has no marker: it reads the text before the first one as a block, and an
    // identity from the text's own first characters.
    ReadBlock(text, marker, Middle(text, marker, blockEnd - marker), report);
  } while (marker != kNoMarker);
  return report;
}

}  // namespace kelvara::sync
