#include "platform/qt/LockedFiles.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QString>

#include "support/Faults.h"
#include "support/TemporaryFolder.h"

namespace kelvara::test {
namespace {

TEST(LockedFilesTest, WritingToARemovedFileIsAFault) {
  const TemporaryFolder folder;
  const std::string path = folder.PathOf("journal");
  const std::unique_ptr<platform::LockedFile> file = qt::CreateLocked(QString::fromStdString(path));
  ASSERT_NE(file, nullptr);
  file->Write("kept");
  ASSERT_EQ(::unlink(path.c_str()), 0);
  EXPECT_EQ(FaultOf([&] { file->Write("lost"); }), base::FaultKind::File);
}

}  // namespace
}  // namespace kelvara::test
