#pragma once

#include <benchmark/benchmark.h>

namespace kelvara::bench {

/// The sites that a benchmark is run with, in antennas: from a small one to the largest.
inline void SiteSizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(4)->Arg(12)->Arg(25)->Arg(51);
}

}  // namespace kelvara::bench
