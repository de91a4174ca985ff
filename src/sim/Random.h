#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace kelvara::sim {

/// Random numbers that are the same on every machine for the same seed, which the standard
/// library's distributions are not.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  /// The next number; all 64-bit numbers are equally likely.
  std::uint64_t Next();

  /// 0 to bound - 1; the bound is at least 1.
  int Below(int bound);

  /// A number from -1 to 1.
  double Symmetric();

  template <typename Value>
  void Shuffle(std::vector<Value>& values) {
    for (std::size_t left = values.size(); left > 1; --left) {
      std::swap(values[left - 1], values[static_cast<std::size_t>(Below(static_cast<int>(left)))]);
    }
  }

 private:
  std::uint64_t state_;
};

}  // namespace kelvara::sim
