#include <gtest/gtest.h>
#include <windows.h>

#include <QDate>
#include <QString>
#include <array>

#include "platform/qt/QtDateFormat.h"
#include "platform/qt/Text.h"

namespace kelvara::qt {
namespace {

/// 5 April 2023, 17:03:09.
constexpr SYSTEMTIME kMoment{2023, 4, 3, 5, 17, 3, 9, 0};
constexpr int kSecondOfDay = 17 * 3600 + 3 * 60 + 9;

platform::DateTime WallTime() {
  const auto days = static_cast<double>(QDate(1970, 1, 1).daysTo(QDate(2023, 4, 5)));
  return days + kSecondOfDay / platform::kSecondsPerDay;
}

std::string SystemDate() {
  std::array<wchar_t, 80> text{};
  ::GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &kMoment, nullptr, text.data(),
                    static_cast<int>(text.size()), nullptr);
  return ToText(QString::fromWCharArray(text.data()));
}

std::string SystemTime() {
  std::array<wchar_t, 80> text{};
  ::GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &kMoment, nullptr, text.data(),
                    static_cast<int>(text.size()));
  return ToText(QString::fromWCharArray(text.data()));
}

TEST(DateFormatTest, IsTheOneThatTheUserHasChosenInTheSystem) {
  ASSERT_FALSE(SystemDate().empty());
  ASSERT_FALSE(SystemTime().empty());
  EXPECT_EQ(QtDateFormat().ShortDate(WallTime()), SystemDate());
  EXPECT_EQ(QtDateFormat().General(WallTime()), SystemDate() + " " + SystemTime());
}

}  // namespace
}  // namespace kelvara::qt
