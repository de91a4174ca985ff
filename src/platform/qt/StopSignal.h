#pragma once

#include <functional>
#include <memory>

namespace kelvara::qt {

/// Calls `stop`, from Qt's event loop, when the system or the user's console asks the program to
/// end, for as long as the result exists: once for a signal or a key (a second one ends the program
/// at once), and again when the session of the user ends. Only one result may exist at a time.
std::shared_ptr<void> AtStopSignal(std::function<void()> stop);

}  // namespace kelvara::qt
