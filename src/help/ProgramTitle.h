#pragma once

#include <string>

namespace kelvara::help {

/// The program's short name, which is also the caption of its main window.
inline constexpr const char* kProgramTitle = "Kelvara";

/// Where the settings of this program are kept: the application, the section of its settings, the
/// section of the port table, and the section of the main window's place.
inline constexpr const char* kSettingsApplication = "CorvanaSync";
inline constexpr const char* kSettingsSection = "Settings";
inline constexpr const char* kPortsSection = "Ports";
inline constexpr const char* kWindowSection = "Window";

/// The version as "major.minor.revision", plain decimal numbers.
std::string ProgramVersion();

/// The title, " v" and the version, as reports and the About box print them.
std::string ProgramTitleAndVersion();

}  // namespace kelvara::help
