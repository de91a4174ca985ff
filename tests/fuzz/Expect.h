#pragma once

#include <cstdio>
#include <cstdlib>

namespace kelvara::test {

/// Ends the program, so that the fuzzer keeps the input, when what must always hold does not.
inline void Expect(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "violated: %s\n", what);
    std::abort();
  }
}

}  // namespace kelvara::test
