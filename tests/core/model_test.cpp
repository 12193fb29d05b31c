#include "core/model/grading.h"
#include "core/model/url.h"
#include "core/text.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvo::testing {
namespace {

using Grade = std::optional<SignalQuality>;

TEST(Grading, EachThresholdBelongsToTheSideThatTheMeasureGivesIt) {
    struct Row {
        double milliseconds;
        SignalQuality ping, jitter, lookUp;
    };
    using enum SignalQuality;
    for (const Row& row :
         {Row{0, Good, Good, Good}, Row{9.9, Good, Good, Good}, Row{10, Good, Warning, Good},
          Row{30, Good, Warning, Good}, Row{30.1, Good, Poor, Good}, Row{50, Good, Poor, Warning},
          Row{50.1, Warning, Poor, Warning}, Row{100, Warning, Poor, Warning}, Row{100.1, Poor, Poor, Poor}}) {
        const PingResult ping{PingTarget::Internet, {}, row.milliseconds, row.milliseconds, 0, true};
        EXPECT_EQ(latencyQuality(ping), row.ping) << row.milliseconds;
        EXPECT_EQ(jitterQuality(ping), row.jitter) << row.milliseconds;
        EXPECT_EQ(latencyQuality(DNSResult{"a", {}, row.milliseconds, true}), row.lookUp) << row.milliseconds;
    }
}

TEST(Grading, NoResultHasNoGradeAndAFailedOneIsPoor) {
    EXPECT_EQ(latencyQuality(std::optional<PingResult>()), Grade());
    EXPECT_EQ(jitterQuality(std::nullopt), Grade());
    EXPECT_EQ(latencyQuality(std::optional<DNSResult>()), Grade());
    const PingResult failed{PingTarget::Router, {}, 5, 1, 0, false};
    EXPECT_EQ(latencyQuality(failed), SignalQuality::Poor);
    EXPECT_EQ(jitterQuality(PingResult{PingTarget::Router, {}, 5, std::nullopt, 0, true}), SignalQuality::Poor);
    EXPECT_EQ(latencyQuality(DNSResult{"a", {}, 5, false}), SignalQuality::Poor);
}

TEST(URL, TakesReferencesApartAndRefusesWhatIsNone) {
    struct Row {
        const char *text, *scheme, *host, *path;
    };
    for (const Row& row :
         {Row{"HTTP://u:p@Login.Example:8080/a/b?q=1#f", "http", "login.example", "/a/b"},
          Row{"https://[2001:db8::1]:443", "https", "2001:db8::1", ""}, Row{"/login?next=http://x", "", "", "/login"},
          Row{"file:///etc/passwd", "file", "", "/etc/passwd"}, Row{"login.html", "", "", "login.html"}}) {
        const auto url = URL::parse(row.text);
        ASSERT_TRUE(url) << row.text;
        EXPECT_EQ(url->scheme() + "|" + url->host() + "|" + url->path(),
                  std::string(row.scheme) + "|" + row.host + "|" + row.path);
        EXPECT_EQ(url->text(), row.text);
    }
    for (const char* text : {"", "http://a b/", "http://[::1/", "http://a:port/", "1http://a/", "a%2", "\xff", "a\nb"})
        EXPECT_FALSE(URL::parse(text)) << text;
}

TEST(Text, ValidUTF8IsWhatUnicodeSaysItIs) {
    for (const char* good : {"", "abc", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(isValidUTF8(good)) << good;
    for (const char* bad : {"\x80", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82", "\xFF"})
        EXPECT_FALSE(isValidUTF8(bad)) << bad;
}

} // namespace
} // namespace tolvo::testing
