#include "platform/qt/QtDateFormat.h"

#include <QDateTime>
#include <cmath>

#include "platform/qt/LocaleFormats.h"

namespace kelvara::qt {
namespace {

/// The format without its time-zone letters.
QString WithoutTimeZone(const QString& format) {
  QString kept;
  bool quoted = false;
  for (const QChar character : format) {
    if (character == u'\'') {
      quoted = !quoted;
    }
    if (quoted || character != u't') {
      kept += character;
    }
  }
  return kept.replace(QStringLiteral("()"), QString()).trimmed();
}

/// Replaces narrow and non-breaking spaces with plain ones, because other programs read the files.
std::string ToPlainText(QString text) {
  for (const char16_t blank : {u'\u00A0', u'\u2009', u'\u202F'}) {
    text.replace(QChar(blank), u' ');
  }
  return text.toLocal8Bit().toStdString();
}

std::int64_t SecondOf(platform::DateTime wallTime) {
  // Rounds to the nearest millisecond first, because the fraction of a day is seldom exact.
  return std::llround(std::floor(std::round(wallTime * platform::kSecondsPerDay * 1e3) / 1e3));
}

QDateTime ToCalendar(std::int64_t second) { return QDateTime::fromSecsSinceEpoch(second, Qt::UTC); }

}  // namespace

QtDateFormat::QtDateFormat(const QLocale& locale)
    : locale_(locale),
      dateFormat_(locale.dateFormat(QLocale::ShortFormat)),
      timeFormat_(WithoutTimeZone(locale.timeFormat(QLocale::LongFormat))) {
  if (!HasDateFormats(locale)) {
    dateFormat_ = QStringLiteral("yyyy-MM-dd");
    timeFormat_ = QStringLiteral("HH:mm:ss");
  }
}

std::string QtDateFormat::ShortDate(platform::DateTime wallTime) const {
  return ToPlainText(locale_.toString(ToCalendar(SecondOf(wallTime)).date(), dateFormat_));
}

std::string QtDateFormat::General(platform::DateTime wallTime) const {
  const std::int64_t second = SecondOf(wallTime);
  if (second != generalSecond_) {
    const QDateTime moment = ToCalendar(second);
    general_ = ToPlainText(locale_.toString(moment.date(), dateFormat_) + u' ' +
                           locale_.toString(moment.time(), timeFormat_));
    generalSecond_ = second;
  }
  return general_;
}

}  // namespace kelvara::qt
