#include "platform/qt/IniText.h"

#include <gtest/gtest.h>

#include <random>

namespace kelvara::test {
namespace {

using qt::IniText;

std::string WrittenLine(const std::string& value) {
  IniText text;
  text.SetValue("Settings", "Key", value);
  return text.Text();
}

std::optional<std::string> ReadBack(const std::string& file) {
  const std::optional<IniText> text = IniText::Parse(file);
  return text ? text->Value("Settings", "Key") : std::nullopt;
}

TEST(IniTextTest, OrdinaryValuesAreWrittenUnchanged) {
  for (const std::string value :
       {"", "3", "True", "19200", R"(C:\temp\new\x41.txt)", "/home/a b/log, hall 2; part #1.txt",
        "a=b", "50 % \"quoted\" inside", "\"", "\\", "[x]", "; no comment", "J\xC3\xBCrgen",
        "\xFF\xFE latin", "@ByteArray(x)", "%1"}) {
    EXPECT_EQ(WrittenLine(value), "[Settings]\nKey=" + value + "\n");
    EXPECT_EQ(ReadBack(WrittenLine(value)), value);
  }
}

TEST(IniTextTest, ValuesThatWouldBeMisreadAreQuoted) {
  struct Case {
    std::string value;
    std::string written;
  };
  for (const auto& [value, written] :
       {Case{" leading", "\" leading\""}, Case{"trailing ", "\"trailing \""}, Case{" ", "\" \""},
        Case{"\"quoted\"", "\"\"quoted\"\""}, Case{"\"\"", "\"\"\"\""},
        Case{"two\nlines", "\"two\\x0Alines\""}, Case{"\t", "\"\\x09\""},
        Case{std::string("a\0b", 3), "\"a\\x00b\""}, Case{" C:\\x41", "\" C:\\x5Cx41\""},
        Case{" C:\\temp", "\" C:\\x5Ctemp\""}}) {
    EXPECT_EQ(WrittenLine(value), "[Settings]\nKey=" + written + "\n");
    EXPECT_EQ(ReadBack(WrittenLine(value)), value);
  }
}

TEST(IniTextTest, EveryValueIsReadBackUnchanged) {
  std::mt19937 random(4711);
  const std::string common = "\\x0A41\" \t\n=;#[],%\r\x7F\xC3\xBC";
  for (int round = 0; round < 20000; ++round) {
    std::string value;
    for (auto length = random() % 9; length > 0; --length) {
      value +=
          random() % 4 == 0 ? static_cast<char>(random() % 256) : common[random() % common.size()];
    }
    ASSERT_EQ(ReadBack(WrittenLine(value)), value) << testing::PrintToString(value);
  }
}

TEST(IniTextTest, HandWrittenTextIsUnderstood) {
  const std::optional<IniText> text = IniText::Parse(
      "\xEF\xBB\xBF; by hand\r\n\r\n  [ports]  \r\n com1 =  /dev/ttyUSB0  \r\nCOM2=\r\n"
      "# more\n[Settings]\nComPort=3\nComPort=4\n[Ports]\nCOM3=\"/dev/a b\"\n"
      "COM4=\" C:\\new\"");
  ASSERT_TRUE(text);
  EXPECT_EQ(text->Value("Ports", "COM1"), "/dev/ttyUSB0");
  EXPECT_EQ(text->Value("Ports", "COM2"), "");
  EXPECT_EQ(text->Value("Ports", "COM3"), "/dev/a b");
  EXPECT_EQ(text->Value("Ports", "COM4"), " C:\\new");
  EXPECT_EQ(text->Value("Ports", "COM5"), std::nullopt);
  EXPECT_EQ(text->Value("Settings", "ComPort"), "4");
  EXPECT_EQ(text->Value("Settings", "COM1"), std::nullopt);
  EXPECT_EQ(text->Value("Other", "ComPort"), std::nullopt);
}

TEST(IniTextTest, LeadingByteOrderMarksAreIgnored) {
  const std::optional<IniText> text = IniText::Parse("\xEF\xBB\xBF\xEF\xBB\xBF[Settings]\nKey=1\n");
  ASSERT_TRUE(text);
  EXPECT_EQ(text->Text(), "[Settings]\nKey=1\n");
}

TEST(IniTextTest, WritingKeepsHandWrittenCommentsAndOrder) {
  std::optional<IniText> text =
      IniText::Parse("; mine\n[Settings]\n# the port\ncomport = 3 \n\n[Ports]\nCOM1=/dev/a\n");
  ASSERT_TRUE(text);
  text->SetValue("Settings", "ComPort", "5");
  text->SetValue("Settings", "Baudrate", "4800");
  text->SetValue("Ports", "COM2", "/dev/b");
  text->SetValue("More", "Key", "x");
  EXPECT_EQ(text->Text(),
            "; mine\n[Settings]\n# the port\nComPort=5\nBaudrate=4800\n\n[Ports]\nCOM1=/dev/a\n"
            "COM2=/dev/b\n\n[More]\nKey=x\n");
}

TEST(IniTextTest, TextThatIsNotSettingsIsRefused) {
  for (const std::string& text :
       {std::string("garbage"), std::string("[Settings\nA=1\n"), std::string("[Settings]\nA=1\nB"),
        std::string("=value\n"), std::string("[Settings]\nA=\0\n", 14),
        std::string("\x7F"
                    "ELF=1"),
        std::string("A=1\x01\n"), std::string("A\0=\0001\0", 6), std::string("A=1\rB=2\n")}) {
    EXPECT_FALSE(IniText::Parse(text)) << testing::PrintToString(text);
  }
  EXPECT_TRUE(IniText::Parse(""));
  EXPECT_TRUE(IniText::Parse("\n\n;\n"));
}

}  // namespace
}  // namespace kelvara::test
