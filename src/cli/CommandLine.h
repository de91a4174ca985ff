#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace kelvara::cli {

/// The program's arguments, last one first as the option parser takes them, with those protected
/// that it would misread: a value of `convert` that begins with "-", a file whose name begins with
/// "[", or behind "--" with "-", a "++", an empty value behind "=". Where the first argument is no
/// sub-command it is the only one. An empty argument where no word is due is a parse error. The
/// program has to know its sub-commands already.
std::vector<std::string> ReversedArguments(const CLI::App& program, int argumentCount,
                                           const char* const* arguments);

}  // namespace kelvara::cli
