#include "sim/BeltpackTerminal.h"

namespace kelvara::sim {

BeltpackTerminal::BeltpackTerminal(Beltpack& beltpack, const std::string& linkPath)
    : beltpack_(beltpack), terminal_(linkPath) {
  terminal_.Open();
}

bool BeltpackTerminal::Serve(std::int64_t nowMs) {
  beltpack_.Receive(terminal_.Read(), nowMs);
  if (!beltpack_.IsPresent(nowMs)) {
    terminal_.Close();
    return false;
  }
  const bool isBack = !terminal_.IsOpen();
  terminal_.Open();
  terminal_.Write(beltpack_.TakeOutput(nowMs));
  return isBack;
}

}  // namespace kelvara::sim
