#pragma once

namespace kelvara::sessions {

/// The bytes that mark a command in a trace of the line: mark, command, end. A received byte that
/// is the mark itself stands doubled.
inline constexpr char kCommandMark = '\x01';
inline constexpr char kCommandEnd = '\x02';

}  // namespace kelvara::sessions
