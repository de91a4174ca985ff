#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argumentCount, char** arguments) {
  ::testing::InitGoogleTest(&argumentCount, arguments);
  // The message bus is read through the library's own loop.
  const QCoreApplication application(argumentCount, arguments);
  return RUN_ALL_TESTS();
}
