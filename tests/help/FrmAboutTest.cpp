#include "help/FrmAbout.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QStringList>

#include "help/MakerTexts.h"
#include "help/ProgramIcon.h"
#include "help/ProgramTitle.h"
#include "support/WindowDriver.h"

namespace kelvara::help {
namespace {

using namespace test;

class FrmAboutTest : public testing::Test {
 protected:
  QWidget parent_;
  FrmAbout about_{&parent_};
};

TEST_F(FrmAboutTest, CaptionAndTitleShowTheProgramsTitleAndVersion) {
  const QString title = QString::fromLatin1(help::kProgramTitle);
  EXPECT_EQ(about_.windowTitle(), "About " + title);
  EXPECT_EQ(Find<QLabel>(about_, "lblTitle").text(), QStringLiteral("%1 v%2.%3.%4")
                                                         .arg(title)
                                                         .arg(KELVARA_VERSION_MAJOR)
                                                         .arg(KELVARA_VERSION_MINOR)
                                                         .arg(KELVARA_VERSION_REVISION));
}

TEST_F(FrmAboutTest, MakerAndAddressAreOnSeparateLines) {
  const QLabel& copy = Find<QLabel>(about_, "LblCopy");
  const QStringList lines = copy.text().split(QStringLiteral("\r\n"));
  ASSERT_EQ(lines.size(), 1 + static_cast<qsizetype>(kMakerAddress.size()));
  EXPECT_EQ(lines[0], "Halden Group Communications");
  for (const QString& line : lines) {
    EXPECT_FALSE(line.isEmpty());
    EXPECT_FALSE(line.contains(u'\n')) << line.toStdString();
  }
  EXPECT_EQ(copy.textFormat(), Qt::PlainText);
}

TEST_F(FrmAboutTest, ShowsTheProgramsIcon) {
  const QPixmap shown = Find<QLabel>(about_, "picIcon").pixmap(Qt::ReturnByValue);
  ASSERT_FALSE(shown.isNull());
  EXPECT_EQ(shown.toImage(),
            ProgramIcon().pixmap(QSize(64, 64), qApp->devicePixelRatio()).toImage());
}

TEST(ProgramIcon, HasAPictureForEverySize) {
  const QIcon icon = ProgramIcon();
  for (const int size : {16, 24, 32, 48, 64, 128}) {
    const QImage picture = icon.pixmap(QSize(size, size), 1.0).toImage();
    EXPECT_EQ(picture.size(), QSize(size, size));
    EXPECT_EQ(picture.pixelColor(0, 0).alpha() < 255, true) << size << ": corners are round";
    EXPECT_EQ(picture.pixelColor(size / 2, size / 4).alpha(), 255) << size;
  }
}

TEST_F(FrmAboutTest, IsModal) {
  ShowWindow(about_);
  EXPECT_EQ(QApplication::activeModalWidget(), &about_);
}

TEST_F(FrmAboutTest, ControlsHaveTheirNamesAndCaptions) {
  EXPECT_EQ(about_.objectName(), "FrmAbout");
  EXPECT_EQ(Find<QPushButton>(about_, "cmdOK").text(), "&OK");
  EXPECT_EQ(Find<QPushButton>(about_, "cmdOK").parent(), &about_);
}

TEST_F(FrmAboutTest, OkCloses) {
  ShowWindow(about_);
  Click(Find<QPushButton>(about_, "cmdOK"));
  EXPECT_FALSE(about_.isVisible());
}

TEST_F(FrmAboutTest, BlocksTheProgramUntilItIsClosed) {
  const WhenShown about("FrmAbout", [](QWidget& dialog) {
    EXPECT_EQ(QApplication::activeModalWidget(), &dialog);
    Click(Find<QPushButton>(dialog, "cmdOK"));
  });
  about_.exec();
  EXPECT_TRUE(about.HasCome());
  EXPECT_FALSE(about_.isVisible());
}

TEST_F(FrmAboutTest, SpaceOnOkCloses) {
  ShowWindow(about_);
  EXPECT_EQ(FocusName(), "cmdOK");
  Press(about_, Qt::Key_Space);
  EXPECT_FALSE(about_.isVisible());
}

TEST_F(FrmAboutTest, EscAndTheAccessKeyClose) {
  ShowWindow(about_);
  Press(about_, Qt::Key_Escape);
  EXPECT_FALSE(about_.isVisible());

  ShowWindow(about_);
  Press(about_, Qt::Key_O, Qt::AltModifier);
  EXPECT_TRUE(Closes(about_));
}

TEST_F(FrmAboutTest, EnterCloses) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    ShowWindow(about_);
    Press(about_, key);
    EXPECT_FALSE(about_.isVisible());
  }
}

TEST_F(FrmAboutTest, LayoutHoldsInEveryThemeAndFont) {
  for (const auto& [theme, note] : {std::pair{Theme::Light, "light"}, {Theme::Dark, "dark"}}) {
    for (const double scale : {1.0, 1.5, 2.0}) {
      const UseTheme useTheme(theme);
      const UseFont useFont(scale);
      FrmAbout about(&parent_);
      ShowWindow(about);
      EXPECT_EQ(LayoutFaults(about), "") << note << ", font " << scale;
      TakePicture(about, QString("%1-font%2").arg(note).arg(scale).toStdString());
    }
  }
}

}  // namespace
}  // namespace kelvara::help
