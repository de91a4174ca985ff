#include "cli/ConvertCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <ostream>
#include <string_view>
#include <vector>

#include "base/Fault.h"
#include "convert/Converter.h"

namespace kelvara::cli {
namespace {

using convert::Field;

struct FieldName {
  Field field;
  std::string_view name;
};

/// The names of the converter's fields on the command line.
constexpr std::array<FieldName, 8> kFieldNames{{{Field::TextRfps, "rfps"},
                                                {Field::TextAASync, "aasync"},
                                                {Field::TextMetres, "metres"},
                                                {Field::TextOhms, "ohms"},
                                                {Field::TextDelay, "delay"},
                                                {Field::TextRpn, "rpn"},
                                                {Field::TextRpnDec, "rpndec"},
                                                {Field::TextPortNum, "port"}}};

std::vector<std::string> Names() {
  std::vector<std::string> names;
  for (const FieldName& fieldName : kFieldNames) {
    names.emplace_back(fieldName.name);
  }
  return names;
}

Field FieldNamed(std::string_view name) {
  return std::find_if(kFieldNames.begin(), kFieldNames.end(),
                      [&](const FieldName& fieldName) { return fieldName.name == name; })
      ->field;
}

std::string_view NameOf(Field field) {
  return std::find_if(kFieldNames.begin(), kFieldNames.end(),
                      [&](const FieldName& fieldName) { return fieldName.field == field; })
      ->name;
}

}  // namespace

void ConvertCommand::AddTo(CLI::App& program) {
  CLI::App* command = program.add_subcommand(
      "convert",
      "Convert a value between RFPS phase, AA Sync units, metres, ohms and delay, or between an\n"
      "antenna's RPN and port number. Prints the other fields, one a line.");
  command
      ->add_option("FIELD", field_,
                   "rfps, aasync, metres, ohms, delay (microseconds), rpn (hexadecimal), rpndec or "
                   "port")
      ->check(CLI::IsMember(Names()))
      ->type_name("");
  value_ =
      command->add_option("VALUE", text_, "The value, as typed into the converter")->type_name("");
}

ExitCode ConvertCommand::Run(const Streams& streams, const CommandMachine& /*machine*/) {
  if (value_->count() == 0) {
    streams.Complain("a FIELD and a VALUE are required");
    return ExitCode::WrongCommandLine;
  }
  try {
    convert::Converter converter;
    std::string lines;
    for (const auto& [field, text] : converter.Update(FieldNamed(field_), text_)) {
      lines += NameOf(field);
      lines += ' ';
      lines += text;
      lines += '\n';
    }
    streams.out << lines;
  } catch (const base::Fault& fault) {
    streams.Complain("cannot convert " + field_ + " \"" + text_ + "\": " + fault.what());
    return ExitCode::Failed;
  }
  return streams.FlushOutput();
}

}  // namespace kelvara::cli
