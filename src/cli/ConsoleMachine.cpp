#include "cli/ConsoleMachine.h"

namespace kelvara::cli {

app::Machine ConsoleMachine::Machine() {
  return {clock_, dateFormat_, fileSystem_, beeper_, messageBoxes_, events_};
}

app::Controls ConsoleMachine::Controls() { return {grid_, statusBar_, logBox_, menuBar_}; }

}  // namespace kelvara::cli
