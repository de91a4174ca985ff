#include "platform/widgets/QtFileChooser.h"

#include <QApplication>
#include <QFileDialog>
#include <QStringList>
#include <filesystem>
#include <utility>

#include "platform/DirectoryOf.h"
#include "platform/qt/PathText.h"
#include "platform/qt/Text.h"
#include "platform/widgets/QtMessageBoxes.h"

namespace kelvara::widgets {
namespace {

using platform::FileChooserKind;

/// Converts "Text (*.txt)|*.txt|" to the desktop's "Text (*.txt)". A description that does not show
/// its pattern gets it appended.
QStringList NameFilters(const std::string& filter) {
  const QStringList parts = qt::ToQString(filter).split(u'|', Qt::SkipEmptyParts);
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const bool showsPattern = parts[i].contains(u'(' + parts[i + 1] + u')');
    filters += showsPattern ? parts[i] : parts[i] + QStringLiteral(" (") + parts[i + 1] + u')';
  }
  return filters;
}

/// The suffix of the first filter, such as "html"; empty if its pattern is not of one suffix.
QString FirstSuffix(const std::string& filter) {
  const QString pattern = qt::ToQString(filter).section(u'|', 1, 1).section(u';', 0, 0);
  const QString suffix = pattern.startsWith(QStringLiteral("*.")) ? pattern.mid(2) : QString();
  return suffix.contains(u'*') || suffix.contains(u'?') ? QString() : suffix;
}

/// A path for the dialog, with the machine's separators.
QString DialogPath(const std::string& path) {
  return qt::QStringFromPath(path).replace(u'\\', u'/');
}

/// A new name gets the suffix; an existing file keeps the name it has.
std::string WithSuffixUnlessExisting(std::string path, const QString& suffix) {
  const std::filesystem::path machinePath = qt::MachinePath(path);
  std::error_code ignored;
  if (!suffix.isEmpty() && !machinePath.has_extension() &&
      !std::filesystem::exists(machinePath, ignored)) {
    path += "." + qt::ToText(suffix);
  }
  return path;
}

}  // namespace

std::optional<std::string> QtFileChooser::Choose(const platform::FileChooserRequest& request) {
  QFileDialog dialog(QApplication::activeWindow(), qt::ToQString(request.title));
  dialog.setObjectName(QStringLiteral("CommonDialog1"));
  dialog.setFileMode(QFileDialog::AnyFile);
  // Every kind accepts a name that does not exist yet. The desktop's "open" choosers refuse such
  // names, so all are "save" choosers, and only one of them asks before overwriting.
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setOption(QFileDialog::DontConfirmOverwrite,
                   request.kind != FileChooserKind::SaveConfirmed);
  if (request.kind == FileChooserKind::Open) {
    dialog.setLabelText(QFileDialog::Accept, QFileDialog::tr("&Open"));
  }
  dialog.setNameFilters(NameFilters(request.filter));
  if (request.kind != FileChooserKind::Open) {
    dialog.setDefaultSuffix(FirstSuffix(request.filter));
  }
  if (!request.initialFolder.empty()) {
    dialog.setDirectory(DialogPath(request.initialFolder));
  }
  if (!request.initialName.empty()) {
    dialog.selectFile(DialogPath(request.initialName));
  }
  while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
    std::string chosen =
        qt::ChosenPath(dialog.selectedFiles().constFirst(), dialog.selectedUrls().constFirst());
    if (request.kind == FileChooserKind::Open) {
      chosen = WithSuffixUnlessExisting(std::move(chosen), FirstSuffix(request.filter));
    }
    std::error_code ignored;
    if (request.kind != FileChooserKind::Save ||
        std::filesystem::is_directory(qt::MachinePath(chosen).parent_path(), ignored)) {
      return chosen;
    }
    QtMessageBoxes().Show("There is no folder " + platform::DirectoryOfOrEmpty(chosen) + ".",
                          request.title, platform::MessageIcon::Exclamation,
                          platform::MessageButtons::Ok);
  }
  return std::nullopt;
}

}  // namespace kelvara::widgets
