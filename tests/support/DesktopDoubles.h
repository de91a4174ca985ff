#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Fault.h"
#include "platform/Desktop.h"
#include "platform/DocumentOpener.h"
#include "platform/FileChooser.h"
#include "platform/SettingsStore.h"
#include "support/Doubles.h"

/// Test doubles for the desktop and its settings.
namespace kelvara::test {

/// Keeps the settings in memory. If `writable` is false, every write throws a file fault.
class ScriptedSettingsStore : public platform::SettingsStore {
 public:
  std::string Read(std::string_view key, std::string_view defaultText) const override {
    const auto found = values.find(key);
    return found == values.end() ? std::string(defaultText) : found->second;
  }

  void Write(std::string_view key, std::string_view text) override {
    if (!writable) {
      throw base::Fault(base::FaultKind::File, "cannot write the settings");
    }
    values[std::string(key)] = text;
  }

  /// A value; empty if it is absent.
  std::string Value(std::string_view key) const { return Read(key, ""); }
  void SetValue(std::string_view key, std::string_view text) { values[std::string(key)] = text; }

  std::map<std::string, std::string, std::less<>> values;
  bool writable = true;
};

/// Records every request and returns `answer`; no answer means Cancel. If `failing` is true, the
/// chooser throws a fault.
class ScriptedFileChooser : public platform::FileChooser {
 public:
  std::optional<std::string> Choose(const platform::FileChooserRequest& request) override {
    requests.push_back(request);
    if (failing) {
      throw base::Fault(base::FaultKind::File, "no chooser");
    }
    return answer;
  }

  std::vector<platform::FileChooserRequest> requests;
  std::optional<std::string> answer;
  bool failing = false;
};

/// Records what should be opened and returns `answer`.
class RecordingDocumentOpener : public platform::DocumentOpener {
 public:
  bool OpenDocument(const std::string& path) override {
    documents.push_back(path);
    return answer;
  }
  bool OpenAddress(const std::string& address) override {
    addresses.push_back(address);
    return answer;
  }

  std::vector<std::string> documents;
  std::vector<std::string> addresses;
  bool answer = true;
};

/// A desktop made of test doubles.
template <class Files = MemoryFileSystem, class Boxes = RecordingMessageBoxes,
          class Chooser = ScriptedFileChooser>
struct DesktopDoubles : MachineDoubles<Files, Boxes> {
  explicit DesktopDoubles(std::string programFolder = "C:\\Program")
      : desktop{this->machine, chooser, opener, store, std::move(programFolder)} {}

  Chooser chooser;
  RecordingDocumentOpener opener;
  ScriptedSettingsStore store;
  platform::Desktop desktop;
};

}  // namespace kelvara::test
