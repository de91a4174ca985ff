#include "platform/widgets/FixedPitchFont.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QStringList>

namespace kelvara::widgets {
namespace {

bool HasOneWidth(const QFont& font) {
  const QFontMetricsF metrics(font);
  const auto widest = metrics.horizontalAdvance(u'W');
  return QFontInfo(font).fixedPitch() && qFuzzyCompare(metrics.horizontalAdvance(u'i'), widest) &&
         qFuzzyCompare(metrics.horizontalAdvance(u' '), widest);
}

/// A family without its foundry, which follows in brackets if several foundries have the family.
/// After another family, Qt finds it by its bare name only.
QString WithoutFoundry(const QString& family) { return family.section(QStringLiteral(" ["), 0, 0); }

/// The families that may replace Courier New, starting with the desktop's fixed-pitch font.
QStringList FixedPitchFamilies() {
  QStringList families = {
      WithoutFoundry(QFontInfo(QFontDatabase::systemFont(QFontDatabase::FixedFont)).family())};
  const QStringList latin = QFontDatabase::families(QFontDatabase::Latin);
  for (const QString& family : latin) {
    if (QFontDatabase::isFixedPitch(family)) {
      families += WithoutFoundry(family);
    }
  }
  return families;
}

}  // namespace

QFont CourierNew() {
  const QString wanted = QStringLiteral("Courier New");
  QFont font(wanted);
  font.setStyleHint(QFont::TypeWriter);
  if (HasOneWidth(font)) {
    return font;
  }
  const QStringList families = FixedPitchFamilies();
  for (const QString& family : families) {
    QFont other(font);
    other.setFamilies({wanted, family});
    if (HasOneWidth(other)) {
      return other;
    }
  }
  return font;
}

}  // namespace kelvara::widgets
