#include "cli/FileClash.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "cli/Quoted.h"
#include "platform/qt/PathText.h"

namespace kelvara::cli {
namespace {

namespace fs = std::filesystem;

bool IsSameFile(const std::string& onePath, const std::string& otherPath) {
  const fs::path one = qt::MachinePath(onePath);
  const fs::path other = qt::MachinePath(otherPath);
  std::error_code unknown;
  const fs::file_status status = fs::status(one, unknown);
  if (fs::exists(status)) {
    return fs::is_regular_file(status) && fs::equivalent(one, other, unknown);
  }
  // A file that does not exist yet can only be compared by name.
  const fs::path name = fs::weakly_canonical(fs::absolute(one, unknown), unknown);
  return !name.empty() &&
         qt::IsSamePath(name, fs::weakly_canonical(fs::absolute(other, unknown), unknown));
}

}  // namespace

std::string FileClash(const std::vector<std::string>& inputs,
                      const std::vector<std::string>& outputs) {
  for (auto output = outputs.begin(); output != outputs.end(); ++output) {
    const auto isOutput = [&](const std::string& name) { return IsSameFile(*output, name); };
    if (std::any_of(inputs.begin(), inputs.end(), isOutput)) {
      return Quoted(*output) + " is read; the results cannot be written to it";
    }
    if (std::any_of(outputs.begin(), output, isOutput)) {
      return Quoted(*output) + " is named for two outputs";
    }
  }
  return "";
}

}  // namespace kelvara::cli
