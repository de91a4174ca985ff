#include "sim/ControlLines.h"

#include <utility>

namespace kelvara::sim {
namespace {

constexpr std::string_view kFaultCommand = "fault ";
constexpr std::string_view kUnplugCommand = "unplug";
constexpr std::string_view kPlugCommand = "plug";
constexpr std::size_t kMaxLineBytes = 256;

}  // namespace

std::vector<std::string> ControlLines::Feed(std::string_view piece) {
  std::vector<std::string> refused;
  for (const char character : piece) {
    if (character == '\n') {
      std::string line = std::exchange(line_, {});
      if (!Obey(line)) {
        refused.push_back(std::move(line));
      }
    } else if (line_.size() < kMaxLineBytes) {
      line_ += character;
    }
  }
  return refused;
}

bool ControlLines::Obey(std::string_view line) {
  if (line == kUnplugCommand) {
    beltpack_.Unplug();
    return true;
  }
  if (line == kPlugCommand) {
    beltpack_.Plug();
    return true;
  }
  if (line.substr(0, kFaultCommand.size()) != kFaultCommand) {
    return false;
  }
  const auto rule = ParseFaultRule(line.substr(kFaultCommand.size()));
  if (rule) {
    beltpack_.SetFault(*rule);
  }
  return rule.has_value();
}

}  // namespace kelvara::sim
