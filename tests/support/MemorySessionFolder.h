#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/Fault.h"
#include "platform/SessionFolder.h"

namespace kelvara::test {

/// Keeps locked files in memory. While `full` is set, nothing can be made or written.
class MemorySessionFolder : public platform::SessionFolder {
 public:
  std::vector<Entry> List() const override {
    std::vector<Entry> entries;
    for (const auto& [name, text] : files) {
      const auto size = sizes.find(name);
      entries.push_back({name, size == sizes.end() ? text.size() : size->second});
    }
    return entries;
  }
  std::string PathOf(const std::string& name) const override { return "sessions/" + name; }
  std::unique_ptr<platform::LockedFile> Create(const std::string& name) override {
    CheckSpace();
    return files.count(name) > 0 ? nullptr : std::make_unique<File>(*this, name);
  }
  std::unique_ptr<platform::LockedFile> Open(const std::string& name) override {
    const bool isFree = files.count(name) > 0 && locked.count(name) == 0;
    return isFree ? std::make_unique<File>(*this, name) : nullptr;
  }

  /// The names of the files, in order.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& [name, text] : files) {
      names.push_back(name);
    }
    return names;
  }

  std::map<std::string, std::string> files;
  /// Sizes to list instead of the true ones.
  std::map<std::string, std::uint64_t> sizes;
  std::set<std::string> locked;
  bool full = false;

 private:
  class File : public platform::LockedFile {
   public:
    File(MemorySessionFolder& folder, std::string name) : folder_(folder), name_(std::move(name)) {
      folder_.files[name_];
      folder_.locked.insert(name_);
    }
    ~File() override { folder_.locked.erase(name_); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    void Write(std::string_view bytes) override {
      folder_.CheckSpace();
      folder_.files[name_] += bytes;
    }
    std::uint64_t Size() const override { return folder_.files[name_].size(); }
    std::size_t Read(std::uint64_t place, std::span<char> buffer) override {
      return folder_.files[name_].copy(buffer.data(), buffer.size(), place);
    }
    void Cut(std::uint64_t size) override { folder_.files[name_].resize(size); }
    void Remove() override { folder_.files.erase(name_); }

   private:
    MemorySessionFolder& folder_;
    std::string name_;
  };

  void CheckSpace() const {
    if (full) {
      throw base::Fault(base::FaultKind::File, "the disk is full");
    }
  }
};

}  // namespace kelvara::test
