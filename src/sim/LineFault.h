#pragma once

#include <array>
#include <string_view>

namespace kelvara::sim {

/// What can go wrong on the line when the beltpack answers.
enum class LineFault {
  None,
  Silent,         ///< No answer.
  Disconnect,     ///< It says "24" instead, and the next few commands get no answer.
  Partial,        ///< The answer breaks off.
  Late,           ///< The answer comes after the next command.
  Garbled,        ///< Some bytes are replaced.
  LostLineFeeds,  ///< Some line feeds are missing.
  Flood,          ///< Endless bytes of any value, until a command gets another answer.
  HangUp,         ///< The device vanishes from the machine, for a while.
  Slow,           ///< One character at a time, with gaps.
};

struct LineFaultName {
  LineFault fault;
  std::string_view name;
};

/// The names of the faults.
inline constexpr std::array<LineFaultName, 10> kLineFaultNames{
    {{LineFault::None, "none"},
     {LineFault::Silent, "silent"},
     {LineFault::Disconnect, "24"},
     {LineFault::Partial, "partial"},
     {LineFault::Late, "late"},
     {LineFault::Garbled, "garbled"},
     {LineFault::LostLineFeeds, "lost-line-feeds"},
     {LineFault::Flood, "flood"},
     {LineFault::HangUp, "hang-up"},
     {LineFault::Slow, "slow"}}};

}  // namespace kelvara::sim
