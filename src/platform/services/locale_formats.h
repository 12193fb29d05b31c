#pragma once

#include <chrono>
#include <string>

namespace tolvo {

/// How the user's locale and time zone write numbers and dates.
class LocaleFormats {
public:
    LocaleFormats(const LocaleFormats&) = delete;
    LocaleFormats& operator=(const LocaleFormats&) = delete;
    virtual ~LocaleFormats() = default;

    virtual std::string decimalSeparator() const = 0;
    /// Hours, minutes and seconds.
    virtual std::string timeOfDay(std::chrono::system_clock::time_point time) const = 0;
    /// Hours and minutes.
    virtual std::string shortTime(std::chrono::system_clock::time_point time) const = 0;
    /// With the month's name, without a time.
    virtual std::string longDate(std::chrono::year_month_day date) const = 0;
    virtual std::chrono::year_month_day localDate(std::chrono::system_clock::time_point time) const = 0;

protected:
    LocaleFormats() = default;
};

} // namespace tolvo
