#pragma once

#include <string>
#include <vector>

#include "survey/SurveyChanges.h"
#include "survey/SurveyResult.h"
#include "sync/SyncModel.h"

namespace kelvara::survey {

/// What a survey report shows. Texts are UTF-8.
struct SurveyReportContents {
  const sync::SyncModel& model;
  const SurveyResult& survey;
  /// What the survey was compared to, and the changes since; null if it was not.
  std::string older;
  const std::vector<DelayChange>* changes = nullptr;
  /// Null if the readings are not known one by one.
  const std::vector<DelayChange>* drift = nullptr;
  std::string source;  ///< What the survey was made from, such as the names of the files.
  std::string date;
};

/// The survey report: one HTML file in UTF-8 that loads nothing and prints on A4 landscape.
std::string SurveyReportHtml(const SurveyReportContents& contents);

}  // namespace kelvara::survey
