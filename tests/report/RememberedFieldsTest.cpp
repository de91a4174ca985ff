#include "report/RememberedFields.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "support/Doubles.h"

namespace kelvara::report {
namespace {

constexpr const char* kPath = "C:\\Program\\rfields.ds";

class RememberedFieldsTest : public ::testing::Test {
 protected:
  std::string& File() { return files.files[kPath]; }

  void LoadFrom(const std::string& text) {
    File() = text;
    remembered.LoadOrCreate(fields);
  }

  test::MemoryFileSystem files;
  RememberedFields remembered{files, "C:\\Program"};
  ReportFields fields{"old site", "old tester", false, "old notes"};
};

TEST_F(RememberedFieldsTest, ShowReportIsCheckedAtFirst) { EXPECT_TRUE(ReportFields().showReport); }

TEST_F(RememberedFieldsTest, AreStoredBesideTheProgram) { EXPECT_EQ(remembered.Path(), kPath); }

TEST_F(RememberedFieldsTest, MissingFileIsWrittenFromTheFields) {
  fields = ReportFields();
  remembered.LoadOrCreate(fields);
  EXPECT_EQ(File(), "\r\n\r\n 1 \r\n\r\n");
  EXPECT_EQ(fields.site, "");
  EXPECT_EQ(fields.notes, "");
  EXPECT_TRUE(fields.showReport);
  EXPECT_EQ(files.openFiles, 0);
}

TEST_F(RememberedFieldsTest, SaveWritesEachFieldOnItsLine) {
  remembered.Save({" Hall 3 ", "A. Tester", true, "  one\r\ntwo  "});
  EXPECT_EQ(File(), " Hall 3 \r\nA. Tester\r\n 1 \r\none\r\ntwo\r\n");
  remembered.Save({"s", "t", false, ""});
  EXPECT_EQ(File(), "s\r\nt\r\n 0 \r\n\r\n");
}

TEST_F(RememberedFieldsTest, TrimmingRemovesBlanksOnly) {
  remembered.Save({"", "", true, " \t a \r\n "});
  EXPECT_EQ(File(), "\r\n\r\n 1 \r\n\t a \r\n\r\n");
}

TEST_F(RememberedFieldsTest, LoadReadsEachLineIntoItsField) {
  LoadFrom(" Hall 3 \r\nA. Tester\r\n 1 \r\none\r\n\r\ntwo\r\n");
  EXPECT_EQ(fields.site, " Hall 3 ");
  EXPECT_EQ(fields.tester, "A. Tester");
  EXPECT_TRUE(fields.showReport);
  EXPECT_EQ(fields.notes, "one\r\n\r\ntwo\r\n");
}

TEST_F(RememberedFieldsTest, LoadLeavesTheFileAsItIs) {
  const std::string text = "s\r\nt\r\n1\r\n n \r\n";
  LoadFrom(text);
  EXPECT_EQ(File(), text);
}

TEST_F(RememberedFieldsTest, NotesGrowByAnEmptyLineWithEverySaveAfterALoad) {
  std::string expected = "abc";
  fields.notes = expected;
  for (int round = 0; round < 4; ++round) {
    SCOPED_TRACE(round);
    remembered.Save(fields);
    remembered.LoadOrCreate(fields);
    expected += "\r\n";
    EXPECT_EQ(fields.notes, expected);
  }
}

TEST_F(RememberedFieldsTest, ThirdLineIsANumberWithBlanksIgnored) {
  const std::array<std::pair<const char*, bool>, 12> states{{{"1", true},
                                                             {" 1 ", true},
                                                             {"x", false},
                                                             {"", false},
                                                             {" 0 ", false},
                                                             {"0.5", false},
                                                             {"0.6", true},
                                                             {" - 1", true},
                                                             {"1x", true},
                                                             {"x1", false},
                                                             {"0 1", true},
                                                             {"32767", true}}};
  for (const auto& [text, checked] : states) {
    SCOPED_TRACE(text);
    fields.showReport = !checked;
    LoadFrom("s\r\nt\r\n" + std::string(text) + "\r\n");
    EXPECT_EQ(fields.showReport, checked);
    EXPECT_EQ(fields.notes, "");
  }
}

TEST_F(RememberedFieldsTest, NumberTooLargeForTheStateEndsTheLoadThere) {
  for (const std::string& number :
       {std::string("32768"), std::string("-40000"), "1" + std::string(400, '0')}) {
    SCOPED_TRACE(number);
    fields = {"old site", "old tester", false, "old notes"};
    LoadFrom("s\r\nt\r\n" + number + "\r\nnotes\r\n");
    EXPECT_EQ(fields.site, "s");
    EXPECT_EQ(fields.tester, "t");
    EXPECT_FALSE(fields.showReport);
    EXPECT_EQ(fields.notes, "old notes");
  }
}

TEST_F(RememberedFieldsTest, FileThatEndsEarlyLeavesTheOtherFieldsAsTheyWere) {
  LoadFrom("");
  EXPECT_EQ(fields.site, "old site");

  LoadFrom("s");
  EXPECT_EQ(fields.site, "s");
  EXPECT_EQ(fields.tester, "old tester");

  LoadFrom("s2\r\nt\r\n");
  EXPECT_EQ(fields.site, "s2");
  EXPECT_EQ(fields.tester, "t");
  EXPECT_FALSE(fields.showReport);
  EXPECT_EQ(fields.notes, "old notes");

  LoadFrom("s\r\nt\r\n1");
  EXPECT_TRUE(fields.showReport);
  EXPECT_EQ(fields.notes, "");
}

TEST_F(RememberedFieldsTest, LastNotesLineNeedsNoLineEnd) {
  LoadFrom("s\r\nt\r\n1\r\none\r\ntwo");
  EXPECT_EQ(fields.notes, "one\r\ntwo\r\n");
}

TEST_F(RememberedFieldsTest, LineFeedAloneAlsoEndsALine) {
  LoadFrom("s\nt\n1\none\ntwo\n");
  EXPECT_EQ(fields.site, "s");
  EXPECT_EQ(fields.tester, "t");
  EXPECT_TRUE(fields.showReport);
  EXPECT_EQ(fields.notes, "one\r\ntwo\r\n");
}

TEST_F(RememberedFieldsTest, LinesLongerThanAReadAreReadWhole) {
  const std::string site(5000, 'S');
  const std::string notes = std::string(4095, 'n') + "\r\n" + std::string(9000, 'm') + "\r\n";
  LoadFrom(site + "\r\nt\r\n1\r\n" + notes);
  EXPECT_EQ(fields.site, site);
  EXPECT_EQ(fields.notes, notes);
}

TEST_F(RememberedFieldsTest, AFileIsReadToItsEndWhateverItsLength) {
  constexpr std::size_t kMebibyte = std::size_t{1} << 20U;
  const std::string site(2 * kMebibyte, 's');
  std::string notes(kMebibyte, 'n');
  for (int line = 0; line < 100000; ++line) {
    notes += "\r\n" + std::to_string(line);
  }
  notes += "\r\n";
  LoadFrom(site + "\r\nt\r\n1\r\n" + notes);
  // Compared as a whole: a failure would print megabytes.
  EXPECT_TRUE(fields.site == site);
  EXPECT_EQ(fields.tester, "t");
  EXPECT_TRUE(fields.notes == notes);
}

TEST_F(RememberedFieldsTest, FileThatCannotBeOpenedChangesNothing) {
  File() = "s\r\nt\r\n1\r\n\r\n";
  files.unopenable[kPath] = true;
  remembered.LoadOrCreate(fields);
  EXPECT_EQ(fields.site, "old site");
  EXPECT_EQ(File(), "s\r\nt\r\n1\r\n\r\n");
}

TEST_F(RememberedFieldsTest, WriteThatFailsEndsTheSaveSilently) {
  const std::array<const char*, 5> afterWrites{"", "s\r\n", "s\r\nt\r\n", "s\r\nt\r\n 1 \r\n",
                                               "s\r\nt\r\n 1 \r\nn\r\n"};
  for (std::size_t written = 0; written < afterWrites.size(); ++written) {
    SCOPED_TRACE(written);
    files.writesLeft = static_cast<int>(written);
    EXPECT_NO_THROW(remembered.Save({"s", "t", true, "n"}));
    EXPECT_EQ(File(), afterWrites.at(written));
    EXPECT_EQ(files.openFiles, 0);
  }
}

/// A file that returns a few bytes at a time and fails before its end.
class FailingFile : public platform::InputFile {
 public:
  explicit FailingFile(std::string text) : text_(std::move(text)) {}
  std::size_t Read(std::span<char> buffer) override {
    if (position_ == text_.size()) {
      throw base::Fault(base::FaultKind::File, "read error");
    }
    const std::size_t got = text_.copy(buffer.data(), 3, position_);
    position_ += got;
    return got;
  }
  std::size_t Size() const override { return 0; }

 private:
  std::string text_;
  std::size_t position_ = 0;
};

class FailingFileSystem : public test::MemoryFileSystem {
 public:
  std::unique_ptr<platform::InputFile> OpenForInput(const std::string&) override {
    return std::make_unique<FailingFile>(text);
  }
  std::string text;
};

TEST_F(RememberedFieldsTest, ReadThatFailsKeepsTheLinesBefore) {
  FailingFileSystem failing;
  RememberedFields broken(failing, "C:\\Program");
  failing.text = "s\r\nt";
  broken.LoadOrCreate(fields);
  EXPECT_EQ(fields.site, "s");
  EXPECT_EQ(fields.tester, "old tester");

  failing.text = "s\r\nt\r\n1\r\none\r\ntw";
  broken.LoadOrCreate(fields);
  EXPECT_EQ(fields.tester, "t");
  EXPECT_TRUE(fields.showReport);
  EXPECT_EQ(fields.notes, "one\r\n");
}

}  // namespace
}  // namespace kelvara::report
