#include "sessions/RecentSessions.h"

#include <algorithm>
#include <string_view>

#include "base/Fault.h"
#include "sessions/Journal.h"

namespace kelvara::sessions {
namespace {

using Entry = platform::SessionFolder::Entry;

/// "2026-11-21 11:28" of a journal that is named "2026-11-21-112800.trace".
std::string StartText(std::string_view name) {
  std::string text(name.substr(0, 10));
  text += ' ';
  text += name.substr(11, 2);
  text += ':';
  text += name.substr(13, 2);
  return text;
}

std::string Amount(int number, const char* one, const char* several) {
  return std::to_string(number) + (number == 1 ? one : several);
}

}  // namespace

void RecentSessions::List() {
  sessions_.clear();
  entries_.clear();
  uncounted_.clear();
  counting_ = nullptr;
  for (const Entry& entry : Journals(folder_)) {
    try {
      if (!folder_.Open(entry.name)) {
        continue;
      }
    } catch (const base::Fault&) {
      // Reading it tells what is wrong.
    }
    const auto known = std::find_if(counted_.begin(), counted_.end(), [&](const Counted& counted) {
      return counted.entry.name == entry.name && counted.entry.size == entry.size;
    });
    if (known == counted_.end()) {
      uncounted_.insert(uncounted_.begin(), sessions_.size());
      sessions_.push_back({folder_.PathOf(entry.name), StartText(entry.name)});
    } else {
      sessions_.push_back(known->session);
    }
    entries_.push_back(entry);
  }
}

bool RecentSessions::CountOn() {
  if (uncounted_.empty()) {
    return false;
  }
  try {
    if (!counting_) {
      counting_ = std::make_unique<ReviewedSession>(fileSystem_, sessions_[uncounted_.back()].path);
    }
    if (counting_->ReadOn()) {
      return true;
    }
    const bool canOpen = counting_->Antennas() > 0;
    Finish(canOpen ? Amount(counting_->Reports(), " report, ", " reports, ") +
                         Amount(counting_->Antennas(), " antenna", " antennas")
                   : "no reports",
           canOpen);
  } catch (const base::Fault&) {
    Finish("cannot be read", false);
  }
  return !uncounted_.empty();
}

void RecentSessions::Finish(const std::string& counts, bool canOpen) {
  const std::size_t index = uncounted_.back();
  uncounted_.pop_back();
  counting_ = nullptr;
  sessions_[index].text += ", " + counts;
  sessions_[index].canOpen = canOpen;
  counted_.push_back({entries_[index], sessions_[index]});
}

}  // namespace kelvara::sessions
