#include "platform/DirectoryOf.h"

#include <filesystem>

#include "base/Fault.h"

namespace kelvara::platform {
namespace {

constexpr std::string_view kSeparators =
    std::filesystem::path::preferred_separator == '/' ? "\\/" : "\\";

}  // namespace

std::string DirectoryOf(std::string_view path) {
  if (path.empty() || path.front() == '\0') {
    return {};
  }
  const std::size_t separator = path.find_last_of(kSeparators);
  if (separator == std::string_view::npos) {
    throw base::Fault(base::FaultKind::Subscript,
                      "The path \"" + std::string(path) + "\" names no folder");
  }
  return std::string(path.substr(0, separator));
}

std::string DirectoryOfOrEmpty(std::string_view path) {
  return path.find_last_of(kSeparators) == std::string_view::npos ? std::string()
                                                                  : DirectoryOf(path);
}

}  // namespace kelvara::platform
