#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace kelvara::test {

/// A fresh folder that is removed by the destructor. Every user may write to it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    const std::filesystem::path parent = std::filesystem::temp_directory_path();
    std::random_device random;
    do {
      path_ = (parent / ("kelvara-test-" + std::to_string(random()))).string();
    } while (!std::filesystem::create_directory(path_));
    std::filesystem::permissions(path_, std::filesystem::perms::all);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& Path() const { return path_; }
  /// The path of a file in it, with the system's separators.
  std::string PathOf(const std::string& name) const {
    return (std::filesystem::path(path_) / name).make_preferred().string();
  }

 private:
  std::string path_;
};

}  // namespace kelvara::test
