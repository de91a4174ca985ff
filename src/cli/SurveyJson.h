#pragma once

#include <optional>
#include <string>
#include <vector>

#include "survey/SurveyChanges.h"
#include "survey/SurveyResult.h"

namespace kelvara::cli {

/// A survey with what it was compared to.
struct SurveyOutput {
  survey::SurveyResult survey;
  std::optional<std::vector<survey::DelayChange>> changes;  ///< None without an older survey.
  std::optional<std::vector<survey::DelayChange>> drift;    ///< None without recorded text.
};

/// The survey as a JSON document. Numbers are not rounded; one that does not exist is null.
std::string SurveyJson(const SurveyOutput& output);

}  // namespace kelvara::cli
