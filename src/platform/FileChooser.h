#pragma once

#include <optional>
#include <string>

namespace kelvara::platform {

enum class FileChooserKind {
  Open,           ///< A name to open, which need not exist yet.
  Save,           ///< A name to save to, in a folder that must exist; no overwrite question.
  SaveConfirmed,  ///< A name to save to; asks before an existing file is chosen.
};

/// What a file chooser shows.
struct FileChooserRequest {
  FileChooserKind kind;
  std::string title;
  std::string filter;         ///< Pairs of description and pattern, each followed by "|".
  std::string initialFolder;  ///< Empty to let the desktop choose.
  std::string initialName;
};

/// The desktop's file choosers. A new name that is typed without a suffix gets the suffix of the
/// first pattern, "~/" at its beginning is the user's home folder, and a relative name is in the
/// folder that the chooser shows.
class FileChooser {
 public:
  virtual ~FileChooser() = default;

  /// Shows the chooser and returns the full path chosen, or nothing if the user cancels.
  virtual std::optional<std::string> Choose(const FileChooserRequest& request) = 0;
};

}  // namespace kelvara::platform
