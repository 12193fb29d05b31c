#include "core/task_sleeper.h"
#include "integration/app_update_controller.h"
#include "integration/app_update_notification.h"
#include "platform/linux/nlohmann_json_reader.h"
#include "tests/support/run_task.h"
#include "tests/support/scripted_url_opener.h"
#include "tests/support/scripted_url_session.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

using Values = std::map<std::string, std::string, std::less<>>;

/// What the build and the environment say.
struct ScriptedValues final : BundleInformation, ProcessInformation {
    std::optional<std::string> objectForInfoDictionaryKey(std::string_view key) const override {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    std::optional<std::string> environmentVariable(const std::string& name) const override {
        return objectForInfoDictionaryKey(name);
    }
    std::optional<WallTime> modificationDate() const override { return std::nullopt; }
    Values values{{"CFBundleVersion", "7"}, {"UpdateDownloadBaseURL", "https://host/a/releases"}};
};

/// Grants what it is asked for if the test says so.
struct RecordingNotifications final : UserNotifications {
    Task<NotificationAuthorization> authorizationStatus() override { co_return status; }
    Task<void> requestAuthorization() override {
        status = granted;
        co_return;
    }
    void add(UserNotificationRequest request) override { added.push_back(std::move(request)); }

    NotificationAuthorization status = NotificationAuthorization::Authorized;
    NotificationAuthorization granted = NotificationAuthorization::Denied;
    std::vector<UserNotificationRequest> added;
};

std::string reply(const std::string& buildNumber, const std::string& downloadUrl = R"("1.dmg")",
                  const std::string& more = {}, const std::string& version = R"("1.4.0")") {
    return R"({"version":)" + version + R"(,"buildNumber":)" + buildNumber +
           R"(,"releaseDate":"2026-01-31","downloadUrl":)" + downloadUrl + more + "}";
}

struct AppUpdateTest : ::testing::Test {
    AppUpdateTest() {
        session.answer = [this](std::size_t number, const URLRequest&) {
            return std::pair(answers.at(std::min(number, answers.size()) - 1), 1.0);
        };
    }
    /// What a check comes to: the download's address, or the case's name.
    std::string check(const URLSessionOutcome& answer) {
        answers.assign(session.requests.size() + 1, answer);
        AppUpdateService service(session, jsonReader, configured, configured);
        const auto result = runTask(loop, service.checkForUpdate());
        if (const auto* update = result ? std::get_if<AvailableUpdate>(&*result) : nullptr)
            return update->downloadUrl;
        return result && std::holds_alternative<UpToDate>(*result) ? "up to date" : "failed";
    }
    std::int64_t shownBuild() const {
        const auto& update = controller.availableUpdate.value();
        return update ? update->buildNumber : 0;
    }

