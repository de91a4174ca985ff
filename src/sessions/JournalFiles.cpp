#include <algorithm>
#include <array>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

#include "base/Fault.h"
#include "sessions/Journal.h"
#include "sessions/RecordedSession.h"
#include "sessions/ResultsReader.h"
#include "sessions/TraceMarks.h"

namespace kelvara::sessions {
namespace {

using platform::SessionFolder;

/// A name is "YYYY-MM-DD-hhmmss", perhaps "-" and a number, and the suffix. Other files, such as a
/// journal that the user has renamed, are the user's own.
constexpr std::string_view kForm = "dddd-dd-dd-dddddd";
constexpr std::string_view kSuffix = ".trace";
constexpr std::size_t kPieceBytes = std::size_t{64} << 10U;

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

bool IsJournal(std::string_view name) {
  if (name.size() < kForm.size() + kSuffix.size() || !name.ends_with(kSuffix) ||
      !std::equal(kForm.begin(), kForm.end(), name.begin(), [](char form, char character) {
        return form == 'd' ? IsDigit(character) : character == form;
      })) {
    return false;
  }
  const std::string_view number =
      name.substr(kForm.size(), name.size() - kForm.size() - kSuffix.size());
  return number.empty() || (number.size() > 1 && number[0] == '-' &&
                            std::all_of(number.begin() + 1, number.end(), IsDigit));
}

/// Whether the mark of an orderly end is the last in a file.
bool HasEnded(platform::LockedFile& file) {
  std::string mark(1, kCommandMark);
  mark += kEndMark;
  mark += kCommandEnd;
  std::array<char, 64> buffer{};
  const std::uint64_t size = file.Size();
  const std::size_t length = std::min<std::uint64_t>(buffer.size(), size);
  const std::size_t got = file.Read(size - length, std::span(buffer).first(length));
  std::string_view end(buffer.data(), got);
  if (!end.ends_with(mark)) {
    return false;
  }
  // After a doubled byte, the rest of the mark would be received text.
  end.remove_suffix(mark.size());
  const std::size_t before = end.find_last_not_of(kCommandMark);
  return (end.size() - (before + 1)) % 2 == 0;
}

/// The times in a part of a trace.
class Times : public RecordedTextReader {
 public:
  void ProcessRfpsReport(std::string_view /*report*/) override {}
  void NoteDropped(DropReason /*reason*/) override {}
  void SetTime(std::int64_t utcMilliseconds) override {
    first = first.value_or(utcMilliseconds);
    last = utcMilliseconds;
  }

  std::optional<std::int64_t> first;
  std::optional<std::int64_t> last;
};

/// The times in at most one piece of a file from a place.
Times TimesFrom(platform::LockedFile& file, std::uint64_t place) {
  std::vector<char> piece(kPieceBytes);
  std::string_view text(piece.data(), file.Read(place, piece));
  text.remove_prefix(std::min(text.find(kCommandMark), text.size()));
  Times times;
  RecordedSession(times).Feed(text);
  return times;
}

/// When a session began; the earliest time if its journal does not tell.
std::int64_t BeginningOf(platform::LockedFile& file) {
  return TimesFrom(file, 0).first.value_or(0);
}

/// When the last command of a session was sent, if its journal tells near its end.
std::optional<std::int64_t> EndOf(platform::LockedFile& file) {
  return TimesFrom(file, file.Size() - std::min<std::uint64_t>(file.Size(), kPieceBytes)).last;
}

/// Replays a file into the session that keeps it.
void ReadResults(UnfinishedSession& session) {
  RecordedResults results;
  ResultsReader reader(results);
  RecordedSession recorded(reader);
  std::vector<char> piece(kPieceBytes);
  std::uint64_t place = 0;
  while (const std::size_t got = session.file->Read(place, piece)) {
    recorded.Feed({piece.data(), got});
    place += got;
  }
  session.results = std::move(results.model);
  session.lastTime = results.time;
  session.wholeBytes = place - recorded.UnfinishedMarkBytes();
}

}  // namespace

std::vector<SessionFolder::Entry> Journals(const SessionFolder& folder) {
  std::vector<SessionFolder::Entry> journals = folder.List();
  std::erase_if(journals, [](const SessionFolder::Entry& entry) { return !IsJournal(entry.name); });
  const auto order = [](const SessionFolder::Entry& entry) {
    // Of the numbers behind a time, the longer ones are the greater ones.
    return std::tuple(entry.name.substr(0, kForm.size()), entry.name.size(), entry.name);
  };
  std::sort(journals.begin(), journals.end(),
            [&](const auto& one, const auto& other) { return order(one) > order(other); });
  return journals;
}

std::optional<UnfinishedSession> FindUnfinishedSession(SessionFolder& folder) {
  std::optional<std::int64_t> endedSince;
  for (const SessionFolder::Entry& entry : Journals(folder)) {
    try {
      UnfinishedSession session;
      session.file = folder.Open(entry.name);
      if (!session.file) {
        continue;
      }
      if (HasEnded(*session.file)) {
        endedSince = std::max(endedSince.value_or(0), BeginningOf(*session.file));
        continue;
      }
      if (endedSince && EndOf(*session.file).value_or(0) <= *endedSince) {
        continue;
      }
      ReadResults(session);
      if (session.results.ReportCount() > 0) {
        return session;
      }
    } catch (const base::Fault&) {
      // The next one may be readable.
    }
  }
  return std::nullopt;
}

void RemoveOldJournals(SessionFolder& folder) {
  std::size_t count = 0;
  std::uint64_t bytes = 0;
  for (const SessionFolder::Entry& entry : Journals(folder)) {
    ++count;
    bytes += entry.size;
    // The newest may be the one to be continued, whatever its size.
    if (count == 1 || (count <= kMaxJournals && bytes <= kMaxJournalBytes)) {
      continue;
    }
    try {
      if (const std::unique_ptr<platform::LockedFile> file = folder.Open(entry.name)) {
        file->Remove();
      }
    } catch (const base::Fault&) {
      // It is tried again at the next start.
    }
  }
}

}  // namespace kelvara::sessions
