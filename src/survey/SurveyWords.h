#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "survey/SurveyChanges.h"
#include "survey/SurveyResult.h"
#include "sync/DisplayOptions.h"

/// What a survey says in sentences. Antennas are named in the base that the options choose.
namespace kelvara::survey {

/// An antenna's status with what else its row says: "settled, reference", "apart, from 07",
/// "settled, report differs".
std::string AntennaRemark(const SurveyResult& survey, int antenna,
                          const sync::DisplayOptions& options);

/// What a status means, in one sentence.
std::string_view StatusMeaning(AntennaStatus status);

/// What is remarkable about a pair: "left out", "in doubt", "bridge", "one way", "thin"; empty if
/// nothing is.
std::string PairMarks(const SurveyPair& pair);

/// The survey in numbers, and what its lengths count from.
std::string SummaryWords(const SurveyResult& survey, bool lengthGiven,
                         const sync::DisplayOptions& options);

/// One sentence: at which antenna to stand next, and why.
std::string NextWords(const SurveyResult& survey, const sync::DisplayOptions& options);

/// One sentence: which antennas changed since an earlier session.
std::string ChangeWords(const std::vector<DelayChange>& changes, const std::string& earlier,
                        const sync::DisplayOptions& options);

/// What the picture of the network shows, for those who cannot see it.
std::string NetworkWords(const SurveyResult& survey, const sync::DisplayOptions& options);

}  // namespace kelvara::survey