    ManualLoop loop;
    TaskSleeper sleeper;
    std::vector<URLSessionOutcome> answers;
    ScriptedURLSession session;
    NlohmannJSONReader jsonReader;
    ScriptedValues configured;
    RecordingNotifications notifications;
    ScriptedURLOpener urlOpener;
    AppUpdateService updateService{session, jsonReader, configured, configured};
    AppUpdateController controller{loop, updateService, notifications, urlOpener, sleeper, 86400};
};

TEST_F(AppUpdateTest, OnlyAWholeReplyOfANewerBuildIsAnUpdate) {
    const std::string found = "https://host/a/releases/1.dmg";
    const std::string extras = R"(,"releaseNotes":null,"minimumSystemVersion":"14","other":[{}])";
    for (const auto& good : {reply("8"), reply("9223372036854775807"), reply("8.0"), reply("8", R"("1.dmg")", extras)})
        EXPECT_EQ(check(httpResponse(299, good)), found) << good;
    for (const auto& old : {reply("7"), reply("-9", R"("ftp://host/1")")})
        EXPECT_EQ(check(httpResponse(200, old)), "up to date") << old;
    const std::string deep(50'000, '[');
    for (const auto& bad :
         {reply("9223372036854775808"), reply("1e300"), reply("8.5"), reply(R"("8")"), reply("true"), reply("null"),
          reply("8", "5"), reply("8", R"("1.dmg")", R"(,"releaseNotes":5)"), reply("8", "\"\xff.dmg\""),
          reply("8", R"("1.dmg")", R"(,"other":)" + deep + std::string(deep.size(), ']')), deep,
          reply("8").substr(0, 40), '[' + reply("8") + ']', std::string(R"({"version":"1.4.0","buildNumber":8})"),
          std::string()})
        EXPECT_EQ(check(httpResponse(200, bad)), "failed") << bad.substr(0, 200);
    for (const int status : {199, 300, 302, 500})
        EXPECT_EQ(check(httpResponse(status, reply("8"))), "failed") << status;
    EXPECT_EQ(check(httpFailure(URLSessionError::Kind::NotHTTP)), "failed");
    // An endless or oversized body is the session's to end, by what it is told here.
    const URLRequest& request = session.requests.back();
    EXPECT_EQ(request.totalTimeout, 10);
    EXPECT_LE(request.bodyLimit, 1U << 20);
    EXPECT_EQ(request.headers, (decltype(request.headers){{"Accept", "application/json"}}));
}

TEST_F(AppUpdateTest, DownloadsComeFromTheWebOnly) {
    const std::string base = "https://host/a/releases/";
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", base + "tolvo-1.4%2F..%20b%C3%A9+2.dmg"},
        {" $(DOWNLOAD_URL) ", base + "tolvo-1.4%2F..%20b%C3%A9+2.dmg"},
        {" HTTPS://Other/x?y#z ", "HTTPS://Other/x?y#z"},
        {"v8/./t/../1.dmg?mirror=2#top", base + "v8/1.dmg?mirror=2#top"},
        {"../../../../up/..", "https://host/"},
        {"/root.dmg", "https://host/root.dmg"},
        {"?latest", base + "?latest"}};
    const auto checked = [this](const std::string& downloadUrl) {
        return check(httpResponse(200, reply("8", '"' + downloadUrl + '"', {}, "\"1.4/.. b\u00e9+2\"")));
    };
    for (const auto& [downloadUrl, expected] : cases)
        EXPECT_EQ(checked(downloadUrl), expected);
    for (const char* rejected :
         {"ftp://host/1.dmg", "javascript:alert(1)", "file:///etc/passwd", "//host/1.dmg", "a b"})
        EXPECT_EQ(checked(rejected), "failed") << rejected;
}

TEST_F(AppUpdateTest, TheFirstUsableAddressIsAsked) {
    const std::string builtIn = "https://" TOLVO_WEB_HOST;
    const std::vector<std::tuple<std::string, std::string, std::string>> cases{
        {" HTTP://env/u?q\n", "https://bundle/u", "HTTP://env/u?q"},
        {"https://$(HOST)/u", "https://bundle/u", "https://bundle/u"},
        {"ftp://env/u", "https://bundle/u", "https://bundle/u"},
        {"env/u", "$(URL)", builtIn + "/v1/update"}};
    for (const auto& [variable, key, expected] : cases) {
        configured.values = {{"TOLVO_UPDATE_API_URL", variable}, {"UpdateAPIURL", key}};
        // Without a build number of its own, any build is newer.
        EXPECT_EQ(check(httpResponse(200, reply("1"))), builtIn + "/releases/1.dmg");
        EXPECT_EQ(session.requests.back().url.text(), expected);
    }
    for (const auto& [own, expected] : {std::pair("+9", "up to date"), {"9 ", "http://env/1.dmg"}}) {
        configured.values = {{"TOLVO_UPDATE_DOWNLOAD_BASE_URL", "http://env?key"}, {"CFBundleVersion", own}};
        EXPECT_EQ(check(httpResponse(200, reply("9"))), expected);
    }
}

TEST_F(AppUpdateTest, ALoopAsksOnceADayAndTellsOfEachBuildOnce) {
    const auto failure = httpFailure(URLSessionError::Kind::CannotConnect);
    const auto build = [](const char* number) { return httpResponse(200, reply(number)); };
    answers = {failure, build("8"), build("8"), failure, build("9"), build("7"), build("9")};
    // After each day's answer.
    const std::vector<std::int64_t> shownBuilds{0, 8, 8, 8, 9, 0, 9};
    const std::vector<std::size_t> notificationCounts{0, 1, 1, 1, 2, 2, 3};
    controller.startPeriodicChecks();
    controller.startPeriodicChecks();
    loop.advance(4.9);
    EXPECT_TRUE(session.requests.empty());
    loop.advance(1.1);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        EXPECT_EQ(session.requests.size(), i + 1);
        EXPECT_EQ(shownBuild(), shownBuilds[i]) << i;
        EXPECT_EQ(notifications.added.size(), notificationCounts[i]) << i;
        loop.advance(86400 - 0.1);
        EXPECT_EQ(session.requests.size(), i + 1);
        loop.advance(1.1);
    }
    const auto& [identifier, content] = notifications.added.front();
    EXPECT_EQ(identifier + ": " + content.title + ". " + content.body,
              "app-update-8: Update Available. Tolvo 1.4.0 is now available. Click to download.");
    handleNotificationResponse(content.userInfo, controller);
    EXPECT_EQ(urlOpener.tried, std::vector<std::string>{"https://host/a/releases/1.dmg"});
    controller.stopPeriodicChecks();
    const auto asked = session.requests.size();
    loop.advance(3 * 86400.0);
    EXPECT_EQ(session.requests.size(), asked);
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST_F(AppUpdateTest, ACheckAtTheUsersRequestAndAUserWhoDeclinesPostNothing) {
    using enum NotificationAuthorization;
    answers = {httpResponse(200, reply("8"))};
    TaskScope scope(loop);
    scope.start(controller.checkNow());
    loop.advance(1);
    EXPECT_EQ(shownBuild(), 8);
    for (const auto& [status, granted, isShown] : {std::tuple(Authorized, Authorized, false),
                                                   {Denied, Authorized, false},
                                                   {NotDetermined, Denied, false},
                                                   {NotDetermined, Authorized, true}}) {
        notifications.status = status;
        notifications.granted = granted;
        controller.startPeriodicChecks();
        loop.advance(6);
        EXPECT_EQ(notifications.added.size(), isShown ? 1U : 0U);
        controller.availableUpdate.set(std::nullopt);
    }
}

TEST_F(AppUpdateTest, AClickOpensAWebAddressAndNothingElse) {
    const auto opened = [this](const NotificationUserInfo& userInfo) {
        urlOpener.tried.clear();
        handleNotificationResponse(userInfo, controller);
        return urlOpener.tried.empty() ? "" : urlOpener.tried.front();
    };
    EXPECT_EQ(opened({{"type", "app-update"}}), "");
    controller.availableUpdate.set(AvailableUpdate{"1.4.0", 8, "", "https://host/1"});
    EXPECT_EQ(opened({{"type", "app-update"}}), "https://host/1");
    EXPECT_EQ(opened({{"type", "app-update"}, {"downloadURL", " HTTP://host/2 "}}), "HTTP://host/2");
    for (const char* url : {"", " ", "file:///etc/passwd", "host/2", "--help"})
        EXPECT_EQ(opened({{"type", "app-update"}, {"downloadURL", url}}), "") << url;
    EXPECT_EQ(opened({{"type", "other"}, {"downloadURL", "http://host/2"}}), "");
    EXPECT_EQ(opened({{"downloadURL", "http://host/2"}}), "");
}

} // namespace
} // namespace tolvo::testing
