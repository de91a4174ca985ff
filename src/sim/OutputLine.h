#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace kelvara::sim {

/// The sending half of a serial line: texts are sent one after another, byte by byte. Times are in
/// microseconds and never run backwards.
class OutputLine {
 public:
  /// Sends a text as soon as the earlier ones have been sent, but not before a given time; each
  /// byte takes `perByte`.
  void Send(std::string text, std::int64_t notBefore, std::int64_t perByte);

  /// The bytes that have been sent by now and not taken yet.
  std::string Take(std::int64_t now);

  /// When the next byte will have been sent; nothing while there is none.
  std::optional<std::int64_t> NextDue() const;

  /// How many texts have not been taken to their end.
  std::size_t Waiting() const { return texts_.size(); }

  /// Drops everything that has not been taken.
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
