#pragma once

#include <string>

#include "survey/SurveyResult.h"
#include "sync/SyncModel.h"

/// The larger parts of the survey report, as HTML.
namespace kelvara::survey {

/// The network as an inline picture, with its legend.
std::string NetworkHtml(const SurveyResult& survey);

/// The mean phase of every cell, in blocks of columns that fit on a page.
std::string MatrixHtml(const sync::SyncModel& model, const SurveyResult& survey);

}  // namespace kelvara::survey
