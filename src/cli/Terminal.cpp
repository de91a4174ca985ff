#include "cli/Terminal.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace kelvara::cli {

bool IsErrorTerminal() {
#ifdef _WIN32
  return _isatty(2) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

}  // namespace kelvara::cli
