#pragma once

#include <memory>
#include <string>

#include "platform/FileSystem.h"

namespace kelvara::qt {

/// The machine's files.
class QtFileSystem : public platform::FileSystem {
 public:
  std::unique_ptr<platform::OutputFile> OpenForOutput(const std::string& path) override;
  std::unique_ptr<platform::OutputFile> OpenForAppend(const std::string& path) override;
  std::unique_ptr<platform::InputFile> OpenForInput(const std::string& path) override;
};

/// Throws a file fault if the path is not a readable file. Pipes and devices are not checked,
/// because their contents can be read only once.
void ExpectReadable(const std::string& path);

}  // namespace kelvara::qt
