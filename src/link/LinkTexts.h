#pragma once

#include <string_view>

namespace kelvara::link {

/// What the status bar and the log say about the link.
inline constexpr std::string_view kAttemptingText = "Attempting To Connect To Beltpack...";
inline constexpr std::string_view kConnectedText = "Beltpack Connected...";
inline constexpr std::string_view kDisconnectedStatusText = "Beltpack Disconnected...";
inline constexpr std::string_view kBreakConditionText = "Break Condition Set";

}  // namespace kelvara::link
