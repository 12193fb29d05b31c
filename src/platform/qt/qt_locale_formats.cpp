#include "platform/qt/qt_locale_formats.h"

#include <QDateTime>
#include <QRegularExpression>

namespace tolvo {

namespace {

QDateTime localTime(std::chrono::system_clock::time_point time) {
    const auto sinceEpoch = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch());
    return QDateTime::fromMSecsSinceEpoch(sinceEpoch.count());
}

/// The long format is the only one with seconds in every locale; it also names the time zone.
QString formatWithoutZone(QString format) {
    static const QRegularExpression zone(QStringLiteral("\\s*[(\\[]?t+[)\\]]?\\s*"));
    return format.remove(zone);
}

/// Without the day of the week, which Qt's long format has.
QString longDateFormat(const QLocale& locale) {
    static const QRegularExpression weekday(QStringLiteral("d{3,4}('[^']*'|[^\\w'])*"));
    static const QRegularExpression trailing(QStringLiteral("[,،、\\s]+$"));
    return locale.dateFormat(QLocale::LongFormat).remove(weekday).remove(trailing);
}

} // namespace

std::string QtLocaleFormats::decimalSeparator() const {
    return locale_.decimalPoint().toStdString();
}

std::string QtLocaleFormats::timeOfDay(std::chrono::system_clock::time_point time) const {
    return locale_.toString(localTime(time).time(), formatWithoutZone(locale_.timeFormat(QLocale::LongFormat)))
        .toStdString();
}

std::string QtLocaleFormats::shortTime(std::chrono::system_clock::time_point time) const {
    // Some locales' short format has seconds.
    static const QRegularExpression seconds(QStringLiteral("[^\\w\\s]s+"));
    return locale_.toString(localTime(time).time(), locale_.timeFormat(QLocale::ShortFormat).remove(seconds))
        .toStdString();
}

std::string QtLocaleFormats::longDate(std::chrono::year_month_day date) const {
    const QDate day(static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
                    static_cast<int>(static_cast<unsigned>(date.day())));
    return locale_.toString(day, longDateFormat(locale_)).toStdString();
}

std::string QtLocaleFormats::mediumDateAndTime(std::chrono::system_clock::time_point time) const {
    const QString format = longDateFormat(locale_).replace(QLatin1String("MMMM"), QLatin1String("MMM"));
    return locale_.toString(localTime(time).date(), format).toStdString() + " " + timeOfDay(time);
}

std::chrono::year_month_day QtLocaleFormats::localDate(std::chrono::system_clock::time_point time) const {
    const QDate day = localTime(time).date();
    return {std::chrono::year(day.year()), std::chrono::month(static_cast<unsigned>(day.month())),
            std::chrono::day(static_cast<unsigned>(day.day()))};
}

} // namespace tolvo
