#pragma once

#include <QFont>

namespace kelvara::widgets {

/// The font "Courier New", for boxes whose columns must stay aligned. A machine without it may
/// substitute a proportional font; the desktop's first fixed-pitch font is used then. Sets only the
/// family; the size is left to the widget.
QFont CourierNew();

}  // namespace kelvara::widgets
