#include "integration/app_update_service.h"

#include "core/text.h"
#include "integration/url_resolution.h"

#include <charconv>
#include <utility>

namespace tolvo {

namespace {

constexpr std::string_view defaultEndpoint = "https://" TOLVO_WEB_HOST "/v1/update";
constexpr std::string_view defaultDownloadBase = "https://" TOLVO_WEB_HOST "/releases";

constexpr double requestTimeout = 10;
/// Bytes; a description with long release notes has some ten thousand.
constexpr std::size_t replyLimit = std::size_t{256} * 1024;

/// Blank, or with a build variable that was not filled in.
bool saysNothing(std::string_view trimmedText) {
    return trimmedText.empty() || trimmedText.find("$(") != std::string_view::npos;
}

std::optional<URL> usableURL(const std::optional<std::string>& configured) {
    const std::string_view text = configured ? trimmed(*configured) : std::string_view();
    const auto url = saysNothing(text) ? std::nullopt : URL::parse(text);
    return url && isWebScheme(url->scheme()) ? url : std::nullopt;
}

std::optional<URL> configuredURL(const ProcessInformation& processInformation, const char* variable,
                                 const BundleInformation& bundle, std::string_view key, std::string_view builtIn) {
    if (auto url = usableURL(processInformation.environmentVariable(variable)))
        return url;
    if (auto url = usableURL(bundle.objectForInfoDictionaryKey(key)))
        return url;
    return URL::parse(builtIn);
}

std::optional<URL> downloadBaseURL(const ProcessInformation& processInformation, const BundleInformation& bundle) {
    const auto url = configuredURL(processInformation, "TOLVO_UPDATE_DOWNLOAD_BASE_URL", bundle,
                                   "UpdateDownloadBaseURL", defaultDownloadBase);
    return url ? std::optional(asFolder(*url)) : std::nullopt;
}

/// 0 for what is no decimal integer.
std::int64_t buildNumber(const std::optional<std::string>& text) {
    std::string_view digits = text ? std::string_view(*text) : std::string_view();
    if (digits.starts_with('+') && !digits.starts_with("+-"))
        digits.remove_prefix(1);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() && end == digits.data() + digits.size() ? number : 0;
}

} // namespace

AppUpdateService::AppUpdateService(URLSession& session, const JSONReading& jsonReader,
                                   const BundleInformation& mainBundle, const ProcessInformation& processInformation)
    : session_(session),
      jsonReader_(jsonReader),
      updateEndpointURL_(
          *configuredURL(processInformation, "TOLVO_UPDATE_API_URL", mainBundle, "UpdateAPIURL", defaultEndpoint)),
      updateDownloadBaseURL_(downloadBaseURL(processInformation, mainBundle)),
      currentBuildNumber_(buildNumber(mainBundle.objectForInfoDictionaryKey("CFBundleVersion"))) {}

Task<UpdateCheckResult> AppUpdateService::checkForUpdate() {
    URLRequest request{.url = updateEndpointURL_,
                       .headers = {{"Accept", "application/json"}},
                       .timeout = requestTimeout,
                       .totalTimeout = requestTimeout,
                       .bodyLimit = replyLimit};
    const URLSessionOutcome response = co_await session_.data(std::move(request));
    if (!response)
        co_return CheckFailed{};
    co_return resultOf(*response);
}

UpdateCheckResult AppUpdateService::resultOf(const HTTPResponse& response) const {
    if (response.statusCode < 200 || response.statusCode > 299)
        return CheckFailed{};
    const auto members = jsonReader_.members(response.body);
    auto update = members ? decodeAvailableUpdate(*members) : std::nullopt;
    if (!update)
        return CheckFailed{};
    if (update->buildNumber <= currentBuildNumber_)
        return UpToDate{};
    const auto url = downloadURL(*update);
    if (!url)
        return CheckFailed{};
    update->downloadUrl = url->text();
    return *std::move(update);
}

std::optional<URL> AppUpdateService::downloadURL(const AvailableUpdate& update) const {
    const std::string_view text = trimmed(update.downloadUrl);
    if (saysNothing(text)) {
        return updateDownloadBaseURL_
                   ? appendingPathComponent(*updateDownloadBaseURL_, "tolvo-" + update.version + ".dmg")
                   : std::nullopt;
    }
    const auto url = URL::parse(text);
    if (!url)
        return std::nullopt;
    if (url->isAbsolute())
        return isWebScheme(url->scheme()) ? url : std::nullopt;
    if (text.starts_with("//") || !updateDownloadBaseURL_)
        return std::nullopt;
    return resolved(*url, *updateDownloadBaseURL_);
}

} // namespace tolvo
