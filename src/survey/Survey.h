#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "survey/SurveyResult.h"
#include "sync/SyncModel.h"

namespace kelvara::survey {

struct SurveyOptions {
  /// The index of the antenna whose length is known; its part becomes the main part. Without it,
  /// lengths count from the shortest antenna of a part.
  std::optional<int> reference;
  double referenceMetres = 0.0;

  /// The lengths in the HTML report, by antenna; empty if they are not to be compared.
  std::vector<std::optional<std::int32_t>> reportMetres;

  /// Whether to look for antennas to stand at.
  bool guidance = true;
};

/// Adjusts all pairs of the model. Any model has a result, also an empty one.
SurveyResult MakeSurvey(const sync::SyncModel& model, const SurveyOptions& options = {});

/// The index of the antenna with this RPN, if there is one.
std::optional<int> AntennaWithRpn(const sync::SyncModel& model, int rpn);

}  // namespace kelvara::survey
