#include "platform/posix/CaughtSignals.h"

#include <gtest/gtest.h>

#include <optional>

namespace kelvara::posix {
namespace {

volatile std::sig_atomic_t caught = 0;

void Count(int /*signal*/) { caught = caught + 1; }

/// What becomes of a signal is the whole program's, so each test puts it back.
class CaughtSignalsTest : public ::testing::Test {
 protected:
  CaughtSignalsTest() { caught = 0; }
  ~CaughtSignalsTest() override {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      std::signal(signal, SIG_DFL);
    }
  }
};

TEST_F(CaughtSignalsTest, GoToTheHandler) {
  const CaughtSignals caughtSignals(Count);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    std::raise(signal);
  }
  EXPECT_EQ(caught, 3);
}

TEST_F(CaughtSignalsTest, ThatAreIgnoredAreIgnoredOn) {
  std::signal(SIGHUP, SIG_IGN);
  const CaughtSignals caughtSignals(Count);
  std::raise(SIGHUP);
  EXPECT_EQ(caught, 0);
  std::raise(SIGTERM);
  EXPECT_EQ(caught, 1);
}

TEST_F(CaughtSignalsTest, AreWhatTheyWereWhenItEnds) {
  std::signal(SIGINT, SIG_IGN);
  std::signal(SIGHUP, Count);
  std::optional<CaughtSignals> caughtSignals(SIG_DFL);
  caughtSignals.reset();
  EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_IGN);
  EXPECT_EQ(std::signal(SIGTERM, SIG_DFL), SIG_DFL);
  EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), Count);
}

}  // namespace
}  // namespace kelvara::posix
