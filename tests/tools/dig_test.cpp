#include "tests/tools/name_server.h"
#include "tests/tools/sandbox.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace tolvo::test {
namespace {

using namespace std::chrono_literals;

class Dig : public testing::Test {
protected:
    void SetUp() override {
        if (const auto problem = enterSandbox())
            GTEST_SKIP() << *problem;
        setResolverConfiguration("nameserver 127.0.0.1\n");
    }

    static ToolRun dig(const std::string& domain) { return run({toolPath("dig"), "+time=1", "+tries=1", domain}); }
};

/// The number in the line of the query time, -1 without one.
int queryTime(const std::string& output) {
    const auto place = output.find("Query time: ");
    return place == std::string::npos ? -1 : std::atoi(output.c_str() + place + 12);
}

std::vector<Packet> answered(const Packet& query) {
    return {answerTo(query)};
}

Packet withByte(Packet packet, std::size_t place, std::uint8_t flippedBits) {
    packet.at(place) ^= flippedBits;
    return packet;
}

TEST_F(Dig, ReportsWhatTheServerSays) {
    const std::vector<std::pair<std::uint8_t, std::string>> statuses{
        {0, "NOERROR"}, {2, "SERVFAIL"}, {3, "NXDOMAIN"}, {5, "REFUSED"}};
    for (const auto& [code, status] : statuses) {
        const NameServer server(
            [&](const Packet& query) { return std::vector<Packet>{answerTo(query, code, code == 0 ? 2 : 0)}; });
        const ToolRun result = dig("www.example.test.");
        EXPECT_EQ(result.status, 0) << status;
        EXPECT_TRUE(result.output.contains("status: " + status)) << result.output;
        EXPECT_GE(queryTime(result.output), 0);
        EXPECT_EQ(result.output.contains("www.example.test. 60 IN A 192.0.2.7"), code == 0);
    }
}

TEST_F(Dig, PassesOverWhatDoesNotAnswerItsQuery) {
    // The true answer comes last; the false ones say 192.0.2.6.
    const NameServer server([](const Packet& query) {
        const Packet answer = answerTo(query);
        const Packet wrong = withByte(answer, answer.size() - 1, 1);
        const Packet otherIdentifier = withByte(wrong, 0, 1);
        const Packet noResponse = withByte(wrong, 2, 0x80);
        const Packet otherName = withByte(wrong, 13, 1);
        const Packet otherType = withByte(wrong, answer.size() - 19, 1);
        const Packet cutRecord(wrong.begin(), wrong.end() - 1);
        return std::vector<Packet>{{},        {0xFF},    Packet(4000, 0xC0), otherIdentifier, noResponse,
                                   otherName, otherType, cutRecord,          query,           answer};
    });
    const ToolRun result = dig("x.example.test");
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output.contains("192.0.2.7")) << result.output;
}

TEST_F(Dig, EndsWithoutAnAnswerWhenOnlyGarbageOrNothingComes) {
    const auto expectNoServer = [](const char* what) {
        const ToolRun result = dig("example.test");
        EXPECT_EQ(result.status, 9) << what;
        EXPECT_EQ(queryTime(result.output), -1) << what << result.output;
        EXPECT_TRUE(result.output.contains("no servers could be reached")) << what;
        EXPECT_LT(result.wallMilliseconds, 1500) << what;
    };
    expectNoServer("nobody listens");
    // A name that points to itself, in a message that is else an answer.
    const Answering looping = [](const Packet& query) {
        Packet answer = answerTo(query);
        answer[12] = 0xC0;
        answer[13] = 12;
        return std::vector(20, answer);
    };
    const NameServer server(looping, [](const Packet&) { return std::vector<Packet>{}; });
    expectNoServer("garbage");
    setResolverConfiguration("nameserver 127.0.0.1\noptions use-vc\n");
    expectNoServer("a connection that closes");
}

TEST_F(Dig, AsksAgainOverTCPWhenTheAnswerWasCut) {
    const NameServer server(
        [](const Packet& query) { return std::vector<Packet>{withByte(answerTo(query, 0, 0), 2, 0x02)}; },
        [](const Packet& query) { return std::vector<Packet>{answerTo(query, 0, 90)}; });
    const ToolRun result = dig("big.example.test");
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output.contains("ANSWER: 90")) << result.output;
    EXPECT_TRUE(result.output.contains("(TCP)"));
}

TEST_F(Dig, GoesToTheNextServerAndKnowsIPv6) {
    setResolverConfiguration("nameserver 192.0.2.53\nnameserver ::1\n");
    const NameServer server(answered);
    const ToolRun result = dig("example.test");
    EXPECT_TRUE(result.output.contains("192.0.2.53#53: Network is unreachable")) << result.output;
    EXPECT_TRUE(result.output.contains("SERVER: ::1#53")) << result.output;
}

TEST_F(Dig, AsksForExactlyTheName) {
    setResolverConfiguration("search wrong.test\noptions ndots:5\nnameserver 127.0.0.1\n");
    Packet lastQuery;
    const NameServer server([&](const Packet& query) {
        lastQuery = query;
        return answered(query);
    });
    EXPECT_EQ(dig("a.b").status, 0);
    const Packet question(lastQuery.begin() + 12, lastQuery.end());
    EXPECT_EQ(question, (Packet{1, 'a', 1, 'b', 0, 0, 1, 0, 1}));
    EXPECT_EQ(lastQuery[2], 0x01);

    for (const std::string& name : {std::string("a..b"), std::string(64, 'x'), std::string(300, 'x') + ".test"}) {
        const ToolRun result = dig(name);
        EXPECT_EQ(result.status, 10) << name;
        EXPECT_EQ(result.output, "");
        EXPECT_TRUE(result.errors.contains("not a legal name"));
    }
}

TEST_F(Dig, MeasuresWhatTheInstalledDigMeasures) {
    if (run({"dig", "-v"}).status != 0)
        GTEST_SKIP() << "needs the installed dig";
    for (const auto delay : {0ms, 35ms, 180ms}) {
        const NameServer server([&](const Packet& query) {
            std::this_thread::sleep_for(delay);
            return answered(query);
        });
        // The least of a few: what a busy machine adds to one of them says nothing.
        int theirs = 10'000, ours = 10'000;
        for (int i = 0; i < 5; ++i) {
            theirs = std::min(theirs, queryTime(run({"dig", "+time=1", "+tries=1", "example.test"}).output));
            ours = std::min(ours, queryTime(dig("example.test").output));
        }
        EXPECT_GE(ours, delay / 1ms);
        EXPECT_NEAR(ours, theirs, 20) << delay / 1ms;
    }
}

} // namespace
} // namespace tolvo::test
