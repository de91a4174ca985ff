#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/FileSystem.h"

namespace kelvara::platform {

/// A file that no other program can open as a locked one for as long as this exists. The lock ends
/// with the process, even one that is killed. What is written goes to the end of the file.
class LockedFile : public OutputFile {
 public:
  virtual std::uint64_t Size() const = 0;

  /// Reads bytes from a place in the file and returns how many there were; 0 at its end. A failed
  /// read is a file fault.
  virtual std::size_t Read(std::uint64_t place, std::span<char> buffer) = 0;

  /// Removes everything after the first `size` bytes. A failure is a file fault.
  virtual void Cut(std::uint64_t size) = 0;

  /// Removes the file from its folder. A failure is a file fault.
  virtual void Remove() = 0;
};

/// The folder of the files in which sessions are kept.
class SessionFolder {
 public:
  struct Entry {
    std::string name;
    std::uint64_t size = 0;
  };

  virtual ~SessionFolder() = default;

  /// The files in the folder in any order. None if it cannot be read.
  virtual std::vector<Entry> List() const = 0;

  /// The path of a file in the folder.
  virtual std::string PathOf(const std::string& name) const = 0;

  /// Makes a new file, and the folder if there is none. Null if the name is taken; any other
  /// failure is a file fault.
  virtual std::unique_ptr<LockedFile> Create(const std::string& name) = 0;

  /// Opens an existing file. Null if there is none or another program has locked it; any other
  /// failure is a file fault.
  virtual std::unique_ptr<LockedFile> Open(const std::string& name) = 0;
};

}  // namespace kelvara::platform
