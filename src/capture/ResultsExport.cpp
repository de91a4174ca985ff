#include "capture/ResultsExport.h"

#include <optional>
#include <utility>

#include "base/Fault.h"
#include "help/ProgramTitle.h"

namespace kelvara::capture {
namespace {

std::string UnitName(sync::PhaseUnits units) {
  switch (units) {
    case sync::PhaseUnits::Rfps:
      return "RFPS";
    case sync::PhaseUnits::AaSync:
      return "AA Sync";
    case sync::PhaseUnits::Metres:
      return "Metres";
  }
  return {};
}

}  // namespace

void ResultsExport::WriteResults(const std::string& path) {
  try {
    if (file_) {
      throw base::Fault(base::FaultKind::File, "The file of an export that failed is still open");
    }
    file_ = machine_.fileSystem.OpenForOutput(path);
    WriteHeader();
    WriteMatrix();
    file_.reset();
  } catch (const base::Fault&) {
    machine_.beeper.Beep();
  }
}

void ResultsExport::WriteLine(std::string line) {
  line += "\r\n";
  file_->Write(line);
}

void ResultsExport::WriteHeader() {
  WriteLine("File Created by " + help::ProgramTitleAndVersion() + " on " +
            machine_.dateFormat.General(machine_.clock.WallTime()));
  if (const std::optional<sync::PhaseUnits> units = options_.units) {
    WriteLine("Units: " + UnitName(*units));
  }
  WriteLine(options_.rpnHex ? "RPN Units: Hex" : "RPN Units: Decimal");
  WriteLine("");
}

void ResultsExport::WriteMatrix() {
  std::string heading;
  for (int aa = 0; aa < model_.AaCount(); ++aa) {
    heading += ',';
    heading += Label(aa);
  }
  WriteLine(std::move(heading));
  for (int from = 0; from < model_.AaCount(); ++from) {
    std::string row = Label(from);
    for (int to = 0; to < model_.AaCount(); ++to) {
      row += ',';
      row += grid_.Text(from + 1, to + 1);
    }
    WriteLine(std::move(row));
  }
}

}  // namespace kelvara::capture
