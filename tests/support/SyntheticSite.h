#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

#include "sync/SyncModel.h"

namespace kelvara::test {

/// A site with known delays, whose readings are put into a model.
class SyntheticSite {
 public:
  /// The antennas get the RPNs 1, 2, ... unless others are given; delays are in RFPS units.
  explicit SyntheticSite(std::vector<double> delays, std::vector<int> rpns = {})
      : delays_(std::move(delays)) {
    for (std::size_t antenna = 0; antenna < delays_.size(); ++antenna) {
      const int rpn = rpns.empty() ? static_cast<int>(antenna) + 1 : rpns[antenna];
      model_.FindOrAddAa(static_cast<std::int16_t>(rpn), 3, 90);
    }
  }

  /// A site of so many antennas with delays from 0 to 40.
  static SyntheticSite Random(int antennas, unsigned seed) {
    std::mt19937 generator(seed);
    std::vector<double> delays;
    for (int antenna = 0; antenna < antennas; ++antenna) {
      delays.push_back(static_cast<double>(generator() % 4000) / 100.0);
    }
    SyntheticSite site(std::move(delays));
    site.generator_.seed(seed + 1);
    return site;
  }

  /// The standard deviation of a reading before it is rounded.
  void SetNoise(double sigma) { sigma_ = sigma; }

  /// Adds readings of `to` while synchronised to `from`, which was heard late by `path`.
  void Hear(int from, int to, int count, double path = 0.0) {
    const double mean = Delay(from) - Delay(to) - path;
    for (int reading = 0; reading < count; ++reading) {
      model_.AddPhase(static_cast<std::int16_t>(from), static_cast<std::int16_t>(to),
                      static_cast<std::int16_t>(std::lround(mean + sigma_ * Normal())));
    }
  }

  /// Readings in both directions.
  void HearBoth(int a, int b, int count, double path = 0.0) {
    Hear(a, b, count, path);
    Hear(b, a, count, path);
  }

  /// Readings between all antennas, in both directions.
  void HearAll(int count) {
    for (int a = 0; a < Antennas(); ++a) {
      for (int b = a + 1; b < Antennas(); ++b) {
        HearBoth(a, b, count);
      }
    }
  }

  int Antennas() const { return static_cast<int>(delays_.size()); }
  double Delay(int antenna) const { return delays_[static_cast<std::size_t>(antenna)]; }
  void SetDelay(int antenna, double delay) { delays_[static_cast<std::size_t>(antenna)] = delay; }
  sync::SyncModel& Model() { return model_; }

 private:
  double Normal() {
    const auto uniform = [this] {
      return (static_cast<double>(generator_()) + 0.5) / 4294967296.0;
    };
    const double radius = std::sqrt(-2.0 * std::log(uniform()));
    return radius * std::cos(2.0 * std::numbers::pi * uniform());
  }

  std::vector<double> delays_;
  std::mt19937 generator_{1};
  double sigma_ = 0.0;
  sync::SyncModel model_;
};

/// A cell of exactly these readings.
inline sync::PhaseCell Cell(std::int32_t sum, std::int32_t count, std::int16_t max,
                            std::int16_t min) {
  return {.Sum = sum, .Count = count, .Max = max, .Min = min};
}

}  // namespace kelvara::test
