#pragma once

#include <QUrl>
#include <string>

#include "platform/FileChooser.h"

namespace kelvara::widgets {

/// The path that the address of a file on a POSIX system stands for, byte for byte.
std::string LocalPath(const QUrl& address);

/// File choosers of the desktop. Each is a QFileDialog named `CommonDialog1`.
class QtFileChooser : public platform::FileChooser {
 public:
  std::optional<std::string> Choose(const platform::FileChooserRequest& request) override;
};

}  // namespace kelvara::widgets
