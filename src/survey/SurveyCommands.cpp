#include "survey/SurveyCommands.h"

#include "base/Fault.h"
#include "capture/LastFilenames.h"
#include "platform/DirectoryOf.h"
#include "platform/qt/PathText.h"
#include "platform/qt/SessionFile.h"
#include "platform/qt/Text.h"
#include "survey/Survey.h"
#include "survey/SurveyReport.h"

namespace kelvara::survey {
namespace {

constexpr const char* kSaveTitle = "Save Survey";
constexpr const char* kCompareTitle = "Compare with an Earlier Session";

std::string FileNameOf(const std::string& path) {
  const QString text = qt::MessageText(path).replace(u'\\', u'/');
  return text.mid(text.lastIndexOf(u'/') + 1).toStdString();
}

}  // namespace

std::optional<std::string> SurveyCommands::ChooseWhereToSave() {
  return desktop_.fileChooser.Choose({platform::FileChooserKind::SaveConfirmed, kSaveTitle,
                                      "HTML File (*.html)|*.html|", LastFolder(), "survey.html"});
}

void SurveyCommands::Save(const std::string& path, const sync::SyncModel& model,
                          const SurveyResult& survey, const EarlierSurvey* earlier,
                          const std::vector<DelayChange>& changes) {
  const std::string date = desktop_.dateFormat.ShortDate(desktop_.clock.WallTime());
  const SurveyReportContents contents{.model = model,
                                      .survey = survey,
                                      .older = earlier != nullptr ? earlier->name : "",
                                      .changes = earlier != nullptr ? &changes : nullptr,
                                      .drift = nullptr,
                                      .source = "the readings in Kelvara's main window",
                                      .date = qt::ToQString(date).toStdString()};
  try {
    desktop_.fileSystem.OpenForOutput(path)->Write(SurveyReportHtml(contents));
  } catch (const base::Fault& fault) {
    Complain(std::string("The survey was not saved:\r\n") + fault.what(), kSaveTitle);
  }
}

std::optional<EarlierSurvey> SurveyCommands::ReadEarlier() {
  const std::optional<std::string> path =
      desktop_.fileChooser.Choose({platform::FileChooserKind::Open,
                                   kCompareTitle,
                                   "Recorded Sessions and JSON Results (*)|*|",
                                   LastFolder(),
                                   {}});
  if (!path) {
    return std::nullopt;
  }
  try {
    const sync::SyncModel model = qt::ReadSessionFile(desktop_.fileSystem, *path);
    SurveyOptions options;
    options.guidance = false;
    return EarlierSurvey{.survey = MakeSurvey(model, options), .name = FileNameOf(*path)};
  } catch (const base::Fault& fault) {
    Complain(std::string("The earlier session cannot be used:\r\n") + fault.what(), kCompareTitle);
    return std::nullopt;
  }
}

void SurveyCommands::RefuseEarlier(const EarlierSurvey& earlier) {
  Complain("No antenna is in the main part of both \"" +
               qt::ToText(QString::fromStdString(earlier.name)) + "\" and this survey.",
           kCompareTitle);
}

std::string SurveyCommands::LastFolder() const {
  return platform::DirectoryOfOrEmpty(capture::LastFilenames(desktop_).GetLastFilename());
}

void SurveyCommands::Complain(const std::string& text, const char* title) {
  desktop_.messageBoxes.Show(text, title, platform::MessageIcon::Critical,
                             platform::MessageButtons::Ok);
}

}  // namespace kelvara::survey
