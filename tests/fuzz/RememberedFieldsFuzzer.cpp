#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Expect.h"
#include "report/RememberedFields.h"
#include "support/Doubles.h"

namespace kelvara::test {
namespace {

using report::RememberedFields;
using report::ReportFields;

/// In an input, means a long run of text, so that few bytes make a line that takes several reads.
constexpr char kLongRun = '\xFE';
constexpr std::size_t kLongRunBytes = 5000;
constexpr int kMaxLongRuns = 3;
/// Separates the fields to write: the site, the tester and the notes.
constexpr char kFieldEnd = '\x1E';
/// Notes that no generated file contains, to detect whether the notes were read.
constexpr const char* kOldNotes = "the notes as they were before the file was read";
constexpr const char* kFolder = "C:\\Program";
constexpr const char* kPath = "C:\\Program\\rfields.ds";

bool IsSame(const ReportFields& left, const ReportFields& right) {
  return left.site == right.site && left.tester == right.tester &&
         left.showReport == right.showReport && left.notes == right.notes;
}

/// Files that are read in pieces of one size.
class PiecewiseFiles : public MemoryFileSystem {
 public:
  explicit PiecewiseFiles(std::size_t pieceBytes) : pieceBytes_(pieceBytes) {}

  std::unique_ptr<platform::InputFile> OpenForInput(const std::string& path) override {
    return std::make_unique<Pieces>(MemoryFileSystem::OpenForInput(path), pieceBytes_);
  }

 private:
  class Pieces : public platform::InputFile {
   public:
    Pieces(std::unique_ptr<platform::InputFile> file, std::size_t pieceBytes)
        : file_(std::move(file)), pieceBytes_(pieceBytes) {}
    std::size_t Read(std::span<char> buffer) override {
      return file_->Read(buffer.subspan(0, std::min(pieceBytes_, buffer.size())));
    }
    std::size_t Size() const override { return file_->Size(); }

   private:
    std::unique_ptr<platform::InputFile> file_;
    std::size_t pieceBytes_;
  };

  std::size_t pieceBytes_;
};

ReportFields Load(const std::string& text, const ReportFields& before, std::size_t pieceBytes) {
  PiecewiseFiles files(pieceBytes);
  files.files[kPath] = text;
  ReportFields fields = before;
  RememberedFields(files, kFolder).LoadOrCreate(fields);
  Expect(files.files[kPath] == text, "a load leaves the file as it is");
  return fields;
}

std::string Save(const ReportFields& fields, std::optional<int> writesLeft = std::nullopt) {
  MemoryFileSystem files;
  files.writesLeft = writesLeft;
  RememberedFields(files, kFolder).Save(fields);
  Expect(files.openFiles == 0, "a saved file is closed");
  return files.files[kPath];
}

std::string WithoutLineEnds(std::string text) {
  std::erase_if(text, [](char character) { return character == '\r' || character == '\n'; });
  return text;
}

bool IsLine(const std::string& text) { return text.find('\n') == std::string::npos; }

void CheckLoad(const std::string& text) {
  const ReportFields before{"old site", "old tester", false, kOldNotes};
  const ReportFields fields = Load(text, before, 4096);
  for (const std::size_t pieceBytes : {std::size_t{7}, std::size_t{1}}) {
    Expect(IsSame(Load(text, before, pieceBytes), fields),
           "the fields are the same however a file is cut into pieces");
  }
  Expect(IsLine(fields.site) && IsLine(fields.tester), "site and tester are a line each");
  if (fields.notes == kOldNotes) {
    return;  // The file ended, or faulted, before the notes.
  }
  Expect(fields.notes.empty() || fields.notes.ends_with("\r\n"),
         "each line of the notes has a line end");
  const std::string whole = WithoutLineEnds(text);
  const std::string start = WithoutLineEnds(fields.site + fields.tester);
  const std::string end = WithoutLineEnds(fields.notes);
  Expect(
      whole.size() >= start.size() + end.size() && whole.starts_with(start) && whole.ends_with(end),
      "no character of a line is lost");
}

std::string WithoutOuterBlanks(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? ""
                                    : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

void CheckSave(const ReportFields& fields) {
  const std::string file = Save(fields);
  const std::string notes = WithoutOuterBlanks(fields.notes);
  Expect(file == fields.site + "\r\n" + fields.tester + "\r\n" +
                     (fields.showReport ? " 1 " : " 0 ") + "\r\n" + notes + "\r\n",
         "a file holds only its four fields");
  for (int writes = 0; writes < 4; ++writes) {
    const std::string broken = Save(fields, writes);
    Expect(broken.size() < file.size() && file.starts_with(broken),
           "a save that fails has written the fields before");
  }

  MemoryFileSystem files;
  ReportFields created = fields;
  RememberedFields(files, kFolder).LoadOrCreate(created);
  Expect(files.files[kPath] == file && IsSame(created, fields),
         "a missing file is written from the fields");
}

/// Saved fields are read back unchanged, except for the line end that the file adds to the notes.
void CheckComesBack(ReportFields fields) {
  const ReportFields other{"other", "other", !fields.showReport, "other"};
  fields.notes = WithoutOuterBlanks(fields.notes);
  for (int round = 0; round < 3; ++round) {
    const ReportFields back = Load(Save(fields), other, 4096);
    Expect(back.site == fields.site && back.tester == fields.tester &&
               back.showReport == fields.showReport,
           "what was saved comes back");
    Expect(WithoutLineEnds(back.notes) == WithoutLineEnds(fields.notes), "the notes come back");
    if (round > 0) {
      Expect(back.notes == fields.notes + "\r\n", "notes grow by only one line end");
    }
    fields = back;
  }
}

std::string WithLongRuns(std::string_view input) {
  std::string text;
  int runs = 0;
  for (const char character : input) {
    if (character == kLongRun && runs < kMaxLongRuns) {
      text.append(kLongRunBytes, 'x');
      ++runs;
    } else {
      text += character;
    }
  }
  return text;
}

/// Removes the next field and its end mark from the text and returns the field.
std::string TakeField(std::string& text) {
  const std::size_t end = std::min(text.find(kFieldEnd), text.size());
  const std::string field = text.substr(0, end);
  text.erase(0, end + 1);
  return field;
}

}  // namespace
}  // namespace kelvara::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kelvara::test;
  std::string rest = WithLongRuns({reinterpret_cast<const char*>(data), size});
  CheckLoad(rest);

  kelvara::report::ReportFields fields;
  fields.site = TakeField(rest);
  fields.tester = TakeField(rest);
  fields.showReport = size % 2 == 0;
  fields.notes = rest;
  CheckSave(fields);
  // The two single-line fields cannot contain a line end.
  std::erase(fields.site, '\n');
  std::erase(fields.tester, '\n');
  CheckComesBack(fields);
  return 0;
}
