#include "platform/widgets/QtFileChooser.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QStringList>

#include "platform/qt/QtFileSystem.h"
#include "platform/qt/Text.h"
#include "platform/widgets/QtMessageBoxes.h"

namespace kelvara::widgets {
namespace {

using platform::FileChooserKind;

/// "Text (*.txt)|*.txt|" to the desktop's "Text (*.txt)"; a description that does not show its
/// pattern gets it.
QStringList NameFilters(const std::string& filter) {
  const QStringList parts = qt::ToQString(filter).split(u'|', Qt::SkipEmptyParts);
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const bool showsPattern = parts[i].contains(u'(' + parts[i + 1] + u')');
    filters += showsPattern ? parts[i] : parts[i] + QStringLiteral(" (") + parts[i + 1] + u')';
  }
  return filters;
}

}  // namespace

std::optional<std::string> QtFileChooser::Choose(const platform::FileChooserRequest& request) {
  QFileDialog dialog(QApplication::activeWindow(), qt::ToQString(request.title));
  dialog.setObjectName(QStringLiteral("CommonDialog1"));
  dialog.setFileMode(QFileDialog::AnyFile);
  // A name that does not exist yet may be typed in every kind; the desktop's "open" choosers refuse
  // such names, so all are of its "save" kind, and only one of them asks before overwriting.
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setOption(QFileDialog::DontConfirmOverwrite,
                   request.kind != FileChooserKind::SaveConfirmed);
  if (request.kind == FileChooserKind::Open) {
    dialog.setLabelText(QFileDialog::Accept, QFileDialog::tr("&Open"));
  }
  dialog.setNameFilters(NameFilters(request.filter));
  if (!request.initialFolder.empty()) {
    dialog.setDirectory(qt::MachinePath(request.initialFolder));
  }
  if (!request.initialName.empty()) {
    dialog.selectFile(qt::MachinePath(request.initialName));
  }
  while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
    const QString chosen = dialog.selectedFiles().constFirst();
    const QFileInfo folder(QFileInfo(chosen).path());
    if (request.kind != FileChooserKind::Save || folder.isDir()) {
      return qt::ToText(chosen);
    }
    QtMessageBoxes().Show("There is no folder " + qt::ToText(folder.filePath()) + ".",
                          request.title, platform::MessageIcon::Exclamation,
                          platform::MessageButtons::Ok);
  }
  return std::nullopt;
}

}  // namespace kelvara::widgets
