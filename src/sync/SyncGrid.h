#pragma once

#include <cstdint>
#include <string>

#include "platform/Machine.h"
#include "sync/DisplayOptions.h"
#include "sync/FpsColours.h"
#include "sync/GridCells.h"
#include "sync/SyncModel.h"

namespace kelvara::sync {

/// The width of every grid column, in twips.
inline constexpr int kGridColumnTwips = 550;

/// Draws the sync model into the grid: row = synchronised-to antenna, column = neighbour antenna,
/// cell = the neighbour's mean phase in the chosen units.
class SyncGrid {
 public:
  SyncGrid(const SyncModel& model, GridCells& grid, const DisplayOptions& options,
           const platform::Machine& machine)
      : model_(model), grid_(grid), options_(options), machine_(machine) {}

  /// Redraws the whole grid. Pending events run before each data cell, so the model may change
  /// meanwhile. A fault beeps once and leaves the grid as it is; clearing the model during the
  /// redraw counts as a fault. Returns whether the whole grid was drawn.
  bool UpdateSyncGrid();

  /// Reduces the grid to the single cell "RPN" and forgets the colours.
  void Clear();

  /// Forgets the colours, so that the next redraw chooses them as the first redraw of these results
  /// would.
  void ForgetColours() { colours_.Clear(); }

  /// The colour of an FPS value; a value outside 0 to 16 is a subscript fault.
  Colour GetRpsColour(std::int16_t iRps) { return colours_.GetRpsColour(iRps); }

 private:
  void DrawHeaders(int aaCount);
  void DrawColours(int aaCount);
  bool DrawPhases(int aaCount);
  void DrawHeader(int row, int column, int aa);
  std::string PhaseText(int from, int to) const;

  const SyncModel& model_;
  GridCells& grid_;
  const DisplayOptions& options_;
  const platform::Machine& machine_;
  FpsColours colours_;
};

}  // namespace kelvara::sync
