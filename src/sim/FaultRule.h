#pragma once

#include <optional>
#include <string_view>

#include "sim/LineFault.h"

namespace kelvara::sim {

/// Which answers a fault affects: every one, every Nth one, or only the next one.
struct FaultRule {
  LineFault fault = LineFault::None;
  int every = 1;
  bool once = false;

  bool operator==(const FaultRule&) const = default;
};

/// Reads a rule from its text: a fault's name, alone or followed by ":always", ":once" or ":N",
/// where N is 1 to 1000000. Nothing if the text is not a rule.
std::optional<FaultRule> ParseFaultRule(std::string_view text);

/// Counts the answers and says which of them the rule affects.
class FaultSchedule {
 public:
  explicit FaultSchedule(FaultRule rule = {}) : rule_(rule) {}

  /// The fault of the next answer.
  LineFault Next();

 private:
  FaultRule rule_;
  int answers_ = 0;
};

}  // namespace kelvara::sim
