#include "sync/SortIntegers.h"

#include <utility>

#include "base/CheckedInteger.h"

namespace kelvara::sync {

void SortIntegers(std::span<std::int16_t> values, std::int16_t first, std::int16_t last) {
  for (int i = first; i < last; ++i) {
    int smallest = i;
    for (int candidate = i + 1; candidate <= last; ++candidate) {
      if (base::At(values, candidate) < base::At(values, smallest)) {
        smallest = candidate;
      }
    }
    if (smallest != i) {
      std::swap(base::At(values, i), base::At(values, smallest));
    }
  }
}

}  // namespace kelvara::sync
