#include "report/SyncReport.h"

#include <vector>

#include "base/Fault.h"
#include "report/SyncReportWriter.h"
#include "sync/SortIntegers.h"

namespace kelvara::report {
namespace {

std::vector<std::int16_t> SortedRpns(const sync::SyncModel& model) {
  std::vector<std::int16_t> rpns;
  rpns.reserve(sync::kMaxAas);
  for (int aa = 0; aa < model.AaCount(); ++aa) {
    rpns.push_back(model.AaRpn(aa));
  }
  sync::SortIntegers(rpns, 0, static_cast<std::int16_t>(model.AaCount() - 1));
  return rpns;
}

}  // namespace

bool SyncReport::GenerateReport(const std::string& fileName, const std::string& site,
                                const std::string& tester, const std::string& notes) {
  const std::vector<std::int16_t> sortedRpns = SortedRpns(model_);
  try {
    SyncReportWriter writer(machine_.fileSystem.OpenForOutput(fileName), model_, options_.fpsShown,
                            machine_.dateFormat.ShortDate(machine_.clock.WallTime()));
    try {
      writer.WriteHead();
      writer.WriteSummary(fileName, site, tester, notes);
      writer.WriteCableLengths(sortedRpns);
      writer.WriteRelativePhases();
      writer.WriteFooter();
    } catch (const base::Fault&) {
      writer.Flush();
      throw;
    }
    writer.Flush();
    return true;
  } catch (const base::Fault&) {
    machine_.messageBoxes.Show(
        "Error occured while generating report.\r\n"
        "Check the filename and path",
        "Generate Report", platform::MessageIcon::Critical, platform::MessageButtons::Ok);
    return false;
  }
}

void OpenReport(const std::string& path, platform::DocumentOpener& documentOpener,
                platform::MessageBoxes& messageBoxes) {
  if (!documentOpener.OpenDocument(path)) {
    messageBoxes.Show("Could not open the HTML formatted report.", "Web Browser Error",
                      platform::MessageIcon::Critical, platform::MessageButtons::Ok);
  }
}

}  // namespace kelvara::report
