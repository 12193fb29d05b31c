#include "presentation/settings/app_build_metadata_display_info.h"

#include "core/text.h"
#include "presentation/settings/release_date.h"

#include <string_view>

namespace tolvo {

namespace {

constexpr std::string_view unavailableText = "n/a";

/// The value without the white space around it; nothing for one that says nothing.
std::optional<std::string> present(const std::optional<std::string>& value) {
    if (!value)
        return std::nullopt;
    const std::string_view text = trimmed(*value);
    const bool isUnfilledVariable = text.find("$(") != std::string_view::npos;
    if (text.empty() || isUnfilledVariable || text == unavailableText)
        return std::nullopt;
    return std::string(text);
}

std::string shown(const ReleaseDate& date, const LocaleFormats& formats) {
    if (const auto* day = std::get_if<std::chrono::year_month_day>(&date))
        return formats.longDate(*day);
    return formats.longDate(formats.localDate(std::get<WallTime>(date)));
}

std::string releaseDateText(const BundleBuildFacts& facts, const LocaleFormats& formats) {
    if (const auto text = present(facts.releaseDate)) {
        const auto date = parseReleaseDate(*text);
        return date ? shown(*date, formats) : *text;
    }
    if (facts.modificationDate)
        return shown(*facts.modificationDate, formats);
    return std::string(unavailableText);
}

} // namespace

AppBuildMetadataDisplayInfo appBuildMetadataDisplayInfo(const BundleBuildFacts& facts, const LocaleFormats& formats) {
    return {"v" + present(facts.shortVersion).value_or("0.0.1") + " (" + present(facts.buildNumber).value_or("1") + ")",
            present(facts.buildID).value_or(std::string(unavailableText)), releaseDateText(facts, formats)};
}

} // namespace tolvo
