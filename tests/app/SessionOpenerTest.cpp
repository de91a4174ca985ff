#include "app/SessionOpener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Fault.h"
#include "support/DesktopDoubles.h"
#include "support/System.h"

namespace kelvara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SessionOpenerTest : public ::testing::Test, protected DesktopDoubles<> {
 protected:
  std::vector<std::string> started;
  app::SessionOpener opener{desktop, [this](const std::string& path) {
                              if (path == "unstartable") {
                                throw base::Fault(base::FaultKind::File, "cannot start it");
                              }
                              started.push_back(path);
                            }};
};

TEST_F(SessionOpenerTest, OpensTheSessionThatTheUserChooses) {
  const std::string chosen = kIsWindows ? "C:\\visits\\one.trace" : "/visits/one.trace";
  chooser.answer = chosen;
  opener.mnuOpenSession_Click("/sessions");
  EXPECT_THAT(started, ElementsAre(chosen));
  ASSERT_EQ(chooser.requests.size(), 1U);
  EXPECT_EQ(chooser.requests[0].kind, platform::FileChooserKind::Open);
  EXPECT_EQ(chooser.requests[0].initialFolder, "/sessions");
  opener.mnuOpenSession_Click("/sessions");
  EXPECT_EQ(chooser.requests[1].initialFolder, kIsWindows ? "C:\\visits" : "/visits");
}

TEST_F(SessionOpenerTest, OpensNothingOnCancel) {
  opener.mnuOpenSession_Click("/sessions");
  EXPECT_THAT(started, IsEmpty());
  EXPECT_THAT(boxes.boxes, IsEmpty());
}

TEST_F(SessionOpenerTest, TellsWhyASessionCouldNotBeOpened) {
  opener.Open("unstartable");
  ASSERT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(boxes.boxes[0].text, "cannot start it");
  EXPECT_EQ(boxes.boxes[0].icon, platform::MessageIcon::Critical);
}

TEST_F(SessionOpenerTest, OpensEachSessionThatWasDropped) {
  opener.OpenDropped({"a", "unstartable", "b"});
  EXPECT_THAT(started, ElementsAre("a", "b"));
  EXPECT_EQ(boxes.boxes.size(), 1U);
}

TEST_F(SessionOpenerTest, OpensNoneOfTooManyThatWereDropped) {
  opener.OpenDropped({"1", "2", "3", "4", "5", "6"});
  EXPECT_THAT(started, IsEmpty());
  ASSERT_EQ(boxes.boxes.size(), 1U);
  EXPECT_EQ(boxes.boxes[0].text, "At most 5 sessions can be opened at once.");
}

}  // namespace
}  // namespace kelvara::test
