#pragma once

#include <string>
#include <utility>
#include <vector>

#include "sync/SyncModel.h"

/// The recorded sessions and results that stand in tests/golden.
namespace kelvara::test {

/// The path of a file there.
std::string GoldenPath(const std::string& name);

/// A file there, with each placeholder ("@DATE@") replaced by its text.
std::string Golden(const std::string& name,
                   const std::vector<std::pair<std::string, std::string>>& placeholders = {});

/// Fills a model from a file of antennas and readings there.
void FillModel(sync::SyncModel& model, const std::string& name);

/// Fails with the first line that differs, so that a long result stays readable.
void ExpectSameText(const std::string& actual, const std::string& expected);

}  // namespace kelvara::test
