#pragma once

#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include "support/ReportText.h"

namespace kelvara::test {

/// Random texts, most of which no beltpack would send. The same seed gives the same texts.
class RandomText {
 public:
  explicit RandomText(unsigned seed) : random_(seed) {}

  /// A number from 0 to `limit` - 1.
  int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

  /// Up to `maxLength` bytes of any value.
  std::string Bytes(int maxLength) {
    std::string text(static_cast<std::size_t>(Below(maxLength + 1)), '\0');
    for (char& byte : text) {
      byte = static_cast<char>(Below(256));
    }
    return text;
  }

  /// Up to `maxPieces` words, partial words and characters of the report grammar in any order.
  std::string Mixture(int maxPieces) {
    static constexpr auto kPieces = std::to_array<std::string_view>(
        {"100ec",     "100EC",     "100Ec", "100ec5A301", "100ec5a302", "100eC0FF03", "100e",
         "100",       "1",         "Sync",  "SYNC",       "sYnc",       "Syn",        "Neighbour",
         "NEIGHBOUR", "neighbour", "Neigh", "bour",       " phase =  ", "          ", "-12",
         "  7",       "   ",       "  ?",   "1.5",        ".5",         "-.5",        "?",
         " ",         "\r\n",      "\t",    "+9",         "Z",          "-"});
    std::string text;
    for (int left = Below(maxPieces + 1); left > 0; --left) {
      text += Pick(kPieces);
    }
    return text;
  }

  /// A beltpack's report of up to twelve blocks with up to `maxDamage` places where a byte is
  /// replaced or some bytes are lost.
  std::string DamagedReport(int maxDamage) {
    static constexpr auto kFields =
        std::to_array<std::string_view>({"  0", "  1", " -1", "-12", " 99", "999", "-99", "1.5",
                                         "2.5", ".5 ", "  ?", "   ", " +3", "x  "});
    std::string text = Below(8) == 0 ? "" : "rfps\r\n";
    for (int blocks = Below(13); blocks > 0; --blocks) {
      text += Identity(Below(256), Below(16), Below(12));
      text += ' ';
      if (Below(6) == 0) {
        text += "Sync\r\n";
      } else {
        for (int readings = Below(5); readings > 0; --readings) {
          text += Reading(Pick(kFields));
        }
      }
    }
    for (int damage = Below(maxDamage + 1); damage > 0 && !text.empty(); --damage) {
      const auto place = static_cast<std::size_t>(Below(static_cast<int>(text.size())));
      if (Below(2) == 0) {
        text[place] = static_cast<char>(Below(256));
      } else {
        text.erase(place, static_cast<std::size_t>(Below(12)));
      }
    }
    return text;
  }

 private:
  template <typename Table>
  std::string_view Pick(const Table& table) {
    return table.at(static_cast<std::size_t>(Below(static_cast<int>(table.size()))));
  }

  std::mt19937 random_;
};

}  // namespace kelvara::test
