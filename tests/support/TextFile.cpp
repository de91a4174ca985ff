#include "support/TextFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace kelvara::test {

std::string ReadTextFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << "cannot read " << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteTextFile(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text << std::flush;
  EXPECT_TRUE(file.good()) << "cannot write " << path;
}

}  // namespace kelvara::test
