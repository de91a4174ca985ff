#pragma once

#include <array>
#include <optional>
#include <ostream>
#include <utility>

#include "base/Fault.h"

namespace kelvara::base {

/// Prints the kind of a fault in the message of a failing test.
inline void PrintTo(FaultKind kind, std::ostream* stream) {
  constexpr std::array kNames{"overflow", "subscript", "not a number", "file", "port"};
  *stream << kNames.at(static_cast<std::size_t>(kind));
}

}  // namespace kelvara::base

namespace kelvara::test {

/// The kind of the fault that `work` throws; empty if it throws none.
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
