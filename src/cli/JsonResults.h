#pragma once

#include <string>

#include "app/Session.h"
#include "sync/GridCells.h"

namespace kelvara::cli {

/// The results as a JSON document: totals, antennas, cells with readings, the grid as drawn.
std::string JsonResults(const app::Session& session, const sync::GridCells& grid,
                        bool gridComplete);

}  // namespace kelvara::cli
