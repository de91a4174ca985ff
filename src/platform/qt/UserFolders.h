#pragma once

#include <QString>

namespace kelvara::qt {

/// The folder for the user's settings: XDG_CONFIG_HOME, or else .config in the home folder; on
/// Windows, the roaming application data.
QString UserConfigFolder();

}  // namespace kelvara::qt
