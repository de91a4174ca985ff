#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace kelvara::sim {

/// The sending half of a serial line: texts leave one after the other, byte by byte. Times are in
/// microseconds and never run backwards.
class OutputLine {
 public:
  /// Sends a text as soon as the earlier ones have left, but not before a given time; each byte
  /// takes so long.
  void Send(std::string text, std::int64_t notBefore, std::int64_t perByte);

  /// The bytes that have left by now and were not taken yet.
  std::string Take(std::int64_t now);

  /// When the next byte will have left; nothing while there is none.
  std::optional<std::int64_t> NextDue() const;

  /// How many texts have not left to their end.
  std::size_t Waiting() const { return texts_.size(); }

  /// Drops everything that was not taken.
  void Clear();

 private:
  struct Text {
    std::string bytes;
    std::size_t taken;
    std::int64_t begin;
    std::int64_t perByte;
  };

  std::deque<Text> texts_;
  std::int64_t free_ = 0;
};

}  // namespace kelvara::sim
