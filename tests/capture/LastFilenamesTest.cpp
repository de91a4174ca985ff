#include "capture/LastFilenames.h"

#include <gtest/gtest.h>

#include "support/DesktopDoubles.h"
#include "support/Doubles.h"

namespace kelvara::capture {
namespace {

class LastFilenamesTest : public ::testing::Test, public test::DesktopDoubles<> {
 protected:
  LastFilenames lastFilenames{desktop};
};

TEST_F(LastFilenamesTest, AreEmptyUntilTheyAreSaved) {
  EXPECT_EQ(lastFilenames.GetLastFilename(), "");
  EXPECT_EQ(lastFilenames.GetLastReportFilename(), "");
}

TEST_F(LastFilenamesTest, EachIsStoredUnchangedUnderItsOwnKey) {
  lastFilenames.SaveLastFilename("C:\\logs\\a b.txt");
  lastFilenames.SaveLastReportFilename(" report\xE9.html ");
  EXPECT_EQ(store.values.size(), 2U);
  EXPECT_EQ(store.Value("LastFile"), "C:\\logs\\a b.txt");
  EXPECT_EQ(store.Value("LastReportFile"), " report\xE9.html ");
  EXPECT_EQ(lastFilenames.GetLastFilename(), "C:\\logs\\a b.txt");
  EXPECT_EQ(lastFilenames.GetLastReportFilename(), " report\xE9.html ");
}

TEST_F(LastFilenamesTest, ANameThatCannotBeStoredBeepsOnce) {
  store.writable = false;
  lastFilenames.SaveLastFilename("log.txt");
  EXPECT_EQ(beeper.count, 1);
  lastFilenames.SaveLastReportFilename("report.html");
  EXPECT_EQ(beeper.count, 2);
  EXPECT_EQ(lastFilenames.GetLastFilename(), "");
}

}  // namespace
}  // namespace kelvara::capture
