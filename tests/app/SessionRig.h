#pragma once

#include <string>

#include "app/Session.h"
#include "support/Doubles.h"

namespace kelvara::test {

/// A whole session on a machine that tests control, with files of the kind given.
template <class Files>
struct SessionRigOn : MachineDoubles<Files> {
  SessionRigOn() {
    this->clock.wall = 20000.5;
    session.Options().fpsShown = false;
    session.SetTotalsChanged([this] { ++totalsChanges; });
    session.ClearSyncResults();
  }

  sync::GridCells grid;
  RecordingLogBox logBox;
  int totalsChanges = 0;
  app::Session session{this->machine, grid, &logBox};
};

using SessionRig = SessionRigOn<MemoryFileSystem>;

}  // namespace kelvara::test
