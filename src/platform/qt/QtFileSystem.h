#pragma once

#include <QString>
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

/// A file fault when the path is no file that can be read. Pipes and devices pass: what is in them
/// can be read only once.
void ExpectReadable(const std::string& path);

/// A path of the system's, which may have backslashes, in the machine's form.
QString MachinePath(const std::string& path);

}  // namespace kelvara::qt
