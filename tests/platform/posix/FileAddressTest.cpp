#include <gtest/gtest.h>

#include <filesystem>

#include "platform/posix/FileAddress.h"

namespace kelvara::test {
namespace {

std::string Encoded(const std::string& path) {
  return posix::AddressOf(path).toEncoded().toStdString();
}

TEST(FileAddressTest, HoldsTheAbsolutePath) {
  EXPECT_EQ(Encoded("/a folder/report.html"), "file:///a%20folder/report.html");
  EXPECT_EQ(Encoded("/folder\\Help\\index.htm"), "file:///folder/Help/index.htm");
  EXPECT_EQ(Encoded("/B\xC3\xBChne#1?.html"), "file:///B%C3%BChne%231%3F.html");
  const std::string here = std::filesystem::current_path().string();
  EXPECT_EQ(posix::AddressOf("report.html").toLocalFile().toStdString(), here + "/report.html");
}

TEST(FileAddressTest, HoldsEachByteOfANameThatIsNotValidText) {
  EXPECT_EQ(Encoded("/a folder/B\xFChne#1%.html"), "file:///a%20folder/B%FChne%231%25.html");
  EXPECT_EQ(Encoded("/folder\\B\xFChne.html"), "file:///folder/B%FChne.html");
}

TEST(FileAddressTest, ConvertsBackToTheSamePath) {
  for (const std::string path : {"/report.html", "/a folder/B\xC3\xBChne.html", "/B\xFChne.html",
                                 "/50% #1?.html", "/\xFF/\xC3\xBC\xFF+&.html"}) {
    EXPECT_EQ(posix::LocalPath(posix::AddressOf(path)), path);
  }
}

}  // namespace
}  // namespace kelvara::test
