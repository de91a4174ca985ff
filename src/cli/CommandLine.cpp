#include "cli/CommandLine.h"

#include <algorithm>

namespace kelvara::cli {
namespace {

bool IsHelp(const std::string& argument) { return argument == "--help" || argument == "-h"; }

}  // namespace

std::vector<std::string> ReversedArguments(int argumentCount, const char* const* arguments) {
  std::vector<std::string> all(arguments + 1, arguments + argumentCount);
  // "convert FIELD VALUE": a value is due at the third place.
  constexpr std::size_t kValuePlace = 2;
  if (all.size() > kValuePlace && all[0] == "convert" && all[1].rfind('-', 0) != 0 &&
      all[kValuePlace].rfind('-', 0) == 0 && all[kValuePlace] != "--" &&
      !IsHelp(all[kValuePlace])) {
    all.insert(all.begin() + kValuePlace, "--");
  }
  std::reverse(all.begin(), all.end());
  return all;
}

}  // namespace kelvara::cli
