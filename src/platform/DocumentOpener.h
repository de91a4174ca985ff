#pragma once

#include <string>

namespace kelvara::platform {

/// The desktop's "Open" action: hands a document or web address to the program registered for it.
class DocumentOpener {
 public:
  virtual ~DocumentOpener() = default;

  /// Opens a document by its path. Returns false if the desktop cannot.
  virtual bool OpenDocument(const std::string& path) = 0;

  /// Opens a web address. Returns false if the desktop cannot.
  virtual bool OpenAddress(const std::string& address) = 0;
};

}  // namespace kelvara::platform
