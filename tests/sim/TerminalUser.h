#pragma once

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>

namespace kelvara::test {

/// A program that has a terminal device open and changes none of its settings.
class TerminalUser {
 public:
  explicit TerminalUser(const std::string& name)
      : descriptor_(open(name.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {}
  ~TerminalUser() {
    if (IsOpen()) {
      close(descriptor_);
    }
  }
  TerminalUser(const TerminalUser&) = delete;
  TerminalUser& operator=(const TerminalUser&) = delete;

  bool IsOpen() const { return descriptor_ >= 0; }

  int Descriptor() const { return descriptor_; }

  bool Send(std::string_view text) const {
    return write(descriptor_, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  }

  /// What has arrived so far.
  std::string Take() const {
    std::array<char, 65536> piece{};
    const ssize_t got = read(descriptor_, piece.data(), piece.size());
    return got > 0 ? std::string(piece.data(), static_cast<std::size_t>(got)) : std::string();
  }

  /// Whether the other end is gone.
  bool SeesHangUp() const {
    pollfd wait{descriptor_, POLLIN, 0};
    return poll(&wait, 1, 0) == 1 && (wait.revents & POLLHUP) != 0;
  }

 private:
  int descriptor_;
};

/// Waits for input at a descriptor, by default for up to a second.
inline bool WaitForInput(int descriptor, int timeoutMs = 1000) {
  pollfd wait{descriptor, POLLIN, 0};
  return poll(&wait, 1, timeoutMs) == 1 && (wait.revents & POLLIN) != 0;
}

/// A temporary folder for a test, removed at the end.
class TestFolder {
 public:
  TestFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kelvara-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  ~TestFolder() { std::filesystem::remove_all(path_); }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

}  // namespace kelvara::test
