#include "app/LogTextBox.h"

#include <gtest/gtest.h>

#include <QFontInfo>
#include <QTest>

#include "support/WindowDriver.h"

namespace kelvara::test {
namespace {

class LogTextBoxTest : public testing::Test {
 protected:
  void SetUp() override { ShowWindow(box_); }
  std::string Text() const { return box_.toPlainText().toStdString(); }

  app::LogTextBox box_;
};

/// Lines of ten characters, including the line feed, padded at the end to the length.
QString Lines(int length) {
  QString text;
  while (text.size() + 10 <= length) {
    text += QStringLiteral("%1\n").arg(text.size(), 9, 10, QChar(u'0'));
  }
  return text + QString(length - text.size(), u'x');
}

TEST_F(LogTextBoxTest, UsesCourierNewWhenItIsShown) {
  box_.SetShown(true);
  EXPECT_EQ(box_.font().family(), "Courier New");
  EXPECT_TRUE(QFontInfo(box_.font()).fixedPitch());
}

TEST_F(LogTextBoxTest, AppendsAtTheEndWithoutAddingALineEnd) {
  box_.Append("one");
  box_.moveCursor(QTextCursor::Start);
  box_.Append("two\r\nthree");
  EXPECT_EQ(Text(), "onetwo\nthree");
}

TEST_F(LogTextBoxTest, DiscardsTextWhileItIsHidden) {
  box_.SetShown(false);
  box_.Append("unseen");
  box_.SetShown(true);
  EXPECT_EQ(Text(), "");
}

TEST_F(LogTextBoxTest, With32000CharactersAppendsWithoutACut) {
  box_.setPlainText(Lines(32000));
  box_.Append("new");
  EXPECT_EQ(Text(), Lines(32000).toStdString() + "new");
}

TEST_F(LogTextBoxTest, WithOneMoreKeepsTheTextAfterTheFirstLineFeedFromCharacter16000) {
  const QString full = Lines(32001);
  box_.setPlainText(full);
  box_.Append("new");
  // Character 16000, counted from 1, is a line feed itself.
  ASSERT_EQ(full.at(15999), u'\n');
  EXPECT_EQ(Text(), full.mid(16000).toStdString() + "new");
}

TEST_F(LogTextBoxTest, CutWithoutALineFeedKeepsAllFromCharacter16000) {
  box_.setPlainText(QString(32001, u'x'));
  box_.Append("new");
  EXPECT_EQ(box_.toPlainText().size(), 32001 - 15999 + 3);
}

TEST_F(LogTextBoxTest, ControlASelectsAllAndControlBackspaceDeletesTheSelection) {
  box_.Append("one\r\ntwo");
  Press(box_, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(box_.textCursor().selectedText().size(), 7);
  Press(box_, Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(Text(), "");
}

TEST_F(LogTextBoxTest, ControlBackspaceWithoutASelectionDeletesNothing) {
  box_.Append("one two");
  Press(box_, Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(Text(), "one two");
}

TEST_F(LogTextBoxTest, OtherKeysActNormally) {
  box_.Append("one");
  Press(box_, Qt::Key_Backspace);
  Type(box_, "X");
  EXPECT_EQ(Text(), "onX");
}

}  // namespace
}  // namespace kelvara::test
