#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/Fault.h"
#include "capture/LogBox.h"
#include "platform/Beeper.h"
#include "platform/Clock.h"
#include "platform/DateFormat.h"
#include "platform/EventPump.h"
#include "platform/FileSystem.h"
#include "platform/Machine.h"
#include "platform/MessageBoxes.h"

/// Test doubles for the machine.
namespace kelvara::test {

class CountingBeeper : public platform::Beeper {
 public:
  void Beep() override { ++count; }

  int count = 0;
};

/// A clock that only moves when the test advances it.
class ManualClock : public platform::Clock {
 public:
  platform::DateTime Now() const override { return now; }
  platform::DateTime WallTime() const override { return wall; }
  std::int64_t UtcMilliseconds() const override { return std::llround(wall * kDay); }
  platform::DateTime LocalTime(std::int64_t utcMilliseconds) const override {
    return static_cast<double>(utcMilliseconds) / kDay;
  }
  std::int64_t TickCount() const override { return ticks; }

  void Advance(double seconds) {
    now += platform::Span(seconds);
    wall += platform::Span(seconds);
    ticks += static_cast<std::int64_t>(seconds * 1000);
  }

  platform::DateTime now = 20000.0;
  platform::DateTime wall = 20000.0;
  std::int64_t ticks = 0;

 private:
  static constexpr double kDay = platform::kSecondsPerDay * 1000.0;
};

/// Dates whose text shows the requested form and time.
class PlainDateFormat : public platform::DateFormat {
 public:
  std::string ShortDate(platform::DateTime wallTime) const override {
    return "day" + std::to_string(static_cast<std::int64_t>(wallTime));
  }
  std::string General(platform::DateTime wallTime) const override {
    const auto seconds = std::llround(wallTime * platform::kSecondsPerDay);
    return "second" + std::to_string(seconds);
  }
};

/// Records every box and returns `answer`.
class RecordingMessageBoxes : public platform::MessageBoxes {
 public:
  struct Box {
    std::string text;
    std::string title;
    platform::MessageIcon icon;
    platform::MessageButtons buttons;
  };

  platform::MessageAnswer Show(std::string_view text, std::string_view title,
                               platform::MessageIcon icon,
                               platform::MessageButtons buttons) override {
    boxes.push_back({std::string(text), std::string(title), icon, buttons});
    return answer;
  }

  std::vector<Box> boxes;
  platform::MessageAnswer answer = platform::MessageAnswer::Ok;
};

/// Keeps files in memory. A path in `unopenable` cannot be opened. If `writesLeft` is set, that
/// many more writes succeed, then writes fail.
class MemoryFileSystem : public platform::FileSystem {
 public:
  std::unique_ptr<platform::OutputFile> OpenForOutput(const std::string& path) override {
    CheckOpen(path);
    files[path].clear();
    return std::make_unique<Output>(*this, path);
  }
  std::unique_ptr<platform::OutputFile> OpenForAppend(const std::string& path) override {
    CheckOpen(path);
    files[path];
    return std::make_unique<Output>(*this, path);
  }
  std::unique_ptr<platform::InputFile> OpenForInput(const std::string& path) override {
    CheckOpen(path);
    const auto found = files.find(path);
    if (found == files.end()) {
      throw base::Fault(base::FaultKind::File, "no file " + path);
    }
    return std::make_unique<Input>(found->second);
  }

  std::map<std::string, std::string> files;
  std::map<std::string, bool> unopenable;
  std::optional<int> writesLeft;
  /// Runs after each write.
  std::function<void()> onWrite;
  int openFiles = 0;

 private:
  class Output : public platform::OutputFile {
   public:
    Output(MemoryFileSystem& owner, std::string path) : owner_(owner), path_(std::move(path)) {
      ++owner_.openFiles;
    }
    ~Output() override { --owner_.openFiles; }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void Write(std::string_view bytes) override {
      if (owner_.writesLeft && (*owner_.writesLeft)-- <= 0) {
        throw base::Fault(base::FaultKind::File, "cannot write " + path_);
      }
      owner_.files[path_] += bytes;
      if (owner_.onWrite) {
        owner_.onWrite();
      }
    }

   private:
    MemoryFileSystem& owner_;
    std::string path_;
  };

  /// What is written to the file while it is open can be read.
  class Input : public platform::InputFile {
   public:
    explicit Input(const std::string& text) : text_(text) {}
    std::size_t Read(std::span<char> buffer) override {
      position_ = std::min(position_, text_.size());
      const std::size_t got = text_.copy(buffer.data(), buffer.size(), position_);
      position_ += got;
      return got;
    }
    std::size_t Size() const override { return text_.size(); }
    void Seek(std::uint64_t place) override {
      position_ = std::min<std::size_t>(place, text_.size());
    }

   private:
    const std::string& text_;
    std::size_t position_ = 0;
  };

  void CheckOpen(const std::string& path) const {
    if (unopenable.count(path) > 0) {
      throw base::Fault(base::FaultKind::File, "cannot open " + path);
    }
  }
};

class RecordingLogBox : public capture::LogBox {
 public:
  bool IsShown() const override { return shown; }
  void Append(std::string_view added) override {
    if (shown) {
      text += added;
    }
  }
  void Clear() override { text.clear(); }

  bool shown = true;
  std::string text;
};

/// Runs `onYield`, if set, each time events may run.
class ScriptedEventPump : public platform::EventPump {
 public:
  bool ProcessEvents() override {
    ++yields;
    if (onYield) {
      onYield();
    }
    return !ending;
  }
  void End() override { ending = true; }

  std::function<void()> onYield;
  int yields = 0;
  bool ending = false;
};

/// A machine made of test doubles.
template <class Files = MemoryFileSystem, class Boxes = RecordingMessageBoxes>
struct MachineDoubles {
  ManualClock clock;
  PlainDateFormat dateFormat;
  Files files;
  CountingBeeper beeper;
  Boxes boxes;
  ScriptedEventPump events;
  platform::Machine machine{.clock = clock,
                            .dateFormat = dateFormat,
                            .fileSystem = files,
                            .beeper = beeper,
                            .messageBoxes = boxes,
                            .events = events};
};

}  // namespace kelvara::test
