#pragma once

#include <string>

namespace kelvara::test {

/// The file's bytes; a test failure and an empty text when it cannot be read.
std::string ReadTextFile(const std::string& path);

/// Writes the bytes; a test failure when they cannot be written.
void WriteTextFile(const std::string& path, const std::string& text);

}  // namespace kelvara::test
