#include "platform/qt/QtSessionFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "support/Faults.h"
#include "support/TemporaryFolder.h"
#include "support/TextFile.h"

namespace kelvara::test {
namespace {

struct QtSessionFolderTest : ::testing::Test {
  std::string PathOf(const std::string& name) const {
    return (std::filesystem::path(root.Path()) / "data" / "sessions" / name).string();
  }

  TemporaryFolder root;
  qt::QtSessionFolder folder{
      QString::fromStdString((std::filesystem::path(root.Path()) / "data" / "sessions").string())};
};

TEST_F(QtSessionFolderTest, MakesItsFolderWithTheFirstFile) {
  EXPECT_TRUE(folder.List().empty());
  EXPECT_EQ(folder.Open("a"), nullptr);
  const std::unique_ptr<platform::LockedFile> file = folder.Create("a");
  ASSERT_NE(file, nullptr);
  file->Write("text");
  ASSERT_EQ(folder.List().size(), 1U);
  EXPECT_EQ(folder.List()[0].name, "a");
  EXPECT_EQ(folder.List()[0].size, 4U);
}

TEST_F(QtSessionFolderTest, MakesNoFileUnderANameThatIsTaken) {
  folder.Create("a")->Write("kept");
  EXPECT_EQ(folder.Create("a"), nullptr);
  EXPECT_EQ(ReadTextFile(PathOf("a")), "kept");
}

TEST_F(QtSessionFolderTest, AFileIsLockedWhileItIsOpenButCanBeRead) {
  std::unique_ptr<platform::LockedFile> file = folder.Create("a");
  file->Write("text");
  EXPECT_EQ(folder.Open("a"), nullptr);
  EXPECT_EQ(ReadTextFile(PathOf("a")), "text");
  file.reset();
  file = folder.Open("a");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(folder.Open("a"), nullptr);
}

TEST_F(QtSessionFolderTest, WritesGoToTheEndWhateverWasReadOrCut) {
  const std::unique_ptr<platform::LockedFile> file = folder.Create("a");
  file->Write("one two");
  std::array<char, 3> buffer{};
  EXPECT_EQ(file->Read(4, buffer), 3U);
  EXPECT_EQ(std::string(buffer.data(), 3), "two");
  EXPECT_EQ(file->Read(6, buffer), 1U);
  EXPECT_EQ(file->Read(7, buffer), 0U);
  file->Read(0, buffer);
  file->Write(", three");
  EXPECT_EQ(ReadTextFile(PathOf("a")), "one two, three");
  file->Cut(3);
  EXPECT_EQ(file->Size(), 3U);
  file->Write(".");
  EXPECT_EQ(ReadTextFile(PathOf("a")), "one.");
}

TEST_F(QtSessionFolderTest, ALockedFileCanBeRemoved) {
  std::unique_ptr<platform::LockedFile> file = folder.Create("a");
  file->Remove();
  file.reset();
  EXPECT_TRUE(folder.List().empty());
}

TEST_F(QtSessionFolderTest, AFolderThatCannotBeMadeIsAFileFault) {
  WriteTextFile((std::filesystem::path(root.Path()) / "data").string(), "a file");
  EXPECT_EQ(FaultOf([&] { folder.Create("a"); }), base::FaultKind::File);
}

}  // namespace
}  // namespace kelvara::test
