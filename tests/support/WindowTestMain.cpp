#include <gtest/gtest.h>

#include <QApplication>
#include <QCursor>
#include <QScreen>
#include <QStyleFactory>
#include <cstdio>

namespace {

/// Prints Qt's messages, except those about what the offscreen platform cannot do.
void PrintMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/,
                  const QString& message) {
  if (!message.startsWith(QStringLiteral("This plugin does not support"))) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(message));
  }
}

}  // namespace

/// Runs window tests on the screen set by the build, in a style that every machine has. Fails if no
/// test is selected, since such a run would prove nothing.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", KELVARA_SCREEN);
  qInstallMessageHandler(PrintMessage);
  testing::InitGoogleTest(&argc, argv);
  // The tests operate Qt's own file choosers.
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  const QApplication application(argc, argv);
  // On a real screen, the pointer would enter each window that opens below it.
  QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  const int result = RUN_ALL_TESTS();
  return testing::UnitTest::GetInstance()->test_to_run_count() == 0 ? 1 : result;
}
