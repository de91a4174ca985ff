#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/Process.h"
#include "support/TemporaryFolder.h"

namespace kelvara::test {

/// A fresh folder and requests that run the built kelvara-cli in it, in the C locale and in UTC,
/// for tests that need several folders or prepare one outside the test body.
class CliFixture {
 public:
  ProcessRequest Request(const std::vector<std::string>& arguments) const {
    ProcessRequest request;
    request.arguments = {KELVARA_CLI};
    request.arguments.insert(request.arguments.end(), arguments.begin(), arguments.end());
    request.environment = {
        {"PATH", "/usr/bin:/bin"}, {"HOME", folder_.Path()}, {"LANG", "C"}, {"TZ", "UTC0"}};
    request.folder = folder_.Path();
    return request;
  }

  std::string PathOf(const std::string& name) const { return folder_.PathOf(name); }

 private:
  TemporaryFolder folder_;
};

}  // namespace kelvara::test
