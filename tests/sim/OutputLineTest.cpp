#include "sim/OutputLine.h"

#include <gtest/gtest.h>

namespace kelvara::sim {
namespace {

TEST(OutputLineTest, BytesAreSentOneByOneAtTheirSpeed) {
  OutputLine line;
  line.Send("abc", 1000, 500);
  EXPECT_EQ(line.NextDue(), 1500);
  EXPECT_EQ(line.Take(0), "");
  EXPECT_EQ(line.Take(1499), "");
  EXPECT_EQ(line.Take(1500), "a");
  EXPECT_EQ(line.NextDue(), 2000);
  EXPECT_EQ(line.Take(1999), "");
  EXPECT_EQ(line.Take(9000), "bc");
  EXPECT_EQ(line.NextDue(), std::nullopt);
}

TEST(OutputLineTest, ATextWaitsForTheEarlierOne) {
  OutputLine line;
  line.Send("ab", 0, 500);
  line.Send("cd", 200, 100);
  EXPECT_EQ(line.Waiting(), 2U);
  EXPECT_EQ(line.Take(1000), "ab");
  EXPECT_EQ(line.Waiting(), 1U);
  EXPECT_EQ(line.NextDue(), 1100);
  EXPECT_EQ(line.Take(1200), "cd");
  EXPECT_EQ(line.Waiting(), 0U);
}

TEST(OutputLineTest, AfterAPauseTheLineIsFreeAtOnce) {
  OutputLine line;
  line.Send("a", 0, 500);
  line.Send("b", 10000, 500);
  EXPECT_EQ(line.Take(10499), "a");
  EXPECT_EQ(line.Take(10500), "b");
}

TEST(OutputLineTest, SeveralTextsCanBeTakenAtOnce) {
  OutputLine line;
  line.Send("ab", 0, 100);
  line.Send("", 0, 100);
  line.Send("cd", 0, 100);
  EXPECT_EQ(line.Take(300), "abc");
  EXPECT_EQ(line.Take(400), "d");
}

TEST(OutputLineTest, ClearDropsWhatIsLeft) {
  OutputLine line;
  line.Send("abcdef", 0, 1000000);
  line.Clear();
  EXPECT_EQ(line.NextDue(), std::nullopt);
  EXPECT_EQ(line.Take(9000000), "");
  line.Send("x", 0, 100);
  EXPECT_EQ(line.Take(100), "x");
}

}  // namespace
}  // namespace kelvara::sim
