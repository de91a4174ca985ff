#pragma once

#include <QDialog>
#include <map>

#include "convert/Converter.h"
#include "convert/ConverterFields.h"
#include "platform/Beeper.h"
#include "platform/widgets/DialogManners.h"

class QGridLayout;
class QLineEdit;

namespace kelvara::convert {

/// The converter's window: a field for each unit and each form of an antenna's identity, with a
/// button that updates the other fields from it. It is modeless and keeps nothing when it is
/// closed.
class FrmConvert : public QDialog {
  Q_OBJECT

 public:
  FrmConvert(platform::Beeper& beeper, QWidget* parent);

  /// Opens the window with empty fields. If it is already open, it comes to the front unchanged.
  void Open() { widgets::ShowInFront(*this); }  // NOLINT(bugprone-virtual-near-miss): not modal

 protected:
  /// In most fields Enter runs the Update; the key event is passed on.
  void keyPressEvent(QKeyEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QWidget* AddFrame(const ConverterFrame& frame);
  void AddField(const ConverterField& field, QWidget& frame, QGridLayout& layout);
  void FitToFont();

  /// Updates the other fields from this one. A text that cannot be used beeps once and changes
  /// nothing.
  void UpdateFrom(Field source);

  /// Does the same from the field that has the focus, if Enter updates from it.
  void UpdateFromFocusedField();

  void Form_Unload();

  QLineEdit*& EditOf(Field field) { return edits_[field]; }

  platform::Beeper& beeper_;
  Converter converter_;
  std::map<Field, QLineEdit*> edits_;
  int labelCount_ = 0;
};

}  // namespace kelvara::convert
