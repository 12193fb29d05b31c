#include "platform/linux/built_bundle_information.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <utility>

namespace tolvo {

namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 6> values{
    {{"CFBundleShortVersionString", TOLVO_VERSION},
     {"CFBundleVersion", TOLVO_BUILD_NUMBER},
     {"BuildID", TOLVO_BUILD_ID},
     {"ReleaseDate", TOLVO_RELEASE_DATE},
     {"UpdateAPIURL", TOLVO_UPDATE_API_URL},
     {"UpdateDownloadBaseURL", TOLVO_UPDATE_DOWNLOAD_BASE_URL}}};

} // namespace

std::optional<std::string> BuiltBundleInformation::objectForInfoDictionaryKey(std::string_view key) const {
    const auto found = std::ranges::find(values, key, [](const auto& entry) { return entry.first; });
    if (found == values.end() || found->second.empty())
        return std::nullopt;
    return std::string(found->second);
}

std::optional<WallTime> BuiltBundleInformation::modificationDate() const {
    struct stat status{};
    if (::stat("/proc/self/exe", &status) != 0)
        return std::nullopt;
    const auto sinceEpoch =
        std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec);
    return WallTime(std::chrono::duration_cast<WallTime::duration>(sinceEpoch));
}

} // namespace tolvo
