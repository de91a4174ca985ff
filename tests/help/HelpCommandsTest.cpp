#include "help/HelpCommands.h"

#include <gtest/gtest.h>

#include "help/MakerTexts.h"
#include "support/Doubles.h"

namespace kelvara::help {
namespace {

/// Remembers what was to be opened; `works` says whether the desktop could.
class RecordingOpener : public platform::DocumentOpener {
 public:
  bool OpenDocument(const std::string& path) override {
    documents.push_back(path);
    return works;
  }
  bool OpenAddress(const std::string& address) override {
    addresses.push_back(address);
    return works;
  }

  std::vector<std::string> documents;
  std::vector<std::string> addresses;
  bool works = true;
};

class HelpCommandsTest : public testing::Test {
 protected:
  /// The one box that was shown.
  test::RecordingMessageBoxes::Box TheBox() {
    EXPECT_EQ(messageBoxes_.boxes.size(), 1U);
    return messageBoxes_.boxes.at(0);
  }

  const std::string path_ = "C:\\Program Files\\Kelvara\\Help\\index.htm";
  RecordingOpener opener_;
  test::MemoryFileSystem fileSystem_;
  test::RecordingMessageBoxes messageBoxes_;
  HelpCommands commands_{opener_, fileSystem_, messageBoxes_};
};

TEST(HelpPath, IsTheProgramsFolderAndTheFirstPage) {
  EXPECT_EQ(HelpPath("C:\\Kelvara"), "C:\\Kelvara\\Help\\index.htm");
  EXPECT_EQ(HelpPath("/opt/kelvara/bin"), "/opt/kelvara/bin\\Help\\index.htm");
}

TEST(HelpPath, HasOneSeparatorAfterARootFolder) {
  EXPECT_EQ(HelpPath("C:\\"), "C:\\Help\\index.htm");
  EXPECT_EQ(HelpPath("/"), "\\Help\\index.htm");
}

TEST_F(HelpCommandsTest, HelpOpensThePage) {
  fileSystem_.files[path_] = "<html>";
  commands_.mnuContents_Click(path_);
  EXPECT_EQ(opener_.documents, std::vector{path_});
  EXPECT_TRUE(opener_.addresses.empty());
  EXPECT_TRUE(messageBoxes_.boxes.empty());
  EXPECT_EQ(fileSystem_.openFiles, 0);
}

TEST_F(HelpCommandsTest, MissingHelpIsToldWithItsPathAndNotOpened) {
  commands_.mnuContents_Click(path_);
  EXPECT_TRUE(opener_.documents.empty());
  const auto box = TheBox();
  EXPECT_EQ(box.text,
            "Error occured while attempting to display "
            "C:\\Program Files\\Kelvara\\Help\\index.htm");
  EXPECT_EQ(box.title, "Kelvara Help");
  EXPECT_EQ(box.icon, platform::MessageIcon::Critical);
  EXPECT_EQ(box.buttons, platform::MessageButtons::Ok);
}

TEST_F(HelpCommandsTest, HelpThatTheDesktopCannotOpenIsToldTheSame) {
  fileSystem_.files[path_] = "<html>";
  opener_.works = false;
  commands_.mnuContents_Click(path_);
  EXPECT_EQ(opener_.documents.size(), 1U);
  const auto box = TheBox();
  EXPECT_EQ(box.text, "Error occured while attempting to display " + path_);
  EXPECT_EQ(box.title, "Kelvara Help");
}

TEST_F(HelpCommandsTest, UnreadableHelpIsToldTheSame) {
  fileSystem_.files[path_] = "<html>";
  fileSystem_.unopenable[path_] = true;
  commands_.mnuContents_Click(path_);
  EXPECT_EQ(TheBox().text, "Error occured while attempting to display " + path_);
}

TEST_F(HelpCommandsTest, HelpBeforeTheProgramHasAPathIsToldWithoutOne) {
  commands_.mnuContents_Click({});
  EXPECT_EQ(TheBox().text, "Error occured while attempting to display ");
}

TEST_F(HelpCommandsTest, WebLinkOpensTheMakersAddress) {
  commands_.mnuOrrinWeb_Click();
  EXPECT_EQ(opener_.addresses, std::vector{std::string(kMakerWebAddress)});
  EXPECT_TRUE(opener_.documents.empty());
  EXPECT_TRUE(messageBoxes_.boxes.empty());
}

TEST_F(HelpCommandsTest, WebLinkThatFailsIsTold) {
  opener_.works = false;
  commands_.mnuOrrinWeb_Click();
  const auto box = TheBox();
  EXPECT_EQ(box.text, "Could not connect to the HGC Website.");
  EXPECT_EQ(box.title, "Halden Group Communications Website");
  EXPECT_EQ(box.icon, platform::MessageIcon::Critical);
  EXPECT_EQ(box.buttons, platform::MessageButtons::Ok);
}

TEST(MakerTexts, LeadToAnExampleDomain) {
  EXPECT_TRUE(kMakerWebAddress.starts_with("https://www.example.com/"));
  EXPECT_EQ(kMakerName, "Halden Group Communications");
}

}  // namespace
}  // namespace kelvara::help
