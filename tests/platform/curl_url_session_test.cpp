#include "platform/linux/curl_url_session.h"

#include "core/async/task_scope.h"
#include "platform/linux/poll_loop.h"
#include "tests/support/hostile_server.h"
#include "tests/support/tls_script.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>

namespace tolvo::testing {
namespace {

using Kind = URLSessionError::Kind;

class CurlURLSessionTest : public ::testing::Test {
protected:
    static URLRequest requestOf(const std::string& url) {
        // Small, so that a case which only its time-out ends is over soon.
        return {.url = *URL::parse(url), .timeout = 0.3, .totalTimeout = 0.3, .keptBodyLimit = 65536};
    }

    Task<void> keep(Task<URLSessionOutcome> task, std::optional<URLSessionOutcome>& outcome) {
        outcome.emplace(co_await std::move(task));
        loop_.quit();
    }

    void runUntil(const std::function<bool()>& isReached) {
        const MonotonicTime end = loop_.now() + std::chrono::seconds(10);
        while (!isReached() && loop_.now() < end) {
            const LoopRegistration tick = loop_.after(Seconds(0.002), [this] { loop_.quit(); });
            loop_.run();
        }
        EXPECT_TRUE(isReached()) << "not within ten seconds";
    }

    std::optional<URLSessionOutcome> outcomeOf(URLRequest request) {
        std::optional<URLSessionOutcome> outcome;
        TaskScope scope(loop_);
        scope.start(keep(session_.data(std::move(request)), outcome));
        runUntil([&] { return outcome.has_value(); });
        return outcome;
    }

