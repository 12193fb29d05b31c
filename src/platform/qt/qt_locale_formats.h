#pragma once

#include "platform/services/locale_formats.h"

#include <QLocale>

namespace tolvo {

/// The formats of the user's locale, as Qt knows it.
class QtLocaleFormats final : public LocaleFormats {
public:
    explicit QtLocaleFormats(const QLocale& locale = QLocale::system()) : locale_(locale) {}

    std::string decimalSeparator() const override;
    std::string timeOfDay(std::chrono::system_clock::time_point time) const override;
    std::string shortTime(std::chrono::system_clock::time_point time) const override;
    std::string longDate(std::chrono::year_month_day date) const override;
    /// With a short name of the month, and with seconds.
    std::string mediumDateAndTime(std::chrono::system_clock::time_point time) const;
    std::chrono::year_month_day localDate(std::chrono::system_clock::time_point time) const override;

private:
    QLocale locale_;
};

} // namespace tolvo
