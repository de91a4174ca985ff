#include "platform/qt/SessionFile.h"

#include <string_view>

#include "base/Fault.h"
#include "platform/qt/ResultsFile.h"
#include "sessions/KelvaraFile.h"
#include "sessions/RecordedModel.h"
#include "sessions/StartedFile.h"

namespace kelvara::qt {
namespace {

[[noreturn]] void Refuse(const std::string& path, const std::string& reason) {
  throw base::Fault(base::FaultKind::File, "\"" + path + "\" " + reason);
}

}  // namespace

sync::SyncModel ReadSessionFile(platform::FileSystem& fileSystem, const std::string& path) {
  sync::SyncModel model;
  sessions::StartedFile file(fileSystem.OpenForInput(path));
  if (file.HoldsResults()) {
    if (!ReadResults(sessions::WholeText(file), model)) {
      Refuse(path, "has not the form of the results that replay --json writes");
    }
    return model;
  }
  // Words in one of Kelvara's own files may look like an antenna.
  const std::string_view kind = sessions::KelvaraFile(file.Start());
  if (!kind.empty()) {
    Refuse(path, "is " + std::string(kind) + ", not a recorded session");
  }
  model = sessions::ReadRecordedModel(file);
  if (model.AaCount() == 0) {
    Refuse(path, "holds no report of an antenna");
  }
  return model;
}

}  // namespace kelvara::qt
