#include "sessions/StartedFile.h"

#include <utility>
#include <vector>

namespace kelvara::sessions {

StartedFile::StartedFile(std::unique_ptr<platform::InputFile> file)
    : file_(std::move(file)), start_(kPieceBytes, '\0') {
  start_.resize(file_->Read(start_));
}

std::size_t StartedFile::Read(std::span<char> buffer) {
  if (given_ == start_.size()) {
    return file_->Read(buffer);
  }
  const std::size_t got = start_.copy(buffer.data(), buffer.size(), given_);
  given_ += got;
  return got;
}

std::string WholeText(platform::InputFile& file) {
  std::string text;
  std::vector<char> piece(kPieceBytes);
  while (const std::size_t got = file.Read(piece)) {
    text.append(piece.data(), got);
  }
  return text;
}

}  // namespace kelvara::sessions
