#pragma once

#include <string>

namespace kelvara::test {

/// The file's bytes. Adds a test failure and returns an empty text if the file cannot be read.
std::string ReadTextFile(const std::string& path);

/// Writes the bytes. Adds a test failure if they cannot be written.
void WriteTextFile(const std::string& path, const std::string& text);

}  // namespace kelvara::test
