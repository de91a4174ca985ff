#include "qt/FontPreparation.h"

#include "qt/ProcessMemory.h"

#ifdef KELVARA_FONTCONFIG
#include <fontconfig/fontconfig.h>

#include <system_error>
#endif

namespace kelvara::qt {

FontPreparation::FontPreparation() {
#ifdef KELVARA_FONTCONFIG
  UseOneHeap();
  try {
    reader_ = std::thread([] { FcInit(); });
  } catch (const std::system_error&) {
    // A machine without room for a thread reads the list when it is needed.
  }
#endif
}

FontPreparation::~FontPreparation() { Finish(); }

void FontPreparation::Finish() {
  if (reader_.joinable()) {
    reader_.join();
  }
}

}  // namespace kelvara::qt