    PollLoop loop_;
    SelfSignedCertificate certificate_;
    CurlURLSession session_{loop_, {.userAgent = "Tolvo/1.2.3", .certificates = {.bundleFile = certificate_.file()}}};
};

HostileServer::Script answering(std::string answer) {
    return [answer = std::move(answer)](Peer& peer) {
        peer.receiveHead();
        peer.send(answer);
    };
}

HostileServer::Script repeating(std::string first, std::string rest, int pauseMilliseconds = 0) {
    return [=](Peer& peer) {
        peer.receiveHead();
        peer.send(first);
        while (!peer.waitForClose(pauseMilliseconds) && peer.send(rest)) {
        }
    };
}

/// Keeps the connection for request after request.
void serve(Peer& peer) {
    while (true) {
        const std::string head = peer.receiveHead();
        if (head.empty() || head.find("Expect:") != std::string::npos)
            return;
        const auto length = head.find("Content-Length: ");
        if (length != std::string::npos && !peer.receive(std::stoul(head.substr(length + 16))))
            return;
        peer.send("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nok");
    }
}

struct ResponseCase {
    const char* name;
    HostileServer::Script script;
    int statusCode;
    std::string body;
    std::optional<std::string> location;
};

TEST_F(CurlURLSessionTest, TakesEveryAnswerAsItIs) {
    const std::string kept(65536, 'x');
    const ResponseCase cases[] = {
        {"redirect to a file", answering("HTTP/1.1 302 Found\r\nLOCATION:  file:///etc/passwd \r\n\r\n"), 302, "",
         "file:///etc/passwd"},
        {"redirect to nowhere", answering("HTTP/1.1 304 Not Modified\r\n\r\n"), 304, "", std::nullopt},
        {"invalid UTF-8", answering("HTTP/1.1 200 OK\r\n\r\n\xC3\x28\xFF"), 200, "\xC3\x28\xFF", std::nullopt},
        {"no content", answering("HTTP/1.1 204 No Content\r\n\r\n"), 204, "", std::nullopt},
        {"error", answering("HTTP/1.0 503 No\r\nContent-Length: 2\r\n\r\nno"), 503, "no", std::nullopt},
        {"interim heads", answering("HTTP/1.1 103 Early\r\nLocation: /early\r\n\r\nHTTP/1.1 200 OK\r\n\r\nbody"), 200,
         "body", std::nullopt},
        {"trailer",
         answering("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\na\r\n0\r\nLocation: x\r\n\r\n"), 200, "a",
         std::nullopt},
        {"endless body", repeating("HTTP/1.1 200 OK\r\n\r\n", std::string(1000, 'x')), 200, kept, std::nullopt},
        {"body at the limit", answering("HTTP/1.1 200 OK\r\n\r\n" + kept), 200, kept, std::nullopt},
        {"body beyond the limit, unfinished",
         answering("HTTP/1.1 200 OK\r\nContent-Length: 99999\r\n\r\n" + kept + "x"), 200, kept, std::nullopt},
    };
    for (const ResponseCase& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        const HostileServer server(testCase.script);
        const auto outcome = outcomeOf(requestOf(server.url()));
        ASSERT_TRUE(outcome && outcome->has_value()) << (outcome ? outcome->error().description : "");
        EXPECT_EQ((*outcome)->statusCode, testCase.statusCode);
        EXPECT_EQ((*outcome)->body, testCase.body);
        EXPECT_EQ((*outcome)->receivedBodyBytes, static_cast<std::int64_t>(testCase.body.size()));
        EXPECT_EQ((*outcome)->header("location"), testCase.location);
    }
}

TEST_F(CurlURLSessionTest, EndsEveryBadAnswerWithItsKind) {
    const std::string head = "HTTP/1.1 200 OK\r\n";
    struct {
        const char* name;
        HostileServer::Script script;
        Kind kind;
    } const cases[] = {
        {"no answer", [](Peer& peer) { peer.waitForClose(); }, Kind::TimedOut},
        {"a byte at a time", repeating(head + "\r\n", "x", 20), Kind::TimedOut},
        {"a header a time", repeating(head, "a: b\r\n", 20), Kind::TimedOut},
        {"stall in the middle", repeating(head + "Content-Length: 9\r\n\r\nx", "", 20), Kind::TimedOut},
        {"endless headers", repeating(head, "a: b\r\n"), Kind::NotHTTP},
        {"endless header line", repeating(head + "a: ", std::string(1000, 'x')), Kind::NotHTTP},
        {"endless interim heads", repeating("", "HTTP/1.1 100 Continue\r\n\r\n"), Kind::NotHTTP},
        {"another protocol", answering("SSH-2.0-server\r\n"), Kind::NotHTTP},
        {"close before the answer", answering(""), Kind::ConnectionLost},
        {"close in the head", answering(head + "Conte"), Kind::ConnectionLost},
        {"close in the body", answering(head + "Content-Length: 9\r\n\r\nx"), Kind::ConnectionLost},
        {"bad chunk", answering(head + "Transfer-Encoding: chunked\r\n\r\nzz\r\n"), Kind::ConnectionLost},
        {"endless chunk size", repeating(head + "Transfer-Encoding: chunked\r\n\r\n", "0000"), Kind::ConnectionLost},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        const HostileServer server(testCase.script);
        const auto outcome = outcomeOf(requestOf(server.url()));
        ASSERT_TRUE(outcome);
        ASSERT_FALSE(outcome->has_value()) << (*outcome)->statusCode;
        EXPECT_EQ(outcome->error().kind, testCase.kind) << outcome->error().description;
        runUntil([&] { return server.endedCount() == server.connectionCount(); });
    }
}

TEST_F(CurlURLSessionTest, ReachesOnlyWebServers) {
    std::string closed;
    {
        closed = HostileServer([](Peer&) {}).url();
    }
    const std::pair<std::string, Kind> cases[] = {
        {"file:///etc/passwd", Kind::UnsupportedURL},
        {"ftp://127.0.0.1/", Kind::UnsupportedURL},
        {"/relative", Kind::UnsupportedURL},
        {"http://", Kind::UnsupportedURL},
        {"http://" + std::string(70, 'n'), Kind::CannotResolve},
        {closed, Kind::CannotConnect},
    };
    for (const auto& [url, kind] : cases) {
        SCOPED_TRACE(url);
        auto request = requestOf(url);
        request.totalTimeout = 20;
        request.timeout = 20;
        const auto outcome = outcomeOf(std::move(request));
        ASSERT_TRUE(outcome && !outcome->has_value());
        EXPECT_EQ(outcome->error().kind, kind) << outcome->error().description;
    }
}

TEST_F(CurlURLSessionTest, TrustsOnlyTheGivenAuthorities) {
    const SelfSignedCertificate unknown;
    const std::string answer = "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nok";
    const HostileServer trusted(certificate_.answerOverTLS(answer));
    const HostileServer untrusted(unknown.answerOverTLS(answer));
    const HostileServer plain(answering(answer));
    auto outcome = outcomeOf(requestOf(trusted.url("https")));
    ASSERT_TRUE(outcome && outcome->has_value()) << outcome->error().description;
    EXPECT_EQ((*outcome)->body, "ok");
    for (const HostileServer* server : {&untrusted, &plain}) {
        outcome = outcomeOf(requestOf(server->url("https")));
        ASSERT_TRUE(outcome && !outcome->has_value());
        EXPECT_EQ(outcome->error().kind, server == &plain ? Kind::TimedOut : Kind::Security);
    }
}

TEST_F(CurlURLSessionTest, OnlyStandstillEndsALargeTransfer) {
    struct {
        const char* name;
        HostileServer::Script script;
        bool isEnough;
    } const cases[] = {
        {"slow upload",
         [](Peer& peer) {
             peer.receiveHead();
             for (int i = 0; i < 20 && peer.receive(1'000'000); ++i)
                 peer.pause(20);
             peer.send("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");
         },
         true},
        {"slow download",
         [](Peer& peer) {
             peer.receiveHead();
             peer.receive(20'000'000);
             peer.send("HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\n");
             for (int i = 0; i < 20 && peer.send("x"); ++i)
                 peer.pause(20);
         },
         true},
        {"upload that nobody reads", [](Peer& peer) { peer.pause(-1); }, false},
        {"upload that nobody answers", [](Peer& peer) { peer.waitForClose(); }, false},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        const HostileServer server(testCase.script);
        URLRequest request{.url = *URL::parse(server.url()), .method = HTTPMethod::Post, .timeout = 0.2};
        request.body = std::make_shared<const std::string>(20'000'000, 'x');
        request.responseBody = ResponseBody::Count;
        const auto outcome = outcomeOf(std::move(request));
        ASSERT_TRUE(outcome);
        EXPECT_EQ(outcome->has_value(), testCase.isEnough);
        EXPECT_TRUE(testCase.isEnough || outcome->error().kind == Kind::TimedOut);
    }
}

TEST_F(CurlURLSessionTest, UsesConnectionsAsAsked) {
    const auto body = std::make_shared<const std::string>(3'000'000, '\xA5');
    struct {
        ConnectionUse use;
        int afterFirstRound;
        int afterSecondRound;
    } const cases[] = {{ConnectionUse::Own, 4, 4}, {ConnectionUse::Fresh, 4, 8}};
    for (const auto& [use, first, second] : cases) {
        const HostileServer server(serve);
        for (const int expected : {first, second}) {
            int okCount = 0;
            TaskScope scope(loop_);
            const auto upload = [](URLSession& session, URLRequest request, int& okCount) -> Task<void> {
                const auto outcome = co_await session.data(std::move(request));
                okCount += outcome && outcome->body == "ok" ? 1 : 0;
            };
            for (int i = 0; i < 4; ++i) {
                URLRequest request{.url = *URL::parse(server.url()), .method = HTTPMethod::Post, .timeout = 5};
                request.body = body;
                request.connectionUse = use;
                scope.start(upload(session_, std::move(request), okCount));
            }
            runUntil([&] { return scope.runningCount() == 0; });
            EXPECT_EQ(okCount, 4);
            EXPECT_EQ(server.connectionCount(), expected);
        }
    }
}

TEST_F(CurlURLSessionTest, SendsWhatItWasGivenAndNoMore) {
    std::string head;
    const HostileServer server([&](Peer& peer) {
        head = peer.receiveHead();
        peer.send("HTTP/1.1 204 No\r\nSet-Cookie: a=b\r\n\r\n");
    });
    auto request = requestOf(server.url());
    request.headers = {{"Cache-Control", "no-cache"}};
    ASSERT_TRUE(outcomeOf(request));
    ASSERT_TRUE(outcomeOf(request));
    EXPECT_EQ(head, "GET / HTTP/1.1\r\nHost: " + server.url().substr(7, server.url().size() - 8) +
                        "\r\nUser-Agent: Tolvo/1.2.3\r\nAccept: */*\r\nCache-Control: no-cache\r\n\r\n");
}

enum class Ending { Cancel, Drop };

TEST_F(CurlURLSessionTest, EndsTheTransferWithItsTask) {
    const HostileServer::Script scripts[] = {
        [](Peer& peer) { peer.waitForClose(); },
        repeating("HTTP/1.1 200 OK\r\n", "a: b\r\n", 5),
        repeating("HTTP/1.1 200 OK\r\n\r\n", "x", 5),
    };
    for (const auto& script : scripts) {
        for (const Ending ending : {Ending::Cancel, Ending::Drop}) {
            const HostileServer server(script);
            std::optional<URLSessionOutcome> outcome;
            std::optional<TaskScope> scope(loop_);
            URLRequest request{.url = *URL::parse(server.url()), .method = HTTPMethod::Post, .timeout = 60};
            request.body = std::make_shared<const std::string>(20'000'000, 'x');
            const TaskHandle task = scope->start(keep(session_.data(std::move(request)), outcome));
            runUntil([&] { return server.connectionCount() == 1; });
            if (ending == Ending::Cancel) {
                task.cancel();
                runUntil([&] { return task.hasEnded(); });
            }
            scope.reset();
            runUntil([&] { return server.endedCount() == 1; });
            EXPECT_FALSE(outcome);
        }
    }
}

TEST_F(CurlURLSessionTest, CancelledBeforeItsStartItConnectsToNobody) {
    const HostileServer server(answering("HTTP/1.1 204 No\r\n\r\n"));
    std::optional<URLSessionOutcome> outcome;
    TaskScope scope(loop_);
    const TaskHandle task = scope.start(keep(session_.data(requestOf(server.url())), outcome));
    task.cancel();
    runUntil([&] { return task.hasEnded(); });
    ASSERT_TRUE(outcomeOf(requestOf(server.url())));
    EXPECT_EQ(server.connectionCount(), 1);
    EXPECT_FALSE(outcome);
}

TEST_F(CurlURLSessionTest, EndsWithTransfersInFlight) {
    const HostileServer server([](Peer& peer) { peer.waitForClose(); });
    auto session = std::make_unique<CurlURLSession>(loop_, CurlTransferSettings{});
    {
        std::optional<URLSessionOutcome> outcome;
        TaskScope scope(loop_);
        scope.start(keep(session->data(requestOf(server.url())), outcome));
        runUntil([&] { return server.connectionCount() == 1; });
    }
    session.reset();
    runUntil([&] { return server.endedCount() == 1; });
}

} // namespace
} // namespace tolvo::testing
