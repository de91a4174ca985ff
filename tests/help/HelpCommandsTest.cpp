#include "help/HelpCommands.h"

#include <gtest/gtest.h>

#include "help/MakerTexts.h"
#include "support/DesktopDoubles.h"

namespace kelvara::help {
namespace {

class HelpCommandsTest : public testing::Test, public test::DesktopDoubles<> {
 protected:
  /// The one box that was shown.
  test::RecordingMessageBoxes::Box TheBox() {
    EXPECT_EQ(boxes.boxes.size(), 1U);
    return boxes.boxes.at(0);
  }

  const std::string path_ = "C:\\Program Files\\Kelvara\\Help\\index.htm";
  HelpCommands commands_{desktop};
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
  files.files[path_] = "<html>";
  commands_.mnuContents_Click(path_);
  EXPECT_EQ(opener.documents, std::vector{path_});
  EXPECT_TRUE(opener.addresses.empty());
  EXPECT_TRUE(boxes.boxes.empty());
  EXPECT_EQ(files.openFiles, 0);
}

TEST_F(HelpCommandsTest, MissingHelpIsReportedWithItsPathAndNotOpened) {
  commands_.mnuContents_Click(path_);
  EXPECT_TRUE(opener.documents.empty());
  const auto box = TheBox();
  EXPECT_EQ(box.text,
            "Error occured while attempting to display "
            "C:\\Program Files\\Kelvara\\Help\\index.htm");
  EXPECT_EQ(box.title, "Kelvara Help");
  EXPECT_EQ(box.icon, platform::MessageIcon::Critical);
  EXPECT_EQ(box.buttons, platform::MessageButtons::Ok);
}

TEST_F(HelpCommandsTest, HelpThatTheDesktopCannotOpenIsReportedWithItsPath) {
  files.files[path_] = "<html>";
  opener.answer = false;
  commands_.mnuContents_Click(path_);
  EXPECT_EQ(opener.documents.size(), 1U);
  const auto box = TheBox();
  EXPECT_EQ(box.text, "Error occured while attempting to display " + path_);
  EXPECT_EQ(box.title, "Kelvara Help");
}

TEST_F(HelpCommandsTest, UnreadableHelpIsReportedWithItsPath) {
  files.files[path_] = "<html>";
  files.unopenable[path_] = true;
  commands_.mnuContents_Click(path_);
  EXPECT_EQ(TheBox().text, "Error occured while attempting to display " + path_);
}

TEST_F(HelpCommandsTest, HelpWithoutAPathIsReportedWithoutOne) {
  commands_.mnuContents_Click({});
  EXPECT_EQ(TheBox().text, "Error occured while attempting to display ");
}

TEST_F(HelpCommandsTest, WebLinkOpensTheMakersAddress) {
  commands_.mnuOrrinWeb_Click();
  EXPECT_EQ(opener.addresses, std::vector{std::string(kMakerWebAddress)});
  EXPECT_TRUE(opener.documents.empty());
  EXPECT_TRUE(boxes.boxes.empty());
}

TEST_F(HelpCommandsTest, WebLinkThatFailsIsReported) {
  opener.answer = false;
  commands_.mnuOrrinWeb_Click();
  const auto box = TheBox();
  EXPECT_EQ(box.text, "Could not connect to the HGC Website.");
  EXPECT_EQ(box.title, "Halden Group Communications Website");
  EXPECT_EQ(box.icon, platform::MessageIcon::Critical);
  EXPECT_EQ(box.buttons, platform::MessageButtons::Ok);
}

TEST(MakerTexts, UseAnExampleDomain) {
  EXPECT_TRUE(kMakerWebAddress.starts_with("https://www.example.com/"));
  EXPECT_EQ(kMakerName, "Halden Group Communications");
}

}  // namespace
}  // namespace kelvara::help
