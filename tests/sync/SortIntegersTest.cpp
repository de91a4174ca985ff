#include "sync/SortIntegers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "support/Faults.h"
#include "support/RandomText.h"

namespace kelvara::sync {
namespace {

using base::FaultKind;
using test::FaultOf;
using Values = std::vector<std::int16_t>;

Values Sorted(Values values, std::int16_t first, std::int16_t last) {
  SortIntegers(values, first, last);
  return values;
}

TEST(SortIntegers, SortsAscendingBetweenTwoInclusiveIndices) {
  EXPECT_EQ(Sorted({3, -1, 2}, 0, 2), (Values{-1, 2, 3}));
  EXPECT_EQ(Sorted({9, 3, 2, 1, 0}, 1, 3), (Values{9, 1, 2, 3, 0}));
  EXPECT_EQ(Sorted({5, 5, 1, 5}, 0, 3), (Values{1, 5, 5, 5}));
  EXPECT_EQ(Sorted({32767, -32768, 0}, 0, 2), (Values{-32768, 0, 32767}));
}

TEST(SortIntegers, NothingHappensIfFirstIsNotBelowLast) {
  EXPECT_EQ(Sorted({3, 2, 1}, 1, 1), (Values{3, 2, 1}));
  EXPECT_EQ(Sorted({3, 2, 1}, 2, 0), (Values{3, 2, 1}));
  EXPECT_EQ(Sorted({}, 0, -1), Values{});
}

TEST(SortIntegers, AnIndexOutsideTheTableIsASubscriptFault) {
  EXPECT_EQ(FaultOf([] { return Sorted({3, 2, 1}, 0, 3); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([] { return Sorted({3, 2, 1}, -1, 2); }), FaultKind::Subscript);
}

TEST(SortIntegers, SortsAnyTableAndLeavesTheRestAlone) {
  test::RandomText random(71);
  for (int round = 0; round < 5000; ++round) {
    Values values(static_cast<std::size_t>(1 + random.Below(60)));
    const int spread = random.Below(2) == 0 ? 5 : 65536;
    for (std::int16_t& value : values) {
      value = static_cast<std::int16_t>(random.Below(spread) - spread / 2);
    }
    const int size = static_cast<int>(values.size());
    const int first = random.Below(size);
    const int last = first + random.Below(size - first);
    Values expected = values;
    std::sort(expected.begin() + first, expected.begin() + last + 1);
    ASSERT_EQ(Sorted(values, static_cast<std::int16_t>(first), static_cast<std::int16_t>(last)),
              expected);
  }
}

}  // namespace
}  // namespace kelvara::sync
