#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "platform/SessionFolder.h"
#include "sessions/LineTrace.h"
#include "sessions/SessionListener.h"
#include "sync/SyncModel.h"

namespace kelvara::sessions {

/// How many journals are kept, and how many bytes in all.
inline constexpr std::size_t kMaxJournals = 50;
inline constexpr std::uint64_t kMaxJournalBytes = 500'000'000;

/// A session that did not end in order, as its journal tells. The journal is locked meanwhile.
struct UnfinishedSession {
  std::unique_ptr<platform::LockedFile> file;
  sync::SyncModel results;
  /// When the last command was sent, in milliseconds since the start of 1970 in UTC.
  std::optional<std::int64_t> lastTime;
  /// The size of the file without a mark that is cut off at its end.
  std::uint64_t wholeBytes = 0;
};

/// The journals in the folder, the newest first. A name begins with the session's local time:
/// "YYYY-MM-DD-hhmmss".
std::vector<platform::SessionFolder::Entry> Journals(const platform::SessionFolder& folder);

/// Finds the newest session that can be continued: of those that no program is keeping, the newest
/// with a report in it, unless one was begun after it and ended in order. A journal that cannot be
/// read is passed over.
std::optional<UnfinishedSession> FindUnfinishedSession(platform::SessionFolder& folder);

/// Removes all journals but the newest: as many as `kMaxJournals` in at most `kMaxJournalBytes`,
/// and always the last one. Those that another program keeps are not removed.
void RemoveOldJournals(platform::SessionFolder& folder);

/// Keeps a trace of the session in a file of its own, named by the local time of the first byte
/// received. A file that cannot be made or written ends the journal and is remembered; the session
/// goes on.
class Journal : public SessionListener {
 public:
  /// The folder and the clock must outlive the journal.
  Journal(platform::SessionFolder& folder, const platform::Clock& clock)
      : folder_(folder), clock_(clock) {}

  void Sent(std::string_view command) override;
  void Received(std::string_view text) override;
  void Cleared(bool keeps) override;
  void Restored() override;
  void Ended() override;

  /// Continues the journal of a session whose results have been put before the present ones, and
  /// moves what came since the last clear to its end. Results that were cleared before stay in a
  /// journal of their own. At most once in a session.
  void Continue(UnfinishedSession session);

  /// What went wrong, or an empty text.
  std::string Failure() const;

 private:
  /// What belongs to the present results, as places in the file.
  struct Part {
    std::uint64_t start = 0;
    /// Before this place there is only the beginning of a report that was arriving at a clear.
    std::uint64_t clearedBefore = 0;
  };

  void Begin();
  void Write(std::unique_ptr<platform::LockedFile> file);
  std::string PresentPart();
  void GiveUp(std::unique_ptr<platform::LockedFile> file);

  platform::SessionFolder& folder_;
  const platform::Clock& clock_;
  std::unique_ptr<platform::LockedFile> file_;
  std::optional<LineTrace> trace_;
  bool begun_ = false;
  std::string failure_;
  std::string lastCommand_;
  int linesLeft_ = 0;
  /// Whether text is left out until the next report, because it must not complete an older one.
  bool awaitsReport_ = false;
  std::uint64_t reportStart_ = 0;
  Part part_;
  Part cleared_;
  /// Where results were cleared that have not been restored.
  std::optional<std::uint64_t> clearedAt_;
};

}  // namespace kelvara::sessions
