#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sim/Beltpack.h"

namespace kelvara::sim {

/// Controls a simulated beltpack by lines of text: "fault NAME" with or without a rule, "unplug"
/// and "plug".
class ControlLines {
 public:
  explicit ControlLines(Beltpack& beltpack) : beltpack_(beltpack) {}

  /// Takes text in pieces of any size and obeys each line once it is complete. Returns the lines
  /// that are not commands.
  std::vector<std::string> Feed(std::string_view piece);

 private:
  bool Obey(std::string_view line);

  Beltpack& beltpack_;
  std::string line_;
};

}  // namespace kelvara::sim
