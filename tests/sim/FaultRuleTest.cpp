#include "sim/FaultRule.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace kelvara::sim {
namespace {

/// Which of the next answers are affected, as a row of "x" and ".".
std::string Hits(FaultRule rule, int answers) {
  FaultSchedule schedule(rule);
  std::string hits;
  for (int answer = 0; answer < answers; ++answer) {
    hits += schedule.Next() == LineFault::None ? '.' : 'x';
  }
  return hits;
}

TEST(FaultRuleTest, EveryFaultIsReadByItsNameAndAffectsEveryAnswer) {
  std::set<LineFault> faults;
  for (const LineFaultName& faultName : kLineFaultNames) {
    const auto rule = ParseFaultRule(faultName.name);
    ASSERT_TRUE(rule) << faultName.name;
    EXPECT_EQ(*rule, (FaultRule{faultName.fault, 1, false}));
    EXPECT_EQ(ParseFaultRule(std::string(faultName.name) + ":always"), rule);
    faults.insert(rule->fault);
  }
  EXPECT_EQ(faults.size(), kLineFaultNames.size());
}

TEST(FaultRuleTest, ReadsWhichAnswersItAffects) {
  EXPECT_EQ(ParseFaultRule("partial:once"), (FaultRule{LineFault::Partial, 1, true}));
  EXPECT_EQ(ParseFaultRule("24:3"), (FaultRule{LineFault::Disconnect, 3, false}));
  EXPECT_EQ(ParseFaultRule("hang-up:1000000"), (FaultRule{LineFault::HangUp, 1000000, false}));
}

TEST(FaultRuleTest, RefusesEverythingElse) {
  for (const char* text : {"", "quiet", "Silent", " silent", "silent ", "silent:", "silent:0",
                           "silent:-1", "silent:1000001", "silent:3x", "silent:99999999999",
                           "silent:never", "silent:once:2", ":3"}) {
    EXPECT_FALSE(ParseFaultRule(text)) << text;
  }
}

TEST(FaultRuleTest, AffectsEveryAnswerEveryNthOrOne) {
  EXPECT_EQ(Hits({}, 5), ".....");
  EXPECT_EQ(Hits({LineFault::Silent, 1, false}, 5), "xxxxx");
  EXPECT_EQ(Hits({LineFault::Silent, 3, false}, 9), "..x..x..x");
  EXPECT_EQ(Hits({LineFault::Silent, 1, true}, 5), "x....");
}

}  // namespace
}  // namespace kelvara::sim
