#pragma once

#include <QDialog>

namespace kelvara::help {

/// The About box: the program's icon, title and version, and who makes it. Modal; "&OK", Esc and
/// its frame close it.
class FrmAbout : public QDialog {
  Q_OBJECT

 public:
  explicit FrmAbout(QWidget* parent);
};

}  // namespace kelvara::help
