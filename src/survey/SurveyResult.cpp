#include "survey/SurveyResult.h"

#include "sync/AaSyncUnits.h"

namespace kelvara::survey {

std::string_view StatusText(AntennaStatus status) {
  switch (status) {
    case AntennaStatus::Apart:
      return "apart";
    case AntennaStatus::Suspect:
      return "suspect";
    case AntennaStatus::Unchecked:
      return "unchecked";
    case AntennaStatus::NearStep:
      return "near a step";
    case AntennaStatus::Settled:
      return "settled";
  }
  return "";
}

std::vector<std::size_t> SurveyResult::Suspects() const {
  std::vector<std::size_t> suspects;
  for (std::size_t index = 0; index < pairs.size(); ++index) {
    if (pairs[index].suspect) {
      suspects.push_back(index);
    }
  }
  return suspects;
}

bool SurveyResult::ReportDiffers(const SurveyAntenna& antenna) {
  return antenna.status == AntennaStatus::Settled && antenna.reportMetres &&
         *antenna.reportMetres != antenna.aaSync * sync::kMetresPerAaSyncUnit;
}

}  // namespace kelvara::survey
