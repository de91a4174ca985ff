#include "cli/ProgressLine.h"

#include <ostream>
#include <utility>

#include "platform/qt/Console.h"

namespace kelvara::cli {
namespace {

constexpr std::size_t kLargeFile = std::size_t{16} << 20U;

}  // namespace

ProgressLine::ProgressLine(std::string name, std::size_t size, const Streams& streams)
    : streams_(streams),
      name_(std::move(name)),
      size_(size),
      shown_(size > kLargeFile && streams.errIsTerminal) {}

ProgressLine::~ProgressLine() {
  if (shown_) {
    streams_.err << kWipeLine << std::flush;
  }
}

void ProgressLine::Advance(std::size_t bytes) {
  if (!shown_) {
    return;
  }
  done_ += bytes;
  const int percent = static_cast<int>(done_ * 100 / size_);
  if (percent != percentShown_) {
    percentShown_ = percent;
    streams_.err << '\r' << qt::ConsoleText(name_) << ": " << percent << " %" << std::flush;
  }
}

}  // namespace kelvara::cli
