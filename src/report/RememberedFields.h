#pragma once

#include <string>

#include "platform/FileSystem.h"

namespace kelvara::report {

/// What the report dialog asks for besides the file name.
struct ReportFields {
  std::string site;
  std::string tester;
  bool showReport = true;
  std::string notes;  ///< Its lines are separated by CR LF.
};

/// The report dialog's fields, kept between runs in the file "rfields.ds" beside the program. Its
/// lines end in CR LF: the site, the tester, the Show Report state as a number with a blank on
/// either side, then the notes.
class RememberedFields {
 public:
  RememberedFields(platform::FileSystem& fileSystem, const std::string& programFolder);

  /// Reads the whole file into the fields, or writes it from them if it does not exist. A failure
  /// ends the reading silently: the fields read before it are kept, the others stay as they were.
  void LoadOrCreate(ReportFields& fields);

  /// Writes the file, without the blanks at either end of the notes. A failure ends the writing
  /// silently.
  void Save(const ReportFields& fields);

  const std::string& Path() const { return path_; }

 private:
  void Load(ReportFields& fields);

  platform::FileSystem& fileSystem_;
  std::string path_;
};

}  // namespace kelvara::report
