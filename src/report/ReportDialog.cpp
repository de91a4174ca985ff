#include "report/ReportDialog.h"

#include <chrono>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>

#include "base/Fault.h"
#include "platform/DirectoryOf.h"
#include "platform/FileExists.h"

namespace kelvara::report {

using platform::MessageAnswer;
using platform::MessageButtons;
using platform::MessageIcon;

namespace {

std::string TwoDigits(unsigned number) { return (number < 10 ? "0" : "") + std::to_string(number); }

constexpr std::string_view kDemoNotes = "Demo: simulated readings.";

/// Whether notes hold nothing but blanks and line ends.
bool IsEmpty(std::string_view notes) {
  return notes.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// The notes without the line of the demo, of which only what the user has added to it is kept.
std::string WithoutDemoNotes(std::string_view notes) {
  std::string kept;
  while (!notes.empty()) {
    const std::size_t lineFeed = notes.find('\n');
    std::string line(
        notes.substr(0, lineFeed == std::string_view::npos ? notes.size() : lineFeed + 1));
    notes.remove_prefix(line.size());
    const std::size_t demo = line.find(kDemoNotes);
    if (demo != std::string::npos) {
      const std::size_t after = line.find_first_not_of(" \t", demo + kDemoNotes.size());
      line.erase(demo, after == std::string::npos ? after : after - demo);
      if (IsEmpty(line)) {
        continue;
      }
    }
    kept += line;
  }
  return kept;
}

/// The file name that is offered for a report of this day, such as "Kelvara 2026-11-21.html".
std::string ReportNameOf(platform::DateTime wallTime) {
  const std::chrono::sys_days day{std::chrono::days{std::lround(std::floor(wallTime))}};
  const std::chrono::year_month_day date{day};
  return "Kelvara " + std::to_string(int{date.year()}) + "-" + TwoDigits(unsigned{date.month()}) +
         "-" + TwoDigits(unsigned{date.day()}) + ".html";
}

}  // namespace

bool ReportDialog::HasPhaseInformation() {
  if (model_.AaCount() != 0) {
    return true;
  }
  desktop_.messageBoxes.Show("No phase information has been captured.", "Report Can't Be Generated",
                             MessageIcon::Exclamation, MessageButtons::Ok);
  return false;
}

std::string ReportDialog::Form_Load(ReportFields& fields) {
  std::string fileName = lastFilenames_.GetLastReportFilename();
  rememberedFields_.LoadOrCreate(fields);
  if (isDemo_ && IsEmpty(fields.notes)) {
    fields.notes = kDemoNotes;
  }
  return fileName;
}

std::optional<std::string> ReportDialog::CommandBrowse_Click() {
  try {
    // The capture's folder, not the last report's, so that a site's files stay together.
    std::string folder = platform::DirectoryOf(lastFilenames_.GetLastFilename());
    const bool isFirst = lastFilenames_.GetLastReportFilename().empty();
    return desktop_.fileChooser.Choose(
        {platform::FileChooserKind::Save, "Select a file to write to", "HTML File (*.html)|*.html|",
         std::move(folder), isFirst ? ReportNameOf(desktop_.clock.WallTime()) : std::string()});
  } catch (const base::Fault&) {
    return std::nullopt;
  }
}

bool ReportDialog::CommandGenerate_Click(const std::string& fileName, const ReportFields& fields) {
  if (!MayWrite(fileName) ||
      !syncReport_.GenerateReport(fileName, fields.site, fields.tester, fields.notes)) {
    return false;
  }
  lastFilenames_.SaveLastReportFilename(fileName);
  ReportFields remembered = fields;
  if (isDemo_) {
    remembered.notes = WithoutDemoNotes(fields.notes);
  }
  rememberedFields_.Save(remembered);
  if (fields.showReport) {
    OpenReport(fileName, desktop_.documentOpener, desktop_.messageBoxes);
  }
  return true;
}

bool ReportDialog::MayWrite(const std::string& fileName) {
  if (platform::FileExists(desktop_.fileSystem, fileName) &&
      desktop_.messageBoxes.Show(fileName + " already exists.\r\n\r\nDo you want to replace it?",
                                 "Generate Report", MessageIcon::Exclamation,
                                 MessageButtons::YesNo) != MessageAnswer::Yes) {
    return false;
  }
  if (fileName.empty()) {
    desktop_.messageBoxes.Show(
        "A filename must be specified\r\n"
        "Can't generate report.",
        "File not specified", MessageIcon::Exclamation, MessageButtons::Ok);
    return false;
  }
  return true;
}

}  // namespace kelvara::report
