#include "cli/ExitCode.h"

#include <iostream>

namespace kelvara::cli {

void Complain(std::string_view text) { std::cerr << "kelvara-cli: " << text << '\n'; }

}  // namespace kelvara::cli
