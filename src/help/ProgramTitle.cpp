#include "help/ProgramTitle.h"

namespace kelvara::help {

std::string ProgramVersion() {
  return std::to_string(KELVARA_VERSION_MAJOR) + "." + std::to_string(KELVARA_VERSION_MINOR) + "." +
         std::to_string(KELVARA_VERSION_REVISION);
}

std::string ProgramTitleAndVersion() {
  return std::string(kProgramTitle) + " v" + ProgramVersion();
}

}  // namespace kelvara::help
