#include "help/ProgramIcon.h"

#include <QString>
#include <array>

// The pictures are in a static library, so they must be loaded by name, outside any namespace.
static void LoadPictures() { Q_INIT_RESOURCE(ProgramIcon); }

namespace kelvara::help {
namespace {

/// No window asks for a larger picture, and every size added here stays in memory.
constexpr std::array kSizes{16, 24, 32, 48, 64, 128};

}  // namespace

QIcon ProgramIcon() {
  LoadPictures();
  QIcon icon;
  for (const int size : kSizes) {
    icon.addFile(QStringLiteral(":/icon/kelvara-%1.png").arg(size), QSize(size, size));
  }
  return icon;
}

}  // namespace kelvara::help
