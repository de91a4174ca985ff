#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace kelvara::test {

/// A fresh folder that is removed by the destructor. Every user may write to it. POSIX only.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string path = (std::filesystem::temp_directory_path() / "kelvara-test-XXXXXX").string();
    if (::mkdtemp(path.data()) == nullptr) {
      throw std::runtime_error("no temporary folder");
    }
    path_ = path;
    std::filesystem::permissions(path_, std::filesystem::perms::all);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& Path() const { return path_; }
  std::string PathOf(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

}  // namespace kelvara::test
