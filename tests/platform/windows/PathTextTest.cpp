#include "platform/qt/PathText.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/qt/Text.h"

namespace kelvara::qt {
namespace {

/// Characters that no single 8-bit character set has.
const QString kForeign = QStringLiteral("\u0416\u3042\u0142\U0001F3A7");

TEST(PathTextTest, AnAsciiPathIsUnchangedButForItsSeparators) {
  EXPECT_EQ(PathFromQString(QStringLiteral("C:/logs\\hall 2.txt")), "C:\\logs\\hall 2.txt");
  EXPECT_EQ(QStringFromPath("C:\\logs\\hall 2.txt"), QStringLiteral("C:\\logs\\hall 2.txt"));
  EXPECT_EQ(MachinePath("C:/logs\\a.txt").wstring(), L"C:\\logs\\a.txt");
}

TEST(PathTextTest, ACharacterOutsideTheCharacterSetIsEscaped) {
  // A character set without the emoji, as all are but UTF-8.
  const QString emoji = QStringLiteral("\U0001F3A7");
  if (QString::fromLocal8Bit(emoji.toLocal8Bit()) == emoji) {
    GTEST_SKIP() << "the machine's character set is UTF-8";
  }
  EXPECT_EQ(PathFromQString(QStringLiteral("a\U0001F3A7b")), "a?D83C?DFA7b");
}

TEST(PathTextTest, ACharacterIsNotReplacedWithASimilarOne) {
  // Windows would write "l" for this letter in several character sets.
  const std::string path = PathFromQString(QStringLiteral("\u0142.txt"));
  EXPECT_NE(path, "l.txt");
  EXPECT_EQ(QStringFromPath(path), QStringLiteral("\u0142.txt"));
}

TEST(PathTextTest, EveryNameIsRestored) {
  std::mt19937 random(4711);
  const QString common = QStringLiteral("a?0F9 \u00FC\u20AC") + kForeign;
  for (int round = 0; round < 20000; ++round) {
    QString name;
    for (auto length = random() % 12; length > 0; --length) {
      name += random() % 4 == 0 ? QChar(static_cast<char16_t>(random() % 0x10000))
                                : common[static_cast<qsizetype>(random() % common.size())];
    }
    name.remove(u'/');
    const std::string path = PathFromQString(name);
    ASSERT_EQ(QStringFromPath(path), name) << path;
    ASSERT_EQ(MachinePath(path).wstring(), name.toStdWString()) << path;
  }
}

TEST(PathTextTest, AnEscapeThatAUserTypesStaysAsTyped) {
  const QString typed = QStringLiteral("what?0041.txt");
  EXPECT_EQ(PathFromQString(typed), "what?003F0041.txt");
  EXPECT_EQ(QStringFromPath(PathFromQString(typed)), typed);
  EXPECT_EQ(PathFromQString(QStringLiteral("\\\\?\\C:\\a.txt")), "\\\\?\\C:\\a.txt");
}

TEST(PathTextTest, LetterCaseDoesNotDistinguishPaths) {
  EXPECT_TRUE(IsSamePath(L"C:\\B\u00DChne.txt", L"c:\\b\u00FChne.TXT"));
  EXPECT_FALSE(IsSamePath(L"C:\\a.txt", L"C:\\b.txt"));
}

TEST(PathTextTest, AMessageShowsNamesWithoutEscapes) {
  const QString name = QStringLiteral("C:\\") + kForeign + QStringLiteral(".html");
  EXPECT_EQ(MessageText("\"" + PathFromQString(name) + "\" already exists. Replace it?"),
            u'"' + name + QStringLiteral("\" already exists. Replace it?"));
}

}  // namespace
}  // namespace kelvara::qt
