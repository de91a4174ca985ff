#pragma once

#include <string>

#include "sim/SiteFile.h"
#include "support/TextFile.h"

namespace kelvara::test {

/// One of the example sites, by its file's name.
inline sim::Site ExampleSite(const std::string& name) {
  return sim::ParseSite(ReadTextFile(std::string(KELVARA_EXAMPLES_DIR) + "/" + name), name);
}

}  // namespace kelvara::test
