#pragma once

#include <vector>

#include "survey/SurveyChanges.h"
#include "survey/SurveyResult.h"
#include "survey/SurveyTableModel.h"
#include "sync/DisplayOptions.h"
#include "sync/SyncModel.h"

/// The tables of the survey window.
namespace kelvara::survey {

/// The column of the changes since an earlier session, among those of the antennas.
inline constexpr int kChangeColumn = 7;

std::vector<SurveyColumn> AntennaColumns();
std::vector<SurveyColumn> PairColumns();

/// One row for each antenna; a row's identity is the antenna's RPN.
std::vector<SurveyRow> AntennaRows(const SurveyResult& survey,
                                   const std::vector<DelayChange>& changes,
                                   const sync::DisplayOptions& options);

/// One row for each pair of an antenna; a row's identity is the other antenna's RPN. `model` is
/// what the survey was made of.
std::vector<SurveyRow> PairRows(const SurveyResult& survey, const sync::SyncModel& model,
                                int antenna, const sync::DisplayOptions& options);

}  // namespace kelvara::survey
