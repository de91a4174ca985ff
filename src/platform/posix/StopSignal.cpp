#include "platform/qt/StopSignal.h"

#include <QSocketNotifier>
#include <utility>

#include "platform/posix/CaughtSignals.h"

namespace kelvara::qt {
namespace {

class StopSignal {
 public:
  explicit StopSignal(std::function<void()> stop) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_,
                     [this, stop = std::move(stop)] {
                       notifier_.setEnabled(false);
                       stop();
                     });
  }

 private:
  posix::CaughtSignals caughtSignals_;
  QSocketNotifier notifier_{caughtSignals_.Descriptor(), QSocketNotifier::Read};
};

}  // namespace

std::shared_ptr<void> AtStopSignal(std::function<void()> stop) {
  return std::make_shared<StopSignal>(std::move(stop));
}

}  // namespace kelvara::qt
