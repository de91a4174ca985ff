#include <gtest/gtest.h>
#include <windows.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <array>

#include "base/Fault.h"
#include "platform/qt/PathText.h"
#include "platform/qt/QtFileSystem.h"
#include "platform/qt/Text.h"

namespace kelvara::qt {
namespace {

class FileNamesTest : public ::testing::Test {
 protected:
  std::string PathOf(const QString& name) const { return PathFromQString(folder.filePath(name)); }

  QByteArray BytesOf(const QString& name) const {
    QFile file(folder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
  }

  QTemporaryDir folder;
  QtFileSystem files;
};

TEST_F(FileNamesTest, FilesWithNamesOutsideTheCharacterSetAreWrittenAndRead) {
  for (const QString& name : {QStringLiteral("\u0416\u3042.txt"), QStringLiteral("\U0001F3A7.txt"),
                              QStringLiteral("B\u00FChne.txt")}) {
    const std::string path = PathOf(name);
    files.OpenForOutput(path)->Write("one,");
    files.OpenForAppend(path)->Write("two");
    EXPECT_EQ(BytesOf(name), "one,two") << path;
    std::array<char, 20> buffer{};
    EXPECT_EQ(files.OpenForInput(path)->Read(buffer), 7U);
    EXPECT_NO_THROW(ExpectReadable(path));
    EXPECT_TRUE(std::filesystem::remove(MachinePath(path)));
    EXPECT_EQ(BytesOf(name), "no file");
  }
}

TEST_F(FileNamesTest, AFileThatIsReadElsewhereCanBeWritten) {
  files.OpenForOutput(PathOf(QStringLiteral("log.txt")))->Write("one,");
  QFile reader(folder.filePath(QStringLiteral("log.txt")));
  ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
  const auto log = files.OpenForAppend(PathOf(QStringLiteral("log.txt")));
  log->Write("two");
  EXPECT_EQ(reader.readAll(), "one,two");
}

TEST_F(FileNamesTest, AFaultNamesTheFileAndTheSystemsReason) {
  const std::string path = PathOf(QStringLiteral("missing\\\u0416.txt"));
  try {
    files.OpenForInput(path);
    FAIL() << "no fault";
  } catch (const base::Fault& fault) {
    EXPECT_EQ(fault.what(),
              "cannot open \"" + path + "\": " + ToText(qt_error_string(ERROR_PATH_NOT_FOUND)));
  }
}

TEST_F(FileNamesTest, AFolderIsNotAFile) {
  EXPECT_THROW(files.OpenForInput(PathFromQString(folder.path())), base::Fault);
  EXPECT_THROW(files.OpenForOutput(PathFromQString(folder.path())), base::Fault);
}

}  // namespace
}  // namespace kelvara::qt
