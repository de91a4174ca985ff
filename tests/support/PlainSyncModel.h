#pragma once

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/PlainRfpsReader.h"

namespace kelvara::test {

/// A second, simple and slow implementation of the sync model. It shares no code with the engine.
class PlainSyncModel {
 public:
  struct Aa {
    int rpn = 0;
    int fps = 0;
    int fpn = 0;
  };
  struct Cell {
    long sum = 0;
    int count = 0;
    int max = -32767;
    int min = 32767;
  };

  /// Processes one report. Logs RPN and FPS in hexadecimal.
  void Process(const std::string& text) {
    const PlainReport report = PlainRfpsReader(text).Read();
    if (report.faulted) {
      ++beeps;
      return;
    }
    if (report.entries.empty()) {
      return;
    }
    const PlainEntry sync = report.entries.at(static_cast<std::size_t>(report.syncIndex));
    for (int index = static_cast<int>(report.entries.size()) - 1; index >= 0; --index) {
      const PlainEntry entry = report.entries.at(static_cast<std::size_t>(index));
      if (index != report.syncIndex) {
        Log(sync, entry);
      }
      const int from = FindOrAdd({sync.rpn, sync.fps, sync.fpn});
      const int to = from < 0 ? -1 : FindOrAdd({entry.rpn, entry.fps, sync.fpn});
      if (to < 0) {
        ++beeps;
        return;
      }
      if (from != to) {
        Cell& cell = cells[{from, to}];
        cell.sum += entry.phase;
        ++cell.count;
        cell.max = std::max(cell.max, entry.phase);
        cell.min = std::min(cell.min, entry.phase);
      }
    }
    ++reports;
  }

  std::vector<Aa> aas;
  int aaCount = 0;
  std::map<std::pair<int, int>, Cell> cells;
  std::vector<std::string> log;
  int reports = 0;
  int beeps = 0;

 private:
  void Log(const PlainEntry& sync, const PlainEntry& entry) {
    char line[64];
    std::snprintf(line, sizeof line, "%02X[%X]->%02X[%X]=%d", static_cast<unsigned>(sync.rpn),
                  static_cast<unsigned>(sync.fps), static_cast<unsigned>(entry.rpn),
                  static_cast<unsigned>(entry.fps), entry.phase);
    log.emplace_back(line);
  }

  /// The antenna's index, or -1 if the list is full.
  int FindOrAdd(const Aa& aa) {
    for (std::size_t index = 0; index < aas.size(); ++index) {
      if (aas[index].rpn == aa.rpn) {
        return static_cast<int>(index);
      }
    }
    if (aas.size() == 51) {
      aaCount = 52;
      return -1;
    }
    aas.push_back(aa);
    aaCount = static_cast<int>(aas.size());
    return aaCount - 1;
  }
};

}  // namespace kelvara::test
