#pragma once

#include <benchmark/benchmark.h>

namespace kelvara::bench {

/// Runs a benchmark with sites from 4 antennas to the maximum of 51.
inline void SiteSizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(4)->Arg(12)->Arg(25)->Arg(51);
}

}  // namespace kelvara::bench
