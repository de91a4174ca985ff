#include "system/desktop/soak/FailingLine.h"

#include <array>

#include "sim/LineFault.h"

namespace kelvara::test {

FailingLine::FailingLine(SimulatedBeltpack& beltpack, std::mt19937& chance)
    : beltpack_(beltpack), chance_(chance) {}

void FailingLine::Turn() {
  if (Clock::now() < change_) {
    return;
  }
  if (isFailing_) {
    Repair();
    LeaveFor(5, 30);
  } else {
    Fail();
  }
}

void FailingLine::Repair() {
  if (isUnplugged_) {
    beltpack_.Plug();
  }
  beltpack_.SetFault("none");
  isUnplugged_ = false;
  isFailing_ = false;
}

void FailingLine::Fail() {
  // The line's own faults come after "none"; two more kinds follow.
  const int faults = static_cast<int>(sim::kLineFaultNames.size()) - 1;
  const int kind = Between(1, faults + 2);
  std::string name;
  if (kind <= faults) {
    constexpr std::array<const char*, 3> kRules = {":always", ":2", ":3"};
    name = sim::kLineFaultNames.at(static_cast<std::size_t>(kind)).name;
    beltpack_.SetFault(name + kRules.at(static_cast<std::size_t>(Between(0, 2))));
    LeaveFor(3, 15);
  } else if (kind == faults + 1) {
    name = "unplugged";
    beltpack_.Unplug();
    isUnplugged_ = true;
    LeaveFor(3, 15);
  } else {
    name = "lost";
    beltpack_.SetFault("silent:always");
    // The user is asked about it after 45 seconds of silence.
    LeaveFor(50, 50);
  }
  isFailing_ = true;
  ++counts_[name];
}

void FailingLine::LeaveFor(int leastSeconds, int mostSeconds) {
  change_ = Clock::now() + std::chrono::seconds(Between(leastSeconds, mostSeconds));
}

int FailingLine::Between(int least, int most) {
  return std::uniform_int_distribution<int>(least, most)(chance_);
}

}  // namespace kelvara::test
