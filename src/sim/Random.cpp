#include "sim/Random.h"

namespace kelvara::sim {

std::uint64_t Random::Next() {
  // A counter with a long odd step, its bits then mixed until neighbouring counts look unrelated.
  state_ += 0x9E3779B97F4A7C15U;
  std::uint64_t bits = state_;
  bits = (bits ^ (bits >> 30U)) * 0xBF58476D1CE4E5B9U;
  bits = (bits ^ (bits >> 27U)) * 0x94D049BB133111EBU;
  return bits ^ (bits >> 31U);
}

int Random::Below(int bound) {
  return static_cast<int>(Next() % static_cast<std::uint64_t>(bound));
}

double Random::Symmetric() {
  constexpr int kSteps = 1 << 20;
  return (Below(2 * kSteps + 1) - kSteps) / static_cast<double>(kSteps);
}

}  // namespace kelvara::sim
