#include "platform/posix/CaughtSignals.h"

namespace kelvara::posix {

CaughtSignals::CaughtSignals(Handler handler) {
  for (std::size_t place = 0; place < kSignals.size(); ++place) {
    before_.at(place) = std::signal(kSignals.at(place), SIG_IGN);
    if (before_.at(place) != SIG_IGN) {
      std::signal(kSignals.at(place), handler);
    }
  }
}

CaughtSignals::~CaughtSignals() {
  for (std::size_t place = 0; place < kSignals.size(); ++place) {
    std::signal(kSignals.at(place), before_.at(place));
  }
}

}  // namespace kelvara::posix
