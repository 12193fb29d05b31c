#include "platform/linux/curl_url_session.h"

#include "core/async/task_scope.h"
#include "platform/linux/poll_loop.h"
#include "tests/support/hostile_server.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>

namespace tolvo::testing {
namespace {

/// "200 ok", "302  -> file:///", "TimedOut".
std::string described(const std::optional<URLSessionOutcome>& outcome) {
    constexpr std::array kinds{"UnsupportedURL", "CannotResolve", "CannotConnect", "TimedOut",
                               "Security",       "NotHTTP",       "ConnectionLost"};
    if (!outcome || !*outcome)
        return outcome ? kinds.at(static_cast<std::size_t>(outcome->error().kind)) : "nothing";
    const auto location = (*outcome)->header("location");
    return std::to_string((*outcome)->statusCode) + " " + (*outcome)->body + (location ? " -> " + *location : "");
}

class CurlURLSessionTest : public ::testing::Test {
protected:
    static URLRequest get(const std::string& url, double timeout = 5) {
        return {.url = *URL::parse(url), .timeout = timeout, .totalTimeout = timeout, .bodyLimit = 10'000};
    }
    /// Ends by standstill alone.
    static URLRequest post(const std::string& url, double timeout) {
        URLRequest request{.url = *URL::parse(url), .method = HTTPMethod::Post, .timeout = timeout};
        request.body = std::make_shared<const std::string>(1000, 'x');
        request.bodyLength = 20'000'000;
        return request;
    }
    static Task<void> keep(Task<URLSessionOutcome> task, std::optional<URLSessionOutcome>& outcome) {
        outcome.emplace(co_await std::move(task));
    }

    void runUntil(const std::function<bool()>& isReached) {
        const MonotonicTime end = loop.now() + std::chrono::seconds(10);
        while (!isReached() && loop.now() < end) {
            const LoopRegistration tick = loop.after(Seconds(0.002), [this] { loop.quit(); });
            loop.run();
        }
        EXPECT_TRUE(isReached()) << "not within ten seconds";
    }
    std::optional<URLSessionOutcome> outcomeOf(URLRequest request) {
        std::optional<URLSessionOutcome> outcome;
        TaskScope scope(loop);
        scope.start(keep(session->data(std::move(request)), outcome));
        runUntil([&] { return outcome.has_value(); });
        return outcome;
    }

    PollLoop loop;
    std::unique_ptr<CurlURLSession> session =
        std::make_unique<CurlURLSession>(loop, CurlTransferSettings{"Tolvo/1.2.3", {}});
};

/// Answers with the first text, then with the rest again and again.
HostileServer::Script sending(std::string first, std::string rest = {}, int pauseMilliseconds = 0) {
    return [=](const Peer& peer) {
        peer.receiveHead();
        peer.send(first);
        while (!rest.empty() && !peer.waitForClose(pauseMilliseconds) && peer.send(rest)) {
        }
    };
}
void staySilent(const Peer& peer) {
    peer.waitForClose();
}

TEST_F(CurlURLSessionTest, EveryAnswerEndsInItsOutcome) {
    const std::string ok = "HTTP/1.1 200 OK\r\n";
    const std::string chunked = ok + "Transfer-Encoding: chunked\r\n\r\n";
    const std::string atLimit(10'000, 'x');
    struct {
        const char* name;
        HostileServer::Script script;
        std::string outcome;
    } const cases[] = {
        {"redirect to a file", sending("HTTP/1.1 302 Found\r\nLOCATION:  file:///x \r\n\r\n"), "302  -> file:///x"},
        {"invalid UTF-8", sending(ok + "\r\n\xC3\x28\xFF"), "200 \xC3\x28\xFF"},
        {"interim heads", sending("HTTP/1.1 103 Early\r\nLocation: /a\r\n\r\n" + ok + "\r\nbody"), "200 body"},
        {"trailer", sending(chunked + "1\r\na\r\n0\r\nLocation: /a\r\n\r\n"), "200 a"},
        {"endless body", sending(ok + "\r\n", std::string(1000, 'x')), "200 " + atLimit},
        {"body at the limit", sending(ok + "\r\n" + atLimit), "200 " + atLimit},
        {"no answer", staySilent, "TimedOut"},
        {"a byte at a time", sending(ok + "\r\n", "x", 20), "TimedOut"},
        {"stall in the middle", sending(ok + "Content-Length: 9\r\n\r\nx", "x", 5000), "TimedOut"},
        {"endless headers", sending(ok, "a: b\r\n"), "NotHTTP"},
        {"endless header line", sending(ok + "a: ", std::string(1000, 'x')), "NotHTTP"},
        {"endless interim heads", sending("", "HTTP/1.1 100 Continue\r\n\r\n"), "NotHTTP"},
        {"another protocol", sending("SSH-2.0-server\r\n"), "NotHTTP"},
        {"close before the answer", sending(""), "ConnectionLost"},
        {"close in the head", sending(ok + "Conte"), "ConnectionLost"},
        {"close in the body", sending(ok + "Content-Length: 9\r\n\r\nx"), "ConnectionLost"},
        {"bad chunk", sending(chunked + "zz\r\n"), "ConnectionLost"},
    };
    for (const auto& [name, script, expected] : cases) {
        HostileServer server(script);
        EXPECT_EQ(described(outcomeOf(get(server.url(), expected == "TimedOut" ? 0.2 : 5))), expected) << name;
        runUntil([&] { return server.endedCount == server.connectionCount; });
    }
}

TEST_F(CurlURLSessionTest, ReachesOnlyWebServers) {
    const std::string closed = HostileServer(staySilent).url();
    const std::pair<std::string, std::string> cases[] = {
        {"file:///etc/passwd", "UnsupportedURL"},
        {"ftp://127.0.0.1/", "UnsupportedURL"},
        {"/a", "UnsupportedURL"},
        {"http://" + std::string(70, 'n'), "CannotResolve"},
        {closed, "CannotConnect"},
    };
    for (const auto& [url, expected] : cases)
        EXPECT_EQ(described(outcomeOf(get(url))), expected) << url;
}

TEST_F(CurlURLSessionTest, TrustsOnlyTheGivenAuthorities) {
    std::string folder = std::filesystem::temp_directory_path() / "tolvo-XXXXXX";
    ASSERT_TRUE(::mkdtemp(folder.data()));
    const std::string serve = "cd " + folder + R"( && exec 2>log && { test -e cert || openssl req -x509 -newkey ec \
        -pkeyopt ec_paramgen_curve:P-256 -nodes -keyout key -out cert -subj /CN=a -addext subjectAltName=IP:127.0.0.1; } &&
        exec openssl s_server -accept 127.0.0.1:0 -naccept 1 -cert cert -key key -WWW)";
    for (const auto& [bundle, expected] : {std::pair{folder + "/cert", "200 "}, {"", "Security"}}) {
        FILE* const server = ::popen(serve.c_str(), "r");
        std::array<char, 200> port{};
        while (std::fscanf(server, "ACCEPT 127.0.0.1:%99s", port.data()) == 0 && std::fgetc(server) != EOF) {
        }
        session = std::make_unique<CurlURLSession>(loop, CurlTransferSettings{"", {.bundleFile = bundle}});
        const auto outcome = described(outcomeOf(get("https://127.0.0.1:" + std::string(port.data()) + "/cert")));
        EXPECT_TRUE(outcome.starts_with(expected)) << outcome;
        ::pclose(server);
    }
    std::filesystem::remove_all(folder);
}

/// The sockets that closed before their server's did, and which the kernel keeps for a while.
int waitingSockets(const std::string& url) {
    std::array<char, 16> pattern{};
    std::snprintf(pattern.data(), pattern.size(), ":%04X 06 ", std::stoi(url.substr(url.rfind(':') + 1)));
    std::ifstream table("/proc/net/tcp");
    int count = 0;
    for (std::string line; std::getline(table, line);)
        count += line.contains(pattern.data()) ? 1 : 0;
    return count;
}

TEST_F(CurlURLSessionTest, UsesConnectionsAsAsked) {
    for (const auto& [use, afterTwoRounds] : {std::pair{ConnectionUse::Own, 4}, {ConnectionUse::Fresh, 8}}) {
        HostileServer server([](const Peer& peer) {
            std::string head;
            while (!(head = peer.receiveHead()).empty() && head.find("Expect") == std::string::npos)
                peer.receive(20'000'000) && peer.send("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nok");
        });
        for (int round = 0; round < 2; ++round) {
            std::array<std::optional<URLSessionOutcome>, 4> outcomes;
            TaskScope scope(loop);
            for (auto& outcome : outcomes) {
                auto request = post(server.url(), 5);
                request.connectionUse = use;
                scope.start(keep(session->data(std::move(request)), outcome));
            }
            runUntil([&] { return scope.runningCount() == 0; });
            for (const auto& outcome : outcomes)
                EXPECT_EQ(described(outcome), "200 ok");
        }
        EXPECT_EQ(server.connectionCount, afterTwoRounds);
        EXPECT_EQ(waitingSockets(server.url()), 0) << "the program's own probes would count as pressure";
    }
}

TEST_F(CurlURLSessionTest, TransferEndsWithItsTaskAndItsSession) {
    for (const auto& script : {HostileServer::Script(staySilent), sending("HTTP/1.1 200 OK\r\n", "a: b\r\n", 5),
                               sending("HTTP/1.1 200 OK\r\n\r\n", "x", 5)}) {
        for (const bool isCancelled : {true, false}) {
            HostileServer server(script);
            std::optional<URLSessionOutcome> outcome;
            std::optional<TaskScope> scope(loop);
            const TaskHandle task = scope->start(keep(session->data(post(server.url(), 60)), outcome));
            runUntil([&] { return server.connectionCount == 1; });
            if (isCancelled) {
                task.cancel();
                runUntil([&] { return task.hasEnded() && server.endedCount == 1; });
            }
            scope.reset();
            session = std::make_unique<CurlURLSession>(loop, CurlTransferSettings{});
            runUntil([&] { return server.endedCount == 1; });
            EXPECT_FALSE(outcome);
        }
    }
}

} // namespace
} // namespace tolvo::testing
