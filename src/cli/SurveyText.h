#pragma once

#include <iosfwd>

#include "cli/SurveyJson.h"

namespace kelvara::cli {

/// Prints the survey for reading: totals, network, antennas, suspects, changes, and where to stand
/// next.
void PrintSurvey(const SurveyOutput& output, std::ostream& out);

}  // namespace kelvara::cli
