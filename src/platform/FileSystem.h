#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace kelvara::platform {

/// A file open for writing. Destroying it closes it.
class OutputFile {
 public:
  virtual ~OutputFile() = default;

  /// Writes the bytes as they are. When it returns, they have reached the operating system; a write
  /// that fails is a file fault.
  virtual void Write(std::string_view bytes) = 0;
};

/// A file open for reading. Destroying it closes it.
class InputFile {
 public:
  virtual ~InputFile() = default;

  /// Reads up to `buffer.size()` bytes and returns how many came; 0 is the end of the file. A read
  /// that fails is a file fault.
  virtual std::size_t Read(std::span<char> buffer) = 0;

  /// The size in bytes, or 0 where it is not known (a pipe).
  virtual std::size_t Size() const = 0;
};

/// The machine's files. Paths are taken as the system writes them, with a backslash or the
/// machine's own separator; a fault's text names the path.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Opens a file for output: created, or emptied if it exists.
  virtual std::unique_ptr<OutputFile> OpenForOutput(const std::string& path) = 0;

  /// Opens a file for appending: created, or kept with new text going at its end.
  virtual std::unique_ptr<OutputFile> OpenForAppend(const std::string& path) = 0;

  /// Opens an existing file for reading.
  virtual std::unique_ptr<InputFile> OpenForInput(const std::string& path) = 0;
};

}  // namespace kelvara::platform
