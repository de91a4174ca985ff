#include "sim/FaultRule.h"

#include <algorithm>
#include <charconv>

namespace kelvara::sim {
namespace {

constexpr int kMaxEvery = 1000000;

bool ReadWhen(std::string_view when, FaultRule& rule) {
  if (when == "always") {
    return true;
  }
  if (when == "once") {
    rule.once = true;
    return true;
  }
  const char* const end = when.data() + when.size();
  const auto [stop, error] = std::from_chars(when.data(), end, rule.every);
  return stop == end && error == std::errc() && rule.every >= 1 && rule.every <= kMaxEvery;
}

}  // namespace

std::optional<FaultRule> ParseFaultRule(std::string_view text) {
  const std::size_t colon = text.find(':');
  const std::string_view name = text.substr(0, colon);
  const auto* const found =
      std::find_if(kLineFaultNames.begin(), kLineFaultNames.end(),
                   [&](const LineFaultName& faultName) { return faultName.name == name; });
  if (found == kLineFaultNames.end()) {
    return std::nullopt;
  }
  FaultRule rule;
  rule.fault = found->fault;
  if (colon != std::string_view::npos && !ReadWhen(text.substr(colon + 1), rule)) {
    return std::nullopt;
  }
  return rule;
}

LineFault FaultSchedule::Next() {
  ++answers_;
  if (answers_ < rule_.every) {
    return LineFault::None;
  }
  const LineFault fault = rule_.fault;
  answers_ = 0;
  if (rule_.once) {
    rule_ = {};
  }
  return fault;
}

}  // namespace kelvara::sim
