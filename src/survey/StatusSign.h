#pragma once

#include <QIcon>

#include "survey/SurveyResult.h"

namespace kelvara::survey {

/// The sign of a status. Signs differ in their shape as well as in their colour, and can be read on
/// light and on dark backgrounds.
QIcon StatusSign(AntennaStatus status);

}  // namespace kelvara::survey
