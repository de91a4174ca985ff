#pragma once

#include <string>

namespace kelvara::cli {

/// The text in quotation marks. Nothing in it is escaped.
inline std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace kelvara::cli
