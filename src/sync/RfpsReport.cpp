#include "sync/RfpsReport.h"

#include <optional>

#include "base/CheckedInteger.h"
#include "base/NumberReading.h"
#include "base/Rounding.h"
#include "sync/ReportWords.h"

namespace kelvara::sync {
namespace {

constexpr std::string_view kNoReading = "   ";
constexpr char kUnknownReading = '?';
constexpr std::size_t kPhaseOffset = 19;
constexpr std::size_t kPhaseWidth = 3;
constexpr std::size_t kMaxReadings = 3;

/// Marker positions are counted from 1; 0 means that there is no further marker. Used as an index,
/// a position is that of the marker's second character, which is where the marker's block begins.
using Position = std::size_t;
constexpr Position kNoMarker = 0;

/// The part of the text that belongs to a marker, and the words in it. It includes the next
/// marker's first character, or ends with the text.
struct Block {
  Position marker = kNoMarker;
  std::size_t end = 0;
  bool hasSync = false;
  std::array<std::size_t, kMaxReadings> neighbours{};
  std::size_t neighbourCount = 0;
};

void AddWord(const FoundWord& found, Block& block) {
  if (found.word == ReportWord::Sync) {
    block.hasSync = true;
  } else if (block.neighbourCount < kMaxReadings) {
    block.neighbours[block.neighbourCount++] = found.index;
  }
}

/// Up to `width` characters; fewer or none if the text ends first.
std::string_view Middle(std::string_view text, std::size_t index, std::size_t width) {
  return index < text.size() ? text.substr(index, width) : std::string_view();
}

/// Reads hexadecimal digits up to the first other character. No digit at all gives 0.
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

/// Reads the identity after a marker: two digits of FPN, one of FPS, two of RPN.
void ReadIdentity(std::string_view text, Position marker, RfpsEntry& entry) {
  entry.ToFpn = ReadHexadecimal(Middle(text, marker + 4, 2));
  entry.ToFps = ReadHexadecimal(Middle(text, marker + 6, 1));
  entry.ToRpn = ReadHexadecimal(Middle(text, marker + 7, 2));
}

/// Averages the valid readings among the block's first three, in 16-bit steps. Returns false if
/// none is valid.
bool ReadMeanPhase(std::string_view text, const Block& block, std::int16_t& phase) {
  std::int16_t sum = 0;
  std::int16_t validReadings = 0;
  for (std::size_t reading = 0; reading < block.neighbourCount; ++reading) {
    const std::string_view field =
        Middle(text.substr(0, block.end), block.neighbours[reading] + kPhaseOffset, kPhaseWidth);
    if (field.find(kUnknownReading) == std::string_view::npos && field != kNoReading) {
      sum = base::Round16(sum + base::ReadLeadingNumber(field, base::Blanks::Leading));
      ++validReadings;
    }
  }
  if (validReadings == 0) {
    return false;
  }
  phase = base::Round16(static_cast<double>(sum) / validReadings);
  return true;
}

/// Reads one block into the next free entry, and keeps it if the block has the word "Sync" or a
/// valid reading.
void ReadBlock(std::string_view text, const Block& block, RfpsReport& report) {
  RfpsEntry& entry = base::At(report.entries, report.count);
  ReadIdentity(text, block.marker, entry);
  if (block.hasSync) {
    report.syncIndex = report.count;
    ++report.count;
  } else if (ReadMeanPhase(text, block, entry.Phase)) {
    ++report.count;
  }
}

}  // namespace

RfpsReport ReadRfpsReport(std::string_view text) {
  RfpsReport report;
  // The text before the first marker is a block too. It is read last, with an identity taken from
  // the start of the text.
  Block head;
  head.end = text.size();
  bool isHead = true;
  Block block;
  ReportWords words(text);
  while (const std::optional<FoundWord> found = words.Next()) {
    if (found->word != ReportWord::Marker) {
      AddWord(*found, isHead ? head : block);
      continue;
    }
    (isHead ? head : block).end = found->index + 1;
    // A marker at the very start of the text is ignored: its block is not read.
    if (!isHead && block.marker > 1) {
      ReadBlock(text, block, report);
    }
    isHead = false;
    block = Block();
    block.marker = found->index + 1;
  }
  if (block.marker > 1) {
    block.end = text.size();
    ReadBlock(text, block, report);
  }
  ReadBlock(text, head, report);
  return report;
}

}  // namespace kelvara::sync
