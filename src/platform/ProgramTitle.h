#pragma once

#include <string>

namespace kelvara::platform {

/// The program's short name, the caption of its main window too.
inline constexpr const char* kProgramTitle = "Kelvara";

/// The version as "major.minor.revision", plain decimal numbers.
std::string ProgramVersion();

/// The title, " v" and the version, as reports and the About box print them.
std::string ProgramTitleAndVersion();

}  // namespace kelvara::platform
