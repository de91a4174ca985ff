#pragma once

#include <QString>

namespace kelvara::qt {

/// The folder for the user's settings: XDG_CONFIG_HOME, or else .config in the home folder; on
/// Windows, the roaming application data.
QString UserConfigFolder();

/// The folder for the user's data on this machine: XDG_DATA_HOME, or else .local/share in the home
/// folder; on Windows, the local application data.
QString UserDataFolder();

}  // namespace kelvara::qt
