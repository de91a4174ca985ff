#include "platform/widgets/FixedPitchFont.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontInfo>
#include <QFontMetricsF>

namespace kelvara::test {
namespace {

constexpr auto kWanted = "Courier New";

/// Makes the machine substitute a proportional font for Courier New for as long as it exists.
class ProportionalSubstitute {
 public:
  ProportionalSubstitute() {
    QFont::insertSubstitution(QString::fromLatin1(kWanted),
                              QFontInfo(QApplication::font()).family());
  }
  ~ProportionalSubstitute() { QFont::removeSubstitutions(QString::fromLatin1(kWanted)); }
  ProportionalSubstitute(const ProportionalSubstitute&) = delete;
  ProportionalSubstitute& operator=(const ProportionalSubstitute&) = delete;
};

void ExpectOneWidth(const QFont& font) {
  const QFontMetricsF metrics(font);
  EXPECT_TRUE(QFontInfo(font).fixedPitch()) << QFontInfo(font).family().toStdString();
  for (const char character : {'i', 'W', ' ', '-', '0'}) {
    EXPECT_DOUBLE_EQ(metrics.horizontalAdvance(QLatin1Char(character)),
                     metrics.horizontalAdvance(u'm'))
        << character;
  }
}

TEST(FixedPitchFontTest, IsCourierNewOrTheMachinesSubstitute) {
  const QFont font = widgets::CourierNew();
  EXPECT_EQ(font.family(), kWanted);
  ExpectOneWidth(font);
}

TEST(FixedPitchFontTest, HasOneWidthEvenIfTheMachinesSubstituteHasNot) {
  const ProportionalSubstitute substitute;
  if (QFontInfo(QFont(QString::fromLatin1(kWanted))).fixedPitch()) {
    GTEST_SKIP() << "needs a machine without Courier New, and a proportional default font";
  }
  const QFont font = widgets::CourierNew();
  EXPECT_EQ(font.family(), kWanted);
  ExpectOneWidth(font);
}

TEST(FixedPitchFontTest, LeavesTheSizeToTheWidget) {
  QFont size = QApplication::font();
  size.setPointSizeF(2 * size.pointSizeF());
  EXPECT_DOUBLE_EQ(widgets::CourierNew().resolve(size).pointSizeF(), size.pointSizeF());
}

}  // namespace
}  // namespace kelvara::test
