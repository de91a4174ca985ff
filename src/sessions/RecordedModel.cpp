#include "sessions/RecordedModel.h"

#include <vector>

#include "sessions/RecordedSession.h"
#include "sessions/ResultsReader.h"
#include "sessions/StartedFile.h"

namespace kelvara::sessions {

sync::SyncModel ReadRecordedModel(platform::InputFile& file) {
  RecordedResults results;
  ResultsReader reader(results);
  RecordedSession text(reader);
  std::vector<char> piece(kPieceBytes);
  while (const std::size_t got = file.Read(piece)) {
    text.Feed({piece.data(), got});
  }
  text.End();
  return results.model;
}

}  // namespace kelvara::sessions
