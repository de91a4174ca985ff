#include "platform/posix/CaughtSignals.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <optional>

namespace kelvara::posix {
namespace {

/// Signal handlers belong to the whole program, so each test restores them.
class CaughtSignalsTest : public ::testing::Test {
 protected:
  ~CaughtSignalsTest() override {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      std::signal(signal, SIG_DFL);
    }
  }

  static bool IsReadable(const CaughtSignals& caughtSignals) {
    pollfd wait{caughtSignals.Descriptor(), POLLIN, 0};
    return ::poll(&wait, 1, 0) == 1 && (wait.revents & POLLIN) != 0;
  }
};

TEST_F(CaughtSignalsTest, MakeTheDescriptorReadable) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const CaughtSignals caughtSignals;
    EXPECT_FALSE(IsReadable(caughtSignals));
    std::raise(signal);
    EXPECT_TRUE(IsReadable(caughtSignals));
  }
}

TEST_F(CaughtSignalsTest, EndTheProgramAtOnceWhenASecondOneArrives) {
  const CaughtSignals caughtSignals;
  std::raise(SIGHUP);
  EXPECT_EXIT(std::raise(SIGTERM), ::testing::KilledBySignal(SIGTERM), "");
}

TEST_F(CaughtSignalsTest, StayIgnoredIfTheyWereIgnored) {
  std::signal(SIGHUP, SIG_IGN);
  const CaughtSignals caughtSignals;
  std::raise(SIGHUP);
  std::raise(SIGHUP);
  EXPECT_FALSE(IsReadable(caughtSignals));
  std::raise(SIGTERM);
  EXPECT_TRUE(IsReadable(caughtSignals));
}

TEST_F(CaughtSignalsTest, HaveTheirFormerHandlersRestored) {
  const auto other = [](int) {};
  std::signal(SIGINT, SIG_IGN);
  std::signal(SIGHUP, other);
  std::optional<CaughtSignals> caughtSignals(std::in_place);
  caughtSignals.reset();
  EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_IGN);
  EXPECT_EQ(std::signal(SIGTERM, SIG_DFL), SIG_DFL);
  EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), static_cast<void (*)(int)>(other));
}

}  // namespace
}  // namespace kelvara::posix
