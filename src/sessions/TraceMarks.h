#pragma once

#include <string_view>

namespace kelvara::sessions {

/// The bytes around a mark in a trace of the line: mark, text, end. The text is a command that was
/// sent, or one of those below. A received byte that equals the mark is doubled.
inline constexpr char kCommandMark = '\x01';
inline constexpr char kCommandEnd = '\x02';

/// Followed by the wall time in milliseconds since the start of 1970 in UTC, in decimal digits.
inline constexpr char kTimeMark = '@';
/// The results were cleared.
inline constexpr std::string_view kClearMark = "!clear";
/// What the last clear of at least one report had removed was restored.
inline constexpr std::string_view kUndoMark = "!undo";
/// The program ended in order.
inline constexpr std::string_view kEndMark = "!end";

}  // namespace kelvara::sessions
