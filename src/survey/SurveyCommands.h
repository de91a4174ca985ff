#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Desktop.h"
#include "survey/SurveyChanges.h"
#include "survey/SurveyResult.h"
#include "sync/SyncModel.h"

namespace kelvara::survey {

/// An earlier session that a survey is compared with.
struct EarlierSurvey {
  SurveyResult survey;
  std::string name;  ///< The name of its file without the folder, in UTF-8.
};

/// What the survey window's buttons do with files.
class SurveyCommands {
 public:
  explicit SurveyCommands(const platform::Desktop& desktop) : desktop_(desktop) {}

  /// Lets the user choose where the survey is saved; nothing on cancel.
  std::optional<std::string> ChooseWhereToSave();

  /// Writes the survey as HTML, replacing a file that exists. If that fails, one message box says
  /// so. `earlier` is null if the survey was not compared.
  void Save(const std::string& path, const sync::SyncModel& model, const SurveyResult& survey,
            const EarlierSurvey* earlier, const std::vector<DelayChange>& changes);

  /// Lets the user choose an earlier session and surveys it; nothing on cancel. If it cannot be
  /// read, one message box says so.
  std::optional<EarlierSurvey> ReadEarlier();

  /// Says that the earlier session has no antenna in common with this one.
  void RefuseEarlier(const EarlierSurvey& earlier);

 private:
  std::string LastFolder() const;
  void Complain(const std::string& text, const char* title);

  const platform::Desktop& desktop_;
};

}  // namespace kelvara::survey
