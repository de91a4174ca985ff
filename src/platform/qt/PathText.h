#pragma once

#include <QString>
#include <filesystem>
#include <string>
#include <string_view>

class QUrl;

/// Paths as the program keeps them, as 8-bit text, and their other forms. Every name that the
/// machine can hold converts back and forth unchanged.
///
/// On POSIX systems a path is the name's bytes. On Windows a path is text in the machine's
/// character set; each UTF-16 unit that it lacks is "?" and four upper-case hexadecimal digits. No
/// file name contains "?" there.
namespace kelvara::qt {

/// A path for an input field, or for another of Qt's functions that takes text.
QString QStringFromPath(std::string_view path);

/// The path that a user typed or chose, with the machine's separators. Restores what
/// `QStringFromPath` converted.
std::string PathFromQString(const QString& path);

/// The path that a file dialog returned as text and as a URL.
std::string ChosenPath(const QString& path, const QUrl& address);

/// A path, which may contain backslashes on every system, in the form that the machine's file
/// functions take.
std::filesystem::path MachinePath(std::string_view path);

/// Whether two paths in the machine's form are the same to it, when written in full: on Windows, in
/// any letter case.
bool IsSamePath(const std::filesystem::path& one, const std::filesystem::path& other);

/// The text of a message that may name paths, as the user is to see it.
QString MessageText(std::string_view text);

}  // namespace kelvara::qt
