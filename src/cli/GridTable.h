#pragma once

#include <iosfwd>

#include "platform/GridControl.h"

namespace kelvara::cli {

/// Prints the grid as a table, its columns aligned on the right.
void PrintGrid(const platform::GridControl& grid, std::ostream& out);

}  // namespace kelvara::cli
