#include "cli/SurveyCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <ostream>
#include <system_error>

#include "base/Fault.h"
#include "base/NumberFormat.h"
#include "base/NumberReading.h"
#include "cli/FileClash.h"
#include "cli/Quoted.h"
#include "cli/RecordedFiles.h"
#include "cli/SurveyText.h"
#include "platform/qt/PathText.h"
#include "report/CableLengths.h"
#include "survey/Survey.h"
#include "survey/SurveyReport.h"

namespace kelvara::cli {
namespace {

constexpr double kMostMetres = 1e6;

/// The RPN of an option in decimal, as the grid and the JSON results show it. A leading zero is
/// part of how they do.
std::optional<int> ReadRpn(const std::string& text) {
  int rpn = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, rpn);
  return error == std::errc() && stop == end && text[0] != '-' ? std::optional(rpn) : std::nullopt;
}

std::optional<double> ReadMetres(const std::string& text) {
  try {
    const double metres = base::ReadWholeNumber(text);
    return std::abs(metres) <= kMostMetres ? std::optional(metres) : std::nullopt;
  } catch (const base::Fault&) {
    return std::nullopt;
  }
}

/// Text that may name files, as the user is to see it.
std::string Utf8(const std::string& text) { return qt::MessageText(text).toStdString(); }

/// Complains if the file cannot be written.
bool WriteFile(const std::string& path, const std::string& text, const Streams& streams,
               const CommandMachine& machine) {
  try {
    machine.fileSystem.OpenForOutput(path)->Write(text);
    return true;
  } catch (const base::Fault& fault) {
    streams.Complain(fault.what());
    return false;
  }
}

}  // namespace

void SurveyCommand::AddTo(CLI::App& program) {
  CLI::App* command = program.add_subcommand(
      "survey",
      "Estimate the length of every antenna from all readings, with its uncertainty.\n"
      "Also lists the pairs of antennas that contradict the others, and the antennas to stand at\n"
      "next. The files are recorded text in the order given, or one file of JSON results.");
  command
      ->add_option("FILE", files_,
                   "Recorded beltpack text (- is standard input), or results of replay --json")
      ->type_name("");
  command->add_option("--compare", comparePath_, "List the antennas that changed since this file")
      ->type_name("FILE");
  command->add_option("--reference", reference_, "RPN of the antenna that lengths count from")
      ->type_name("RPN");
  command->add_option("--length", length_, "Known length of the reference")->type_name("METRES");
  command->add_option("--html", htmlPath_, "Write the survey report to this file")
      ->type_name("PATH");
  command
      ->add_option("--json", jsonPath_,
                   "Write the survey as JSON to this file (- is standard output)")
      ->type_name("PATH");
}

std::string SurveyCommand::Fault() const {
  if (files_.empty()) {
    return "a FILE is required";
  }
  if (length_ && !reference_) {
    return "--length needs --reference";
  }
  if (reference_ && !ReadRpn(*reference_)) {
    return "--reference: " + Quoted(*reference_) + " is not an RPN in decimal";
  }
  if (length_ && !ReadMetres(*length_)) {
    return "--length: " + Quoted(*length_) + " is not a number of metres up to " +
           base::FormatGeneral(kMostMetres);
  }
  if (comparePath_ == kStandardInput &&
      std::find(files_.begin(), files_.end(), kStandardInput) != files_.end()) {
    return "standard input can be read only once";
  }
  std::vector<std::string> inputs = files_;
  if (comparePath_) {
    inputs.push_back(*comparePath_);
  }
  std::erase(inputs, kStandardInput);
  std::vector<std::string> outputs;
  if (jsonPath_ && jsonPath_ != "-") {
    outputs.push_back(*jsonPath_);
  }
  if (htmlPath_) {
    outputs.push_back(*htmlPath_);
  }
  return FileClash(inputs, outputs);
}

ExitCode SurveyCommand::Run(const Streams& streams, const CommandMachine& machine) {
  if (const std::string fault = Fault(); !fault.empty()) {
    streams.Complain(fault);
    return ExitCode::WrongCommandLine;
  }
  SurveyInput input;
  ExitCode read = ReadSurveyInput(files_, streams, machine, input);
  SurveyInput older;
  if (read == ExitCode::Done && comparePath_) {
    read = ReadSurveyInput({*comparePath_}, streams, machine, older);
  }
  SurveyOutput output;
  if (read == ExitCode::Done) {
    read = Survey(input, comparePath_ ? &older : nullptr, streams, output);
  }
  if (read != ExitCode::Done) {
    return read;
  }
  if (!input.note.empty()) {
    streams.Complain(input.note);
  }
  // Files come first because the reader of standard output may stop reading.
  const bool written = WriteFiles(input, output, streams, machine);
  if (jsonPath_ == "-") {
    streams.out << SurveyJson(output);
  } else {
    PrintSurvey(output, streams.out);
  }
  const ExitCode printed = streams.FlushOutput();
  return written ? printed : ExitCode::Failed;
}

ExitCode SurveyCommand::Survey(const SurveyInput& input, const SurveyInput* older,
                               const Streams& streams, SurveyOutput& output) const {
  survey::SurveyOptions options;
  options.reportMetres = report::ReportedMetres(input.model);
  if (reference_) {
    options.reference = survey::AntennaWithRpn(input.model, *ReadRpn(*reference_));
    options.referenceMetres = length_ ? *ReadMetres(*length_) : 0.0;
    if (!options.reference) {
      streams.Complain("no antenna has the RPN " + *reference_);
      return ExitCode::Failed;
    }
  }
  output.survey = survey::MakeSurvey(input.model, options);
  if (input.isRecorded) {
    output.drift = survey::FindDrift(input.model);
  }
  if (older != nullptr) {
    output.changes = survey::CompareSurveys(survey::MakeSurvey(older->model), output.survey);
    if (output.changes->empty()) {
      streams.Complain("no antenna is in the main part of both " + Quoted(*comparePath_) +
                       " and this survey");
      return ExitCode::Failed;
    }
  }
  return ExitCode::Done;
}

bool SurveyCommand::WriteFiles(const SurveyInput& input, const SurveyOutput& output,
                               const Streams& streams, const CommandMachine& machine) const {
  bool written = true;
  if (htmlPath_) {
    std::string names;
    for (const std::string& name : files_) {
      names += (names.empty() ? "" : ", ") + (name == kStandardInput ? "standard input" : name);
    }
    const survey::SurveyReportContents contents{
        .model = input.model,
        .survey = output.survey,
        .older = Utf8(comparePath_.value_or("")),
        .changes = output.changes ? &*output.changes : nullptr,
        .drift = output.drift ? &*output.drift : nullptr,
        .source = Utf8(names),
        .date = Utf8(machine.dateFormat.ShortDate(machine.makeClock(1.0)->WallTime()))};
    written = WriteFile(*htmlPath_, survey::SurveyReportHtml(contents), streams, machine);
  }
  if (jsonPath_ && jsonPath_ != "-") {
    written = WriteFile(*jsonPath_, SurveyJson(output), streams, machine) && written;
  }
  return written;
}

}  // namespace kelvara::cli
