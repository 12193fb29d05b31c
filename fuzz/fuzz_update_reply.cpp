#include "core/text.h"
#include "fuzz/require.h"
#include "integration/app_update_notification.h"
#include "integration/app_update_service.h"
#include "integration/url_resolution.h"
#include "platform/linux/nlohmann_json_reader.h"
#include "tests/support/run_task.h"
#include "tests/support/scripted_url_session.h"

#include <cstdint>
#include <string_view>

namespace {

using namespace tolvo;
using fuzzing::require;

constexpr std::int64_t presentBuild = 7;
constexpr std::string_view downloadBase = "https://host.test/releases/";

struct Bundle final : BundleInformation, ProcessInformation {
    std::optional<std::string> objectForInfoDictionaryKey(std::string_view key) const override {
        if (key == "CFBundleVersion")
            return std::to_string(presentBuild);
        return key == "UpdateDownloadBaseURL" ? std::optional(std::string(downloadBase)) : std::nullopt;
    }
    std::optional<std::string> environmentVariable(const std::string&) const override { return std::nullopt; }
    std::optional<WallTime> modificationDate() const override { return std::nullopt; }
};

void requireSoundURL(const std::string& text) {
    const auto url = URL::parse(text);
    require(url && isWebScheme(url->scheme()));
    const auto folder = asFolder(*url);
    require(folder.scheme() == url->scheme() && folder.host() == url->host());
}

void requireSoundUpdate(const AvailableUpdate& update) {
    require(update.buildNumber > presentBuild);
    requireSoundURL(update.downloadUrl);
    const UserNotificationRequest notification = appUpdateNotification(update);
    require(isValidUTF8(notification.content.body) && isValidUTF8(update.releaseNotes.value_or("")));
}

/// What has neither scheme nor host stays at the host of the downloads.
void requireSoundResolution(std::string_view text) {
    const auto reference = URL::parse(text);
    if (!reference || reference->isAbsolute() || text.starts_with("//"))
        return;
    const auto absolute = resolved(*reference, *URL::parse(downloadBase));
    require(!absolute || (absolute->scheme() == "https" && absolute->host() == "host.test"));
    require(!absolute || !absolute->path().contains("/../"));
}

} // namespace

/// Any bytes as the reply of the update endpoint, and as a reference to a download.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    requireSoundResolution(text);
    testing::ScriptedURLSession session;
    session.answer = [&](std::size_t, const URLRequest&) {
        return std::pair(testing::httpResponse(200, std::string(text)), 0.1);
    };
    const NlohmannJSONReader reader;
    const Bundle bundle;
    testing::ManualLoop loop;
    AppUpdateService service(session, reader, bundle, bundle);
    const auto result = testing::runTask(loop, service.checkForUpdate(), 1);
    require(result.has_value());
    if (const auto* update = std::get_if<AvailableUpdate>(&*result))
        requireSoundUpdate(*update);
    return 0;
}
