#pragma once

#include <cstdio>
#include <cstdlib>

namespace kelvara::test {

/// Aborts the program if an invariant does not hold, so that the fuzzer keeps the input.
inline void Expect(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "violated: %s\n", what);
    std::abort();
  }
}

}  // namespace kelvara::test
