#include "platform/qt/QtFileSystem.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

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

TEST_F(QtFileSystemTest, WritingToARemovedFileIsAFault) {
  const std::string path = folder.PathOf("log.txt");
  const std::unique_ptr<platform::OutputFile> file = files.OpenForAppend(path);
  file->Write("kept");
  ASSERT_EQ(::rename(path.c_str(), folder.PathOf("renamed.txt").c_str()), 0);
  file->Write(" too");
  EXPECT_EQ(test::ReadTextFile(folder.PathOf("renamed.txt")), "kept too");
  ASSERT_EQ(::unlink(folder.PathOf("renamed.txt").c_str()), 0);
  EXPECT_EQ(FaultOf([&] { file->Write("lost"); }),
            "cannot write \"" + path + "\": the file has been removed");
}

TEST_F(QtFileSystemTest, WritesToAFileThatNeverWasInAFolder) {
  const int nameless = ::open(folder.Path().c_str(), O_TMPFILE | O_RDWR, 0600);
  if (nameless < 0) {
    GTEST_SKIP() << "the file system has no files without a name";
  }
  files.OpenForOutput("/dev/fd/" + std::to_string(nameless))->Write("text");
  std::array<char, 4> text{};
  EXPECT_EQ(::pread(nameless, text.data(), text.size(), 0), 4);
  EXPECT_EQ(std::string_view(text.data(), text.size()), "text");
  ::close(nameless);
}

TEST_F(QtFileSystemTest, ReadsFromAnyPlace) {
  const std::string path = folder.PathOf("a.txt");
  files.OpenForOutput(path)->Write("0123456789");
  const std::unique_ptr<platform::InputFile> file = files.OpenForInput(path);
  std::array<char, 4> buffer{};
  for (const std::uint64_t place : {7, 2}) {
    file->Seek(place);
    ASSERT_GE(file->Read(buffer), 3U);
    EXPECT_EQ(buffer[0], static_cast<char>('0' + place));
  }
  file->Seek(11);
  EXPECT_EQ(file->Read(buffer), 0U);
}

TEST_F(QtFileSystemTest, APipeHasNoPlaces) {
  const std::string path = folder.PathOf("pipe");
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const int writer = ::open(path.c_str(), O_RDWR);
  EXPECT_EQ(FaultOf([&] { files.OpenForInput(path)->Seek(0); }),
            "cannot read \"" + path + "\": it is not a file that can be read at any place");
  ::close(writer);
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
