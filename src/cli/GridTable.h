#pragma once

#include <iosfwd>

#include "sync/GridCells.h"

namespace kelvara::cli {

/// Prints the grid as a table with right-aligned columns.
void PrintGrid(const sync::GridCells& grid, std::ostream& out);

}  // namespace kelvara::cli
