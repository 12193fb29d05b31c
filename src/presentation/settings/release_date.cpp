#include "presentation/settings/release_date.h"

#include <algorithm>
#include <charconv>

namespace tolvo {

namespace {

/// Reads a date from the left; each function takes what it reads off the text.
class DateReader {
public:
    explicit DateReader(std::string_view text) : rest_(text) {}

    bool isAtEnd() const { return rest_.empty(); }

    bool skip(char expected) {
        if (!rest_.starts_with(expected))
            return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::optional<int> digits(std::size_t count) {
        const std::string_view text = rest_.substr(0, count);
        int value = 0;
        const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
        if (text.starts_with('-') || end.ec != std::errc() || end.ptr != rest_.data() + count)
            return std::nullopt;
        rest_.remove_prefix(count);
        return value;
    }

    /// False for a decimal point without a digit.
    bool skipOptionalFraction() {
        if (!skip('.'))
            return true;
        const std::size_t count = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
        rest_.remove_prefix(count);
        return count > 0;
    }

    std::optional<std::chrono::year_month_day> date() {
        const auto year = digits(4);
        const bool hasYear = year && skip('-');
        const auto month = hasYear ? digits(2) : std::nullopt;
        const bool hasMonth = month && skip('-');
        const auto day = hasMonth ? digits(2) : std::nullopt;
        if (!day)
            return std::nullopt;
        const std::chrono::year_month_day date(std::chrono::year(*year),
                                               std::chrono::month(static_cast<unsigned>(*month)),
                                               std::chrono::day(static_cast<unsigned>(*day)));
        return date.ok() ? std::optional(date) : std::nullopt;
    }

    std::optional<std::chrono::seconds> timeOfDay() {
        const auto hour = digits(2);
        const bool hasHour = hour && skip(':');
        const auto minute = hasHour ? digits(2) : std::nullopt;
        const bool hasMinute = minute && skip(':');
        const auto second = hasMinute ? digits(2) : std::nullopt;
        if (!second || *hour > 23 || *minute > 59 || *second > 60)
            return std::nullopt;
        return std::chrono::hours(*hour) + std::chrono::minutes(*minute) + std::chrono::seconds(*second);
    }

    /// East of Greenwich is positive.
    std::optional<std::chrono::minutes> offset() {
        if (skip('Z'))
            return std::chrono::minutes(0);
        const bool isEast = skip('+');
        if (!isEast && !skip('-'))
            return std::nullopt;
        const auto hours = digits(2);
        skip(':');
        const auto minutes = hours ? digits(2) : std::nullopt;
        if (!minutes || *hours > 23 || *minutes > 59)
            return std::nullopt;
        const auto offset = std::chrono::hours(*hours) + std::chrono::minutes(*minutes);
        return isEast ? offset : -offset;
    }

private:
    std::string_view rest_;
};

} // namespace

std::optional<ReleaseDate> parseReleaseDate(std::string_view text) {
    DateReader reader(text);
    const auto date = reader.date();
    if (!date)
        return std::nullopt;
    if (reader.isAtEnd())
        return *date;
    const auto time = reader.skip('T') ? reader.timeOfDay() : std::nullopt;
    if (!time)
        return std::nullopt;
    // The fraction doesn't change the day.
    const auto offset = reader.skipOptionalFraction() ? reader.offset() : std::nullopt;
    if (!offset || !reader.isAtEnd())
        return std::nullopt;
    return WallTime(std::chrono::sys_days(*date) + *time - *offset);
}

} // namespace tolvo
