#include "platform/qt/DesktopOpening.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "platform/qt/PathText.h"

namespace kelvara::qt {
namespace {

TEST(DesktopOpeningTest, SucceedsForWhatTheSystemCanOpen) {
  const QString program =
      qEnvironmentVariable("SystemRoot") + QStringLiteral("/system32/hostname.exe");
  EXPECT_TRUE(OpenDocument(PathFromQString(program)));
}

TEST(DesktopOpeningTest, FailsForAMissingDocument) {
  const QTemporaryDir folder;
  EXPECT_FALSE(OpenDocument(PathFromQString(folder.filePath("missing.htm"))));
}

TEST(DesktopOpeningTest, FailsForAnAddressThatNoProgramOpens) {
  EXPECT_FALSE(OpenAddress("kelvara-unknown://nowhere/"));
}

}  // namespace
}  // namespace kelvara::qt
