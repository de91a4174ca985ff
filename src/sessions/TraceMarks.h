#pragma once

namespace kelvara::sessions {

/// The bytes that mark a command in a trace of the line: mark, command, end. A received byte that
/// equals the mark is doubled.
inline constexpr char kCommandMark = '\x01';
inline constexpr char kCommandEnd = '\x02';

}  // namespace kelvara::sessions
