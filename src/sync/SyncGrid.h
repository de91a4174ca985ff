#pragma once

#include <cstdint>
#include <string>

#include "platform/Beeper.h"
#include "platform/EventPump.h"
#include "platform/GridControl.h"
#include "sync/DisplayOptions.h"
#include "sync/FpsColours.h"
#include "sync/SyncModel.h"

namespace kelvara::sync {

/// The width of every grid column, in twips.
inline constexpr int kGridColumnTwips = 550;

/// Draws the sync model into the grid: row = synchronised-to antenna, column = neighbour antenna,
/// cell = the neighbour's mean phase in the chosen units.
class SyncGrid {
 public:
  SyncGrid(const SyncModel& model, platform::GridControl& grid, DisplayOptions options,
           platform::EventPump& events, platform::Beeper& beeper)
      : model_(model), grid_(grid), options_(options), events_(events), beeper_(beeper) {}

  /// Redraws the whole grid, letting pending events run before each data cell; the model may change
  /// meanwhile, and a clear ends the redraw. A fault beeps once and leaves the grid partly drawn.
  /// Returns whether the whole grid was drawn.
  bool UpdateSyncGrid();

  /// Leaves the single cell "RPN" and takes the colours back.
  void Clear();

  /// The colour given to an FPS value; outside 0 to 16 a subscript fault.
  platform::Colour GetRpsColour(std::int16_t iRps) { return colours_.GetRpsColour(iRps); }

 private:
  void DrawHeaders(int aaCount);
  void DrawColours(int aaCount);
  bool DrawPhases(int aaCount);
  void DrawHeader(int row, int column, int aa);
  std::string PhaseText(int from, int to) const;

  const SyncModel& model_;
  platform::GridControl& grid_;
  DisplayOptions options_;
  platform::EventPump& events_;
  platform::Beeper& beeper_;
  FpsColours colours_;
};

}  // namespace kelvara::sync
