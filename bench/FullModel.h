#pragma once

#include <cstdint>

#include "sync/SyncModel.h"

namespace kelvara::bench {

/// Fills a model as far as it goes: 51 antennas, each heard from every other.
inline void FillModel(sync::SyncModel& model) {
  constexpr auto kAas = static_cast<std::int16_t>(sync::kMaxAas);
  for (std::int16_t rpn = 0; rpn < kAas; ++rpn) {
    model.FindOrAddAa(rpn, static_cast<std::int16_t>(rpn / 6), 0x5A);
  }
  for (std::int16_t from = 0; from < kAas; ++from) {
    for (std::int16_t to = 0; to < kAas; ++to) {
      if (from != to) {
        model.AddPhase(from, to, static_cast<std::int16_t>((from * 7 + to * 13) % 61 - 30));
      }
    }
  }
}

}  // namespace kelvara::bench
