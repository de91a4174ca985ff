#pragma once

#include "platform/FileChooser.h"

namespace kelvara::widgets {

/// The desktop's file choosers. Each is a QFileDialog named `CommonDialog1`.
class QtFileChooser : public platform::FileChooser {
 public:
  std::optional<std::string> Choose(const platform::FileChooserRequest& request) override;
};

}  // namespace kelvara::widgets
