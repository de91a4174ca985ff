#pragma once

#include <string>
#include <vector>

/// A second, simple and slow implementation of reading a report, with positions counted from 1 and
/// 0 for "not found". It shares no code with the engine.
namespace kelvara::test {

struct PlainEntry {
  int rpn = 0;
  int fps = 0;
  int fpn = 0;
  int phase = 0;

  friend bool operator==(const PlainEntry&, const PlainEntry&) = default;
};

struct PlainReport {
  bool faulted = false;
  std::vector<PlainEntry> entries;
  int syncIndex = 0;
};

class PlainRfpsReader {
 public:
  explicit PlainRfpsReader(std::string text) : text_(std::move(text)) {}

  PlainReport Read() {
    int marker = 1;
    do {
      marker = Find(marker + 1, text_, "100ec");
      const int next = Find(marker + 1, text_, "100ec");
      if (report_.entries.size() > 10) {
        report_.faulted = true;
        return report_;
      }
      PlainEntry entry;
      entry.fpn = Hexadecimal(Cut(text_, marker + 5, 2));
      entry.fps = Hexadecimal(Cut(text_, marker + 7, 1));
      entry.rpn = Hexadecimal(Cut(text_, marker + 8, 2));
      const std::string block =
          next > 0 ? Cut(text_, marker + 1, next - marker) : Cut(text_, marker + 1, Length(text_));
      if (Find(1, block, "sync") > 0) {
        report_.syncIndex = static_cast<int>(report_.entries.size());
        report_.entries.push_back(entry);
      } else if (ReadPhase(block, entry.phase)) {
        report_.entries.push_back(entry);
      }
    } while (marker != 0);
    return report_;
  }

 private:
  static int Length(const std::string& text) { return static_cast<int>(text.size()); }

  static char At(const std::string& text, int position) {
    return text[static_cast<std::size_t>(position - 1)];
  }

  static char Lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
  }

  static std::string Cut(const std::string& text, int start, int length) {
    std::string cut;
    for (int position = start; position < start + length && position <= Length(text); ++position) {
      cut += At(text, position);
    }
    return cut;
  }

  static int Find(int start, const std::string& text, const std::string& word) {
    for (int position = start; position + Length(word) - 1 <= Length(text); ++position) {
      int same = 0;
      while (same < Length(word) && Lower(At(text, position + same)) == At(word, same + 1)) {
        ++same;
      }
      if (same == Length(word)) {
        return position;
      }
    }
    return 0;
  }

  static int Hexadecimal(const std::string& field) {
    const std::string digits = "0123456789abcdef";
    int value = 0;
    for (const char character : field) {
      const std::size_t digit = digits.find(Lower(character));
      if (digit == std::string::npos) {
        break;
      }
      value = value * 16 + static_cast<int>(digit);
    }
    return value;
  }

  /// The field's value in hundredths. Three characters hold at most two decimals.
  static int Hundredths(std::string field) {
    while (!field.empty() && field[0] == ' ') {
      field.erase(0, 1);
    }
    int sign = 1;
    if (!field.empty() && (field[0] == '-' || field[0] == '+')) {
      sign = field[0] == '-' ? -1 : 1;
      field.erase(0, 1);
    }
    int value = 0;
    int decimals = -1;
    for (const char character : field) {
      if (character == '.' && decimals < 0) {
        decimals = 0;
      } else if (character >= '0' && character <= '9') {
        value = value * 10 + (character - '0');
        decimals += decimals < 0 ? 0 : 1;
      } else {
        break;
      }
    }
    for (int missing = decimals < 0 ? 2 : 2 - decimals; missing > 0; --missing) {
      value *= 10;
    }
    return sign * value;
  }

  /// The quotient, rounded half to even.
  static int Divide(int dividend, int divisor) {
    int below = dividend / divisor;
    if (dividend % divisor < 0) {
      --below;
    }
    const int twice = 2 * (dividend - below * divisor);
    const bool up = twice > divisor || (twice == divisor && below % 2 != 0);
    return up ? below + 1 : below;
  }

  static bool ReadPhase(const std::string& block, int& phase) {
    int sum = 0;
    int valid = 0;
    int found = 0;
    for (int examined = 0; examined < 3; ++examined) {
      found = Find(found + 1, block, "neighbour");
      if (found == 0) {
        break;
      }
      const std::string field = Cut(block, found + 19, 3);
      if (field.find('?') != std::string::npos || field == "   ") {
        continue;
      }
      sum = Divide(sum * 100 + Hundredths(field), 100);
      ++valid;
    }
    if (valid > 0) {
      phase = Divide(sum, valid);
    }
    return valid > 0;
  }

  std::string text_;
  PlainReport report_;
};

}  // namespace kelvara::test
