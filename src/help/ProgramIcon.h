#pragma once

#include <QIcon>

namespace kelvara::help {

/// The program's icon, in sizes from 16 to 128 pixels.
QIcon ProgramIcon();

}  // namespace kelvara::help
