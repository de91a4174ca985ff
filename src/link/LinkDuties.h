#pragma once

#include <string_view>

namespace kelvara::link {

/// What the link asks of the rest of the program.
class LinkDuties {
 public:
  virtual ~LinkDuties() = default;

  /// Takes one whole report into the sync model.
  virtual void ProcessRfpsReport(std::string_view report) = 0;

  /// Empties the sync model and the grid.
  virtual void ClearSyncResults() = 0;

  /// Redraws the grid from the model.
  virtual void UpdateSyncGrid() = 0;

  /// The user's report command.
  virtual void mnuGenReport_Click() = 0;
};

}  // namespace kelvara::link
