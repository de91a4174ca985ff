#include "platform/qt/Text.h"

#include <gtest/gtest.h>

#include <random>

namespace kelvara::qt {
namespace {

TEST(TextTest, ValidTextIsTheSameForDisplayAndForAField) {
  for (const std::string& text :
       {std::string(), std::string("plain"), std::string("B\xC3\xBChne"),
        std::string("\xE2\x82\xAC \xF0\x9F\x8E\xA7 \xEF\xBF\xBD"), std::string("a\0b", 3)}) {
    EXPECT_EQ(ToFieldText(text), ToQString(text));
    EXPECT_EQ(ToText(ToQString(text)), text);
  }
}

TEST(TextTest, FieldTextKeepsEachInvalidByte) {
  EXPECT_EQ(ToFieldText("B\xFChne"), QStringLiteral("B") + QChar(0xDCFC) + QStringLiteral("hne"));
  EXPECT_EQ(ToFieldText("\xE2\x82"), QString(QChar(0xDCE2)) + QChar(0xDC82));
  EXPECT_EQ(ToFieldText("\xFF\xC3\xBC"), QString(QChar(0xDCFF)) + QChar(0xFC));
}

TEST(TextTest, FieldTextIsRestoredByteForByte) {
  std::mt19937 random(4711);
  const std::string common = "ab/\xC3\xBC\xE2\x82\xAC\xF0\x9F\x8E\xA7\xED\xB3\xBC";
  for (int round = 0; round < 20000; ++round) {
    std::string bytes;
    for (auto length = random() % 12; length > 0; --length) {
      bytes +=
          random() % 4 == 0 ? static_cast<char>(random() % 256) : common[random() % common.size()];
    }
    ASSERT_EQ(ToText(ToFieldText(bytes)), bytes) << testing::PrintToString(bytes);
  }
}

}  // namespace
}  // namespace kelvara::qt
