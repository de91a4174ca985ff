#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "base/Fault.h"

namespace kelvara::platform {

/// A file open for writing. Destroying it closes it.
class OutputFile {
 public:
  virtual ~OutputFile() = default;

  /// Writes the bytes unchanged. On return they have reached the operating system. A failed write
  /// is a file fault.
  virtual void Write(std::string_view bytes) = 0;
};

/// A file open for reading. Destroying it closes it.
class InputFile {
 public:
  virtual ~InputFile() = default;

  /// Reads up to `buffer.size()` bytes and returns the number read; 0 means the end of the file. A
  /// failed read is a file fault.
  virtual std::size_t Read(std::span<char> buffer) = 0;

  /// The size in bytes, or 0 if it is unknown (as for a pipe).
  virtual std::size_t Size() const = 0;

  /// Continues to read at this place in the file. One that can only be read from its beginning to
  /// its end, as a pipe, is a file fault.
  virtual void Seek(std::uint64_t /*place*/) {
    throw base::Fault(base::FaultKind::File, "the file can only be read from its beginning");
  }
};

/// The machine's files. A path may use backslashes or the machine's own separator. A file that
/// cannot be opened is a file fault whose text names the path.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Opens a file for output. It is created, or emptied if it exists.
  virtual std::unique_ptr<OutputFile> OpenForOutput(const std::string& path) = 0;

  /// Opens a file for appending. It is created, or kept if it exists; new text goes to its end.
  virtual std::unique_ptr<OutputFile> OpenForAppend(const std::string& path) = 0;

  /// Opens an existing file for reading.
  virtual std::unique_ptr<InputFile> OpenForInput(const std::string& path) = 0;
};

}  // namespace kelvara::platform
