#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "app/LiveRig.h"
#include "app/Notices.h"
#include "support/MemorySessionFolder.h"
#include "support/RecordedReports.h"

namespace kelvara::test {

inline constexpr const char* kJournal = "2024-10-04-112801.trace";

/// Destroyed after the session that keeps its journal in it.
struct KeptSessions {
  MemorySessionFolder folder;
};

/// A live session whose notices are kept up to date as by the main window.
struct NoticesRig : KeptSessions, LiveRig {
  NoticesRig() {
    const auto update = [this] { notices.Update(); };
    live.Link().SetStateChanged(update);
    live.Results().Capture().SetStateChanged(update);
    live.Results().SetTotalsChanged(update);
    live.SetResultsChanged(update);
    notices.SetShow([this](const app::Notice* notice, bool isNew) {
      EXPECT_EQ(notice, notices.Shown());
      if (isNew) {
        readOut.push_back(Shown());
      }
    });
  }

  /// The notice shown: its name, text and button.
  std::string Shown() const {
    const app::Notice* const notice = notices.Shown();
    return notice == nullptr ? ""
                             : std::string(app::NameOf(notice->kind)) + ": " + notice->text + " [" +
                                   notice->action + "]";
  }

  /// Starts, and waits until the beltpack is connected.
  void Connect() {
    Start();
    time.Pass(30 * 1000);
    ASSERT_EQ(live.Link().StatusText(), "Beltpack Connected...");
  }

  void Silence() { beltpack.SetFault({sim::LineFault::Silent}); }

  void ClearOneReport() {
    live.ProcessRfpsReport(OneNeighbourReport(1, 2, -11));
    live.ClearSyncResults();
  }

  capture::DataCapture& Capture() { return live.Results().Capture(); }

  /// Puts a session of one report that was cut off into the folder, and offers it.
  void OfferSession(const std::string& report = OneNeighbourReport(1, 2, -11)) {
    // 4 October 2024, 11:28:01.
    folder.files[kJournal] = "\x01@1728041281000\x02\x01rfps\x02" + report;
    std::optional<sessions::UnfinishedSession> session = sessions::FindUnfinishedSession(folder);
    ASSERT_TRUE(session);
    notices.Offer(std::move(*session));
  }

  app::Notices notices{live, machine};
  std::vector<std::string> readOut;
};

}  // namespace kelvara::test
