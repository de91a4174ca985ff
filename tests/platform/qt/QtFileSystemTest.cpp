#include "platform/qt/QtFileSystem.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <thread>

#include "base/Fault.h"
#include "support/TemporaryFolder.h"
#include "support/TextFile.h"

namespace kelvara::qt {
namespace {

class QtFileSystemTest : public ::testing::Test {
 protected:
  /// The text of the fault that the attempt throws.
  template <typename Attempt>
  static std::string FaultOf(Attempt attempt) {
    try {
      attempt();
    } catch (const base::Fault& fault) {
      return fault.what();
    }
    return "no fault";
  }

  std::string ReadAll(const std::string& path) {
    std::array<char, 100> buffer{};
    return {buffer.data(), files.OpenForInput(path)->Read(buffer)};
  }

  test::TemporaryFolder folder;
  QtFileSystem files;
};

TEST_F(QtFileSystemTest, AcceptsANameThatIsNotValidText) {
  const std::string path = folder.PathOf("caf\xE9 \xFF.txt");
  files.OpenForOutput(path)->Write("one,");
  files.OpenForAppend(path)->Write("two");
  EXPECT_EQ(test::ReadTextFile(path), "one,two");
  EXPECT_EQ(ReadAll(path), "one,two");
  EXPECT_NO_THROW(ExpectReadable(path));
  files.OpenForOutput(path)->Write("new");
  EXPECT_EQ(test::ReadTextFile(path), "new");
}

TEST_F(QtFileSystemTest, AcceptsABackslashAsASeparator) {
  files.OpenForOutput(folder.Path() + "\\a.txt")->Write("text");
  EXPECT_EQ(test::ReadTextFile(folder.PathOf("a.txt")), "text");
  EXPECT_EQ(ReadAll(folder.Path() + "\\a.txt"), "text");
}

TEST_F(QtFileSystemTest, AFaultNamesTheFileAndTheReason) {
  const std::string missing = folder.PathOf("missing/\xFF.txt");
  const std::string reason = "cannot open \"" + missing + "\": No such file or directory";
  EXPECT_EQ(FaultOf([&] { files.OpenForInput(missing); }), reason);
  EXPECT_EQ(FaultOf([&] { files.OpenForOutput(missing); }), reason);
  EXPECT_EQ(FaultOf([&] { files.OpenForAppend(missing); }), reason);
  EXPECT_EQ(FaultOf([&] { ExpectReadable(missing); }), reason);
}

TEST_F(QtFileSystemTest, RefusesAFolder) {
  const std::string reason =
      "cannot open \"" + folder.Path() + "\": " + std::generic_category().message(EISDIR);
  EXPECT_EQ(FaultOf([&] { files.OpenForInput(folder.Path()); }), reason);
  EXPECT_EQ(FaultOf([&] { files.OpenForOutput(folder.Path()); }), reason);
  EXPECT_EQ(FaultOf([&] { ExpectReadable(folder.Path()); }), reason);
}

TEST_F(QtFileSystemTest, AppendsToAPipe) {
  const std::string path = folder.PathOf("pipe");
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  std::string read;
  std::thread reader([&] { read = test::ReadTextFile(path); });
  files.OpenForAppend(path)->Write("text");
  reader.join();
  EXPECT_EQ(read, "text");
}

}  // namespace
}  // namespace kelvara::qt
