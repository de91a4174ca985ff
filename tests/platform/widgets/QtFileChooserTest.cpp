#include "platform/widgets/QtFileChooser.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <optional>
#include <string>

#include "support/ChooserUser.h"
#include "support/TextFile.h"

namespace kelvara::widgets {
namespace {

using platform::FileChooserKind;

class QtFileChooserTest : public ::testing::Test {
 protected:
  /// What the chooser returns when this name is typed.
  std::optional<std::string> ChooseTyped(FileChooserKind kind, const std::string& name) {
    const test::ChooserUser user(name);
    return QtFileChooser().Choose(
        {kind, "Select", "HTML File (*.html)|*.html|", folder.path().toStdString(), {}});
  }

  std::string Path(const std::string& name) const {
    return QDir::toNativeSeparators(folder.filePath(QString::fromStdString(name))).toStdString();
  }

  QTemporaryDir folder;
};

TEST_F(QtFileChooserTest, NewNameWithoutASuffixGetsThatOfTheFirstFilter) {
  for (const FileChooserKind kind :
       {FileChooserKind::Open, FileChooserKind::Save, FileChooserKind::SaveConfirmed}) {
    EXPECT_EQ(ChooseTyped(kind, "hall"), Path("hall.html"));
  }
}

TEST_F(QtFileChooserTest, NameWithAnotherSuffixIsKept) {
  for (const FileChooserKind kind :
       {FileChooserKind::Open, FileChooserKind::Save, FileChooserKind::SaveConfirmed}) {
    EXPECT_EQ(ChooseTyped(kind, "hall.htm"), Path("hall.htm"));
  }
}

TEST_F(QtFileChooserTest, ExistingFileWithoutASuffixIsOpenedUnderItsOwnName) {
  test::WriteTextFile(Path("hall"), "kept");
  EXPECT_EQ(ChooseTyped(FileChooserKind::Open, "hall"), Path("hall"));
}

TEST_F(QtFileChooserTest, AsksAboutTheNameWithItsSuffixBeforeItIsReplaced) {
  test::WriteTextFile(Path("hall.html"), "kept");
  std::string question;
  QTimer looks;
  QObject::connect(&looks, &QTimer::timeout, &looks, [&question] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box != nullptr) {
      question = box->text().toStdString();
      test::Click(*box->button(QMessageBox::Yes));
    }
  });
  looks.start(20);
  EXPECT_EQ(ChooseTyped(FileChooserKind::SaveConfirmed, "hall"), Path("hall.html"));
  EXPECT_NE(question.find("hall.html"), std::string::npos) << question;
}

TEST_F(QtFileChooserTest, RelativeNameIsInTheFolderShown) {
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("site")));
  EXPECT_EQ(ChooseTyped(FileChooserKind::Save, "site/hall.html"), Path("site/hall.html"));
}

#ifndef Q_OS_WIN
TEST_F(QtFileChooserTest, TildeIsTheHomeFolder) {
  const QByteArray homeBefore = qgetenv("HOME");
  const QTemporaryDir home;
  qputenv("HOME", home.path().toUtf8());
  const std::optional<std::string> chosen = ChooseTyped(FileChooserKind::Save, "~/hall");
  const std::optional<std::string> opened = ChooseTyped(FileChooserKind::Open, "~/hall");
  qputenv("HOME", homeBefore);
  EXPECT_EQ(chosen, home.filePath(QStringLiteral("hall.html")).toStdString());
  EXPECT_EQ(opened, chosen);
}
#endif

}  // namespace
}  // namespace kelvara::widgets
