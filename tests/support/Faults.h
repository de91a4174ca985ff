#pragma once

#include <array>
#include <optional>
#include <ostream>
#include <utility>

#include "base/Fault.h"

namespace kelvara::base {

/// Lets a failing test name the kind of a fault.
inline void PrintTo(FaultKind kind, std::ostream* stream) {
  constexpr std::array kNames{"overflow", "subscript", "not a number", "file", "port"};
  *stream << kNames.at(static_cast<std::size_t>(kind));
}

}  // namespace kelvara::base

namespace kelvara::test {

/// The kind of the fault that the work ends in; nothing when it ends well.
template <typename Work>
std::optional<base::FaultKind> FaultOf(Work&& work) {
  try {
    std::forward<Work>(work)();
  } catch (const base::Fault& fault) {
    return fault.Kind();
  }
  return std::nullopt;
}

}  // namespace kelvara::test
