#pragma once

#include <cstdint>

#include "app/SessionRig.h"
#include "platform/qt/QtFileSystem.h"
#include "support/DesktopDoubles.h"

namespace kelvara::test {

/// A complete session on real files, with results to write. Doubles stand in for the rest of the
/// machine.
struct RealFilesRig : SessionRigOn<qt::QtFileSystem> {
  RealFilesRig() {
    constexpr std::int16_t kAas = 12;
    for (std::int16_t aa = 0; aa < kAas; ++aa) {
      session.Model().FindOrAddAa(aa, 3, 90);
    }
    for (std::int16_t from = 0; from < kAas; ++from) {
      session.Model().AddPhase(from, static_cast<std::int16_t>((from + 1) % kAas), 7);
    }
    session.Grid().UpdateSyncGrid();
  }

  ScriptedFileChooser chooser;
  RecordingDocumentOpener opener;
  ScriptedSettingsStore store;
  platform::Desktop desktop{machine, chooser, opener, store, "/program"};
};

}  // namespace kelvara::test
