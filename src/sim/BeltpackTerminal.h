#pragma once

#include <cstdint>
#include <string>

#include "sim/Beltpack.h"
#include "sim/PseudoTerminal.h"

namespace kelvara::sim {

/// A simulated beltpack on a pseudo-terminal: bytes pass between the two, and the terminal is there
/// just while the beltpack is.
class BeltpackTerminal {
 public:
  /// Opens the terminal, with a link to it unless the path is empty; faults as the terminal's.
  BeltpackTerminal(Beltpack& beltpack, const std::string& linkPath);

  /// Passes on what waits on either side by now. True when the terminal has just come back. Faults
  /// as the terminal's when it cannot be brought back.
  bool Serve(std::int64_t nowMs);

  /// As the terminal's.
  const std::string& DeviceName() const { return terminal_.DeviceName(); }
  int Descriptor() const { return terminal_.Descriptor(); }
  int HandlesDescriptor() const { return terminal_.HandlesDescriptor(); }

 private:
  Beltpack& beltpack_;
  PseudoTerminal terminal_;
};

}  // namespace kelvara::sim
