#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/FileSystem.h"

namespace kelvara::sessions {

/// How much of a file is read at a time.
inline constexpr std::size_t kPieceBytes = std::size_t{256} << 10U;

/// A file whose first piece has already been read, to see what it is. It still reads from its
/// beginning.
class StartedFile : public platform::InputFile {
 public:
  /// Reads the first piece; a failed read is a file fault.
  explicit StartedFile(std::unique_ptr<platform::InputFile> file);

  /// Whether the file is one of JSON results.
  bool HoldsResults() const { return start_.starts_with('{'); }

  std::string_view Start() const { return start_; }

  std::size_t Read(std::span<char> buffer) override;
  std::size_t Size() const override { return file_->Size(); }

 private:
  std::unique_ptr<platform::InputFile> file_;
  std::string start_;
  std::size_t given_ = 0;
};

/// What is left of a file. A failed read is a file fault.
std::string WholeText(platform::InputFile& file);

}  // namespace kelvara::sessions
