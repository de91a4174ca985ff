#pragma once

#include <string>

namespace kelvara::platform {

/// The desktop's "Open" verb: a document or web address is handed to the program that goes with it.
class DocumentOpener {
 public:
  virtual ~DocumentOpener() = default;

  /// Opens a document by its path; false when the desktop could not.
  virtual bool OpenDocument(const std::string& path) = 0;

  /// Opens a web address; false when the desktop could not.
  virtual bool OpenAddress(const std::string& address) = 0;
};

}  // namespace kelvara::platform
