#include "report/RememberedFields.h"

#include <array>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "base/Fault.h"
#include "base/NumberReading.h"
#include "base/Rounding.h"
#include "platform/FileExists.h"

namespace kelvara::report {
namespace {

constexpr std::string_view kFileName = "rfields.ds";
constexpr std::string_view kLineEnd = "\r\n";

/// Reads the lines of a file, without their line ends. In a file edited elsewhere a line may end in
/// a line feed alone, and the last line may have no end.
class LineReader {
 public:
  explicit LineReader(std::unique_ptr<platform::InputFile> file) : file_(std::move(file)) {}

  /// The next line; nothing at the end of the file. A read that fails is a file fault.
  std::optional<std::string> Next() {
    std::size_t lineFeed = pending_.find('\n');
    std::array<char, 4096> buffer{};
    while (lineFeed == std::string::npos) {
      const std::size_t got = file_->Read(buffer);
      if (got == 0) {
        return TakeRest();
      }
      pending_.append(buffer.data(), got);
      lineFeed = pending_.find('\n', pending_.size() - got);
    }
    std::string line = pending_.substr(0, lineFeed);
    pending_.erase(0, lineFeed + 1);
    if (!line.empty() && line.back() == '\r') {
      line.pop_back();
    }
    return line;
  }

  /// The next line; the end of the file is a file fault.
  std::string Expect() {
    std::optional<std::string> line = Next();
    if (!line) {
      throw base::Fault(base::FaultKind::File, "The file ends before its last field");
    }
    return *std::move(line);
  }

 private:
  std::optional<std::string> TakeRest() {
    return pending_.empty() ? std::nullopt : std::optional(std::exchange(pending_, {}));
  }

  std::unique_ptr<platform::InputFile> file_;
  std::string pending_;
};

}  // namespace

RememberedFields::RememberedFields(platform::FileSystem& fileSystem,
                                   const std::string& programFolder)
    : fileSystem_(fileSystem), path_(programFolder) {
  path_ += '\\';
  path_ += kFileName;
}

void RememberedFields::LoadOrCreate(ReportFields& fields) {
  if (platform::FileExists(fileSystem_, path_)) {
    Load(fields);
  } else {
    Save(fields);
  }
}

void RememberedFields::Load(ReportFields& fields) {
  try {
    LineReader lines(fileSystem_.OpenForInput(path_));
    fields.site = lines.Expect();
    fields.tester = lines.Expect();
    const double state = base::ReadLeadingNumber(lines.Expect(), base::Blanks::Anywhere);
    fields.showReport = base::Round16(state) != 0;
    fields.notes.clear();
    while (const std::optional<std::string> line = lines.Next()) {
      fields.notes += *line;
      fields.notes += kLineEnd;
    }
  } catch (const base::Fault&) {
    // The fields read so far are used; the others stay as they were.
  }
}

void RememberedFields::Save(const ReportFields& fields) {
  try {
    const auto file = fileSystem_.OpenForOutput(path_);
    const std::string_view state = fields.showReport ? " 1 " : " 0 ";
    for (const std::string_view line :
         {std::string_view(fields.site), std::string_view(fields.tester), state,
          base::TrimBlanks(fields.notes)}) {
      std::string bytes(line);
      bytes += kLineEnd;
      file->Write(bytes);
    }
  } catch (const base::Fault&) {
    // The report itself is written; it does not depend on remembering the fields.
  }
}

}  // namespace kelvara::report
