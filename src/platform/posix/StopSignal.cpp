#include "platform/posix/StopSignal.h"

#include <utility>

namespace kelvara::posix {

StopSignal::StopSignal(std::function<void()> stop) {
  QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_,
                   [this, stop = std::move(stop)] {
                     notifier_.setEnabled(false);
                     stop();
                   });
}

}  // namespace kelvara::posix
