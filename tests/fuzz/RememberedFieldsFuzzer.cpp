#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Expect.h"
#include "report/RememberedFields.h"
#include "support/Doubles.h"

namespace kelvara::test {
namespace {

using report::RememberedFields;
using report::ReportFields;

/// Stands for a long run of text in an input, so that a few bytes make a line of several reads.
constexpr char kLongRun = '\xFE';
constexpr std::size_t kLongRunBytes = 5000;
constexpr int kMaxLongRuns = 3;
/// Stands, once in an input, for a run that brings the text up to a few bytes before the limit.
/// Two bytes, because such a run takes time and must not come up by chance often.
constexpr std::string_view kRunToLimit = "\xFD\xFC";
constexpr std::size_t kMostBytes = std::size_t{1} << 20U;
constexpr std::size_t kBytesBeforeLimit = 16;
/// Parts the fields that are to be written; behind it stands the site, the tester and the notes.
constexpr char kFieldEnd = '\x1E';
constexpr const char* kFolder = "C:\\Program";
constexpr const char* kPath = "C:\\Program\\rfields.ds";

bool IsSame(const ReportFields& left, const ReportFields& right) {
  return left.site == right.site && left.tester == right.tester &&
         left.showReport == right.showReport && left.notes == right.notes;
}

/// Files that come in pieces of one size.
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

std::vector<std::string> PlainLines(const std::string& text) {
  std::vector<std::string> lines(1);
  for (const char character : text) {
    if (character != '\n') {
      lines.back() += character;
      continue;
    }
    if (!lines.back().empty() && lines.back().back() == '\r') {
      lines.back().pop_back();
    }
    lines.emplace_back();
  }
  if (lines.back().empty()) {
    lines.pop_back();
  }
  return lines;
}

/// The state that the third line says; nothing where its number is too large for one.
std::optional<bool> PlainState(const std::string& line) {
  std::string number;
  bool hasFullStop = false;
  for (const char character : line) {
    if (character == ' ') {
      continue;
    }
    const bool isSign = (character == '-' || character == '+') && number.empty();
    const bool isFullStop = character == '.' && !hasFullStop;
    if (!isSign && !isFullStop && (character < '0' || character > '9')) {
      break;
    }
    hasFullStop = hasFullStop || isFullStop;
    number += character;
  }
  // Without a digit in it this is 0.
  const double value = std::strtod(number.c_str(), nullptr);
  if (value < -32768.5 || value >= 32767.5) {
    return std::nullopt;
  }
  return std::fabs(value) > 0.5;
}

ReportFields LoadPlainly(const std::string& text, const ReportFields& before) {
  ReportFields fields = before;
  // Of a text that is too large, the lines that end within the limit.
  const std::size_t readable =
      text.size() <= kMostBytes ? text.size() : text.rfind('\n', kMostBytes - 1) + 1;
  const std::vector<std::string> lines = PlainLines(text.substr(0, readable));
  if (!lines.empty()) {
    fields.site = lines[0];
  }
  if (lines.size() > 1) {
    fields.tester = lines[1];
  }
  const std::optional<bool> state = lines.size() > 2 ? PlainState(lines[2]) : std::nullopt;
  if (state) {
    fields.showReport = *state;
    fields.notes.clear();
    for (std::size_t line = 3; line < lines.size(); ++line) {
      fields.notes += lines[line] + "\r\n";
    }
  }
  return fields;
}

/// A text of about the limit's size: in small pieces it would take longer than it tells.
void CheckLargeLoad(const std::string& text) {
  const ReportFields before{"old site", "old tester", false, "old notes"};
  Expect(IsSame(Load(text, before, 4093), LoadPlainly(text, before)),
         "each line within the limit goes into its field");
}

void CheckLoad(const std::string& text) {
  for (const ReportFields& before : {ReportFields{"old site", "old tester", false, "old notes"},
                                     ReportFields{"", "", true, ""}}) {
    const ReportFields expected = LoadPlainly(text, before);
    for (const std::size_t pieceBytes : {std::size_t{4096}, std::size_t{7}, std::size_t{1}}) {
      Expect(IsSame(Load(text, before, pieceBytes), expected), "each line goes into its field");
    }
  }
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
         "a file holds its four fields and nothing else");
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

/// One line's fields come back as they were, the notes with the line end that the file adds.
void CheckComesBack(ReportFields fields) {
  const ReportFields other{"other", "other", !fields.showReport, "other"};
  fields.notes = WithoutOuterBlanks(fields.notes);
  for (int round = 0; round < 3; ++round) {
    const ReportFields back = Load(Save(fields), other, 4096);
    Expect(back.site == fields.site && back.tester == fields.tester &&
               back.showReport == fields.showReport,
           "what was saved comes back");
    std::string notes;
    for (const std::string& line : PlainLines(fields.notes + "\r\n")) {
      notes += line + "\r\n";
    }
    Expect(back.notes == notes, "notes come back with one line end more");
    if (round > 0) {
      Expect(back.notes == fields.notes + "\r\n", "notes grow by one line end and no more");
    }
    fields = back;
  }
}

std::string WithLongRuns(std::string_view input) {
  std::string text;
  int runs = 0;
  for (; !input.empty(); input.remove_prefix(1)) {
    if (input.front() == kLongRun && runs < kMaxLongRuns) {
      text.append(kLongRunBytes, 'x');
      ++runs;
    } else if (input.starts_with(kRunToLimit) && text.size() < kMostBytes / 2) {
      text.resize(kMostBytes - kBytesBeforeLimit, 'y');
      input.remove_prefix(1);
    } else {
      text += input.front();
    }
  }
  return text;
}

/// The text up to the mark that ends a field, which is taken away with it.
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
  if (rest.size() > kMostBytes / 2) {
    CheckLargeLoad(rest);
    return 0;
  }
  CheckLoad(rest);

  kelvara::report::ReportFields fields;
  fields.site = TakeField(rest);
  fields.tester = TakeField(rest);
  fields.showReport = size % 2 == 0;
  fields.notes = rest;
  CheckSave(fields);
  // The two fields of one line cannot hold a line end.
  std::erase(fields.site, '\n');
  std::erase(fields.tester, '\n');
  CheckComesBack(fields);
  return 0;
}
