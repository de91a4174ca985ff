#pragma once

#include <QLabel>

namespace kelvara::app {

/// A label whose plain text uses as many lines as its width needs, up to six. A word that is too
/// long for a line, such as a path, is broken; a text that is longer than six lines ends in an
/// ellipsis and is whole in the tool tip.
class WrappedText : public QLabel {
  Q_OBJECT

 public:
  explicit WrappedText(QWidget* parent);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  /// The text cut into the lines of a width.
  QStringList Lines(int width) const;
};

}  // namespace kelvara::app
