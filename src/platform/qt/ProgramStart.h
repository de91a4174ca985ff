#pragma once

#include <string>

namespace kelvara::qt {

/// Starts a program, by its path, with a path as its argument. It is independent: it outlives this
/// program and inherits none of its files. A program that cannot be started is a file fault.
void StartProgram(const std::string& program, const std::string& argument);

}  // namespace kelvara::qt
