#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/FileSystem.h"
#include "platform/SessionFolder.h"
#include "sessions/ReviewedSession.h"

namespace kelvara::sessions {

/// One of the recent sessions.
struct RecentSession {
  std::string path;
  /// "2026-11-21 11:28, 52 reports, 12 antennas"; without the counts until they are known.
  std::string text;
  /// False once it is known that there is nothing to be seen in it.
  bool canOpen = true;
};

/// The sessions whose journals are kept, the newest first, without those that a program is keeping
/// now or offers to continue. They are counted in slices, because that takes long.
class RecentSessions {
 public:
  /// The folder and the files must outlive this.
  RecentSessions(platform::SessionFolder& folder, platform::FileSystem& fileSystem)
      : folder_(folder), fileSystem_(fileSystem) {}

  /// Lists the sessions there are now. Counts that are known already stay.
  void List();

  /// Counts a part of one session. False if all are counted.
  bool CountOn();

  const std::vector<RecentSession>& Sessions() const { return sessions_; }

 private:
  /// What a file of this name and size holds.
  struct Counted {
    platform::SessionFolder::Entry entry;
    RecentSession session;
  };

  void Finish(const std::string& counts, bool canOpen);

  platform::SessionFolder& folder_;
  platform::FileSystem& fileSystem_;
  std::vector<RecentSession> sessions_;
  std::vector<platform::SessionFolder::Entry> entries_;
  std::vector<Counted> counted_;
  std::vector<std::size_t> uncounted_;  ///< Indices, the next one last.
  std::unique_ptr<ReviewedSession> counting_;
};

}  // namespace kelvara::sessions
