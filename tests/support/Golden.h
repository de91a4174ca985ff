#pragma once

#include <string>
#include <utility>
#include <vector>

#include "sync/SyncModel.h"

/// The recorded sessions and results in tests/golden.
namespace kelvara::test {

/// The path of a golden file.
std::string GoldenPath(const std::string& name);

/// The text of a golden file, with each placeholder ("@DATE@") replaced by its value.
std::string Golden(const std::string& name,
                   const std::vector<std::pair<std::string, std::string>>& placeholders = {});

/// Fills a model from a golden file of antennas and readings.
void FillModel(sync::SyncModel& model, const std::string& name);

/// Fails with only the first line that differs, to keep the message short.
void ExpectSameText(const std::string& actual, const std::string& expected);

}  // namespace kelvara::test
