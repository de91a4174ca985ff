#pragma once

#include <QFont>

namespace kelvara::widgets {

/// The font "Courier New" for boxes whose columns have to stay aligned. A machine without it puts
/// another font in its place, and not always one whose characters are all of one width: there the
/// first of the desktop's own that is takes over. Sets the family alone; the size is the widget's.
QFont CourierNew();

}  // namespace kelvara::widgets
