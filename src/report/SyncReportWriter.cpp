#include "report/SyncReportWriter.h"

#include <initializer_list>
#include <utility>

#include "base/NumberReading.h"
#include "help/ProgramTitle.h"
#include "report/CableLengths.h"
#include "sync/DectRpn.h"
#include "sync/HexPad.h"

namespace kelvara::report {
namespace {

/// How much text is held back before it is written in one piece.
constexpr std::size_t kPendingBytes = 32768;

constexpr std::string_view kTableEnd1 = "</tbody></p>";
constexpr std::string_view kTableEnd2 = "</table></p>";
constexpr std::string_view kRuler = "<hr size = 1>";
constexpr std::string_view kRowStart = "<tr>";
constexpr std::string_view kRowEnd = "</tr>";

}  // namespace

void SyncReportWriter::WriteLine(std::initializer_list<std::string_view> pieces) {
  for (const std::string_view piece : pieces) {
    pending_ += piece;
  }
  pending_ += "\r\n";
  if (pending_.size() >= kPendingBytes) {
    Flush();
  }
}

void SyncReportWriter::Flush() {
  const std::string bytes = std::exchange(pending_, {});
  if (!bytes.empty()) {
    file_->Write(bytes);
  }
}

void SyncReportWriter::WriteHead() {
  WriteLine(
      {"<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\">\r\n"
       "<html>\r\n"
       "<head>\r\n"
       "<meta name=Generator content=\"",
       help::ProgramTitleAndVersion(),
       ">\r\n"
       "<title>Active Antenna Kelvara Report</title>\r\n"
       "</head>\r\n"
       "<body bgcolor=\"#ffffff\" text=\"#000000\">\r\n"
       "<font size=+2><b>Active Antenna DECT Synchronisation Report</b></font>\r\n",
       kRuler});
}

void SyncReportWriter::WriteSummary(std::string_view fileName, std::string_view site,
                                    std::string_view tester, std::string_view notes) {
  WriteLine(
      {"<p>\r\n"
       "<font size=+1><i><b>Report Summary</b></i></font><br><br>\r\n"
       "<table border=1 cellPadding=5 cellSpacing=0>\r\n"
       "<tbody>\r\n"
       "<tr>\r\n"
       "<td><b>Filename</b></td>"});
  const std::initializer_list<std::pair<std::string_view, std::string_view>> valuesAndNextTitles = {
      {fileName, "Date"}, {today_, "Site"}, {site, "Tester"}, {tester, "Notes"}};
  for (const auto& [value, nextTitle] : valuesAndNextTitles) {
    WriteLine({"<td>", value, "</td>\r\n</tr>\r\n<tr>\r\n<td><b>", nextTitle, "</b></td>"});
  }
  WriteLine({"<td>", base::TrimBlanks(notes),
             "</td>\r\n"
             "</tr>\r\n"
             "</tbody>\r\n"
             "</table>\r\n"
             "</p>\r\n",
             kRuler});
}

void SyncReportWriter::WriteCableLengths(std::span<const std::int16_t> sortedRpns) {
  const CableLengths lengths(model_);
  WriteLine(
      {"<p>\r\n"
       "<font size=+1><i><b>Active Antenna Cable Lengths</b></i></font><br><br>\r\n"
       "<table border=1 cellPadding=5 cellSpacing=0>\r\n"
       "<tbody>\r\n"
       "<tr>\r\n"
       "<td><b>AA FPN(Hex)</b></td>\r\n"
       "<td><b>AA FPS(Hex)</b></td>\r\n"
       "<td><b>AA RPN(Dec)</b></td>\r\n"
       "<td><b>AA Port Num</b></td>\r\n"
       "<td><b>Cable Length(m)</b></td>\r\n"
       "</tr>"});
  for (const std::int16_t rpn : sortedRpns) {
    const int aa = FirstAaWithRpn(rpn);
    WriteCableLengthRow(aa, lengths.Metres(aa));
  }
  WriteLine({kTableEnd1});
  WriteLine({kTableEnd2});
  WriteLine({kRuler});
}

void SyncReportWriter::WriteCableLengthRow(int aa, std::int32_t metres) {
  sync::DectRpn identity;
  identity.SetRpn(model_.AaRpn(aa));
  WriteLine({kRowStart});
  for (const std::string& value :
       {sync::HexPad(model_.AaFpn(aa), 2), sync::HexPad(model_.AaFps(aa), 2),
        std::to_string(identity.iRpn()), std::to_string(identity.iPortNum()),
        std::to_string(metres)}) {
    WriteLine({"<td width=75>", value, "</td>"});
  }
  WriteLine({kRowEnd});
}

void SyncReportWriter::WriteRelativePhases() {
  WriteLine(
      {"<p>\r\n"
       "<font size=+1><i><b>Relative Phase Data</b></i></font><br><br>\r\n"
       "<table border=1 cellPadding=5 cellSpacing=0> \r\n"
       "<tbody>"});
  const int count = model_.AaCount();
  WriteLine({kRowStart});
  WriteLine({"<td width=40><b>RPN</b></td>"});
  for (int aa = 0; aa < count; ++aa) {
    WriteColumnHeader(aa);
  }
  WriteLine({kRowEnd});
  for (int from = 0; from < count; ++from) {
    WriteLine({kRowStart});
    WriteRowHeader(from);
    for (int to = 0; to < count; ++to) {
      WritePhase(from, to);
    }
    WriteLine({kRowEnd});
  }
  WriteLine({kTableEnd1});
  WriteLine({kTableEnd2});
}

void SyncReportWriter::WriteColumnHeader(int aa) {
  WriteLine({"<td width=40><b><b>", HeaderText(aa), "</b></td>"});
}

void SyncReportWriter::WriteRowHeader(int aa) {
  WriteLine({"<td width=40><b>", HeaderText(aa), "</b></td>"});
}

void SyncReportWriter::WritePhase(int from, int to) {
  if (from == to) {
    WriteLine({"<td bgcolor=\"#c0c0c0\" width=40>&nbsp</td>"});
    return;
  }
  const sync::PhaseCell& cell = model_.Cell(from, to);
  const std::string phase = cell.Count > 0 ? std::to_string(MeanPhase(cell)) : "&nbsp";
  WriteLine({"<td width=40>", phase, "</td>"});
}

void SyncReportWriter::WriteFooter() {
  constexpr std::string_view kStart =
      "<p><hr size = 1>\r\n"
      "<font size=-1><i>Generated by ";
  constexpr std::string_view kEnd =
      "</i></font>\r\n"
      "</body>\r\n"
      "</html>";
  WriteLine({kStart, help::ProgramTitleAndVersion(), " on ", today_, kEnd});
}

int SyncReportWriter::FirstAaWithRpn(std::int16_t rpn) const {
  int aa = 0;
  while (model_.AaRpn(aa) != rpn) {
    ++aa;
  }
  return aa;
}

std::string SyncReportWriter::HeaderText(int aa) const {
  std::string text = std::to_string(model_.AaRpn(aa));
  if (fpsShown_) {
    text += " [" + sync::HexPad(model_.AaFps(aa), 1) + "]";
  }
  return text;
}

}  // namespace kelvara::report
