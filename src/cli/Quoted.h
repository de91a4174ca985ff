#pragma once

#include <string>

namespace kelvara::cli {

/// The text in quotation marks, without escaping.
inline std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace kelvara::cli
