#pragma once

#include <QUrl>
#include <string>

#include "platform/FileChooser.h"

namespace kelvara::widgets {

/// The path in the URL of a file on a POSIX system, byte for byte.
std::string LocalPath(const QUrl& address);

/// The desktop's file choosers. Each is a QFileDialog named `CommonDialog1`.
class QtFileChooser : public platform::FileChooser {
 public:
  std::optional<std::string> Choose(const platform::FileChooserRequest& request) override;
};

}  // namespace kelvara::widgets
