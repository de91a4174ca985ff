#pragma once

#include <cstdint>

#include "sync/SyncModel.h"

namespace kelvara::bench {

/// Fills a model with antennas, each heard from every other. By default, with as many as fit.
inline void FillModel(sync::SyncModel& model,
                      std::int16_t aas = static_cast<std::int16_t>(sync::kMaxAas)) {
  for (std::int16_t rpn = 0; rpn < aas; ++rpn) {
    model.FindOrAddAa(rpn, static_cast<std::int16_t>(rpn / 6), 0x5A);
  }
  for (std::int16_t from = 0; from < aas; ++from) {
    for (std::int16_t to = 0; to < aas; ++to) {
      if (from != to) {
        model.AddPhase(from, to, static_cast<std::int16_t>((from * 7 + to * 13) % 61 - 30));
      }
    }
  }
}

}  // namespace kelvara::bench
