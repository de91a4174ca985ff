#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "sim/Beltpack.h"

namespace kelvara::test {

/// A beltpack on the demo's site, with a time that tests move.
struct BeltpackRig {
  explicit BeltpackRig(const sim::BeltpackManner& manner = {})
      : beltpack(sim::DemoSite(), manner) {}

  /// Sets a fault by its name and rule.
  void SetFault(std::string_view text) { beltpack.SetFault(sim::ParseFaultRule(text).value()); }

  /// What is sent in the three seconds until the next poll.
  std::string Wait() {
    nowMs += 3000;
    return beltpack.TakeOutput(nowMs);
  }

  /// Sends a command and waits for its answer.
  std::string Ask(std::string_view command) {
    beltpack.Receive(std::string(command) + "\r", nowMs);
    return Wait();
  }

  /// The same, but takes output each time some is due, at most once per millisecond.
  std::string AskPatiently(std::string_view command, std::size_t& mostAtOnce) {
    const std::int64_t endMs = nowMs + 3000;
    beltpack.Receive(std::string(command) + "\r", nowMs);
    std::string answer;
    mostAtOnce = 0;
    for (auto due = beltpack.NextDue(); due && *due <= endMs; due = beltpack.NextDue()) {
      nowMs = std::max(nowMs, *due);
      const std::string piece = beltpack.TakeOutput(nowMs);
      mostAtOnce = std::max(mostAtOnce, piece.size());
      answer += piece;
    }
    nowMs = endMs;
    return answer;
  }

  sim::Beltpack beltpack;
  std::int64_t nowMs = 1000000;
};

inline std::size_t CountLines(std::string_view text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

/// Whether the text is one whole report.
inline bool IsWholeReport(std::string_view text) {
  return text.substr(0, 6) == "rfps\r\n" && CountLines(text) == 29 && text.back() == '\n';
}

}  // namespace kelvara::test
