#include "platform/linux/poll_loop.h"

#include <gtest/gtest.h>

#include <sys/eventfd.h>

#include <array>
#include <limits>
#include <string>
#include <thread>

namespace tolvo::testing {
namespace {

class PollLoopTest : public ::testing::Test {
protected:
    MainLoop::Work note(char name) {
        return [this, name] { heard += name; };
    }
    void runFor(double seconds) {
        const auto end = loop.after(Seconds(seconds), [this] { loop.quit(); });
        loop.run();
    }

    PollLoop loop;
    std::string heard;
};

TEST_F(PollLoopTest, WorkRunsInOrderAlsoOverAQuit) {
    loop.post([this] {
        loop.post(note('d'));
        heard += 'a';
    });
    loop.post([this] { loop.quit(); });
    loop.post(note('b'));
    loop.run();
    EXPECT_EQ(heard, "a");
    loop.post(note('c'));
    const std::array timers{loop.after(Seconds(0.02), note('4')), loop.after(Seconds(0.01), note('2')),
                            loop.after(Seconds(0.01), note('3')), loop.after(Seconds(0.005), note('1'))};
    runFor(0.03);
    EXPECT_EQ(heard, "abdc1234");
}

TEST_F(PollLoopTest, TimersAreNeverEarlyAndOddDelaysAreHarmless) {
    constexpr double endless = std::numeric_limits<double>::infinity();
    const std::array registrations{loop.after(Seconds(endless), note('!')), loop.after(Seconds(-endless), note('0')),
                                   loop.after(Seconds(std::numeric_limits<double>::quiet_NaN()), note('0'))};
    for (const double delay : {0.0000001, 0.0004, 0.0011, 0.0209}) {
        const auto start = loop.now();
        runFor(delay);
        EXPECT_GE(Seconds(loop.now() - start).count(), delay);
    }
    EXPECT_EQ(heard, "00");
}

TEST_F(PollLoopTest, RegistrationsMayGoWhileTheyOrOthersAreTold) {
    const UniqueDescriptor ready(eventfd(1, 0));
    const std::function<void()> again = [&] { loop.post(again); };
    again();
    std::array<LoopRegistration, 4> registrations;
    const auto removeTwo = [&](std::size_t first) {
        registrations[first].reset();
        registrations[first + 1].reset();
    };
    registrations[0] = loop.after(Seconds(0), [&, text = std::string("a text on the heap")] {
        removeTwo(0);
        heard += text;
    });
    registrations[1] = loop.after(Seconds(0), note('!'));
    registrations[2] = loop.watch(ready.get(), DescriptorEvent::Readable, [&, text = std::string(", another of them")] {
        removeTwo(2);
        heard += text;
    });
    registrations[3] = loop.watch(ready.get(), DescriptorEvent::Readable, note('!'));
    runFor(0.01);
    EXPECT_EQ(heard, "a text on the heap, another of them");
}

TEST(PollLoop, GoesTogetherWithWorkThatHoldsItsRegistrations) {
    PollLoop loop;
    auto inner = loop.watch(0, DescriptorEvent::Readable, [] {});
    auto outer = loop.watch(0, DescriptorEvent::Readable, [kept = std::move(inner)] {});
    auto timer = loop.after(Seconds(9), [kept = std::move(outer)] {});
    loop.post([kept = std::move(timer)] {});
}

TEST_F(PollLoopTest, PostsOfOtherThreadsWakeTheLoopAndKeepTheirOrder) {
    constexpr int perThread = 2'000;
    std::array<int, 3> next{};
    bool isInOrder = true;
    const auto postAll = [&](std::size_t thread) {
        for (int i = 0; i < perThread; ++i) {
            loop.post([&, thread, i] {
                isInOrder = isInOrder && next[thread]++ == i;
                if (next == std::array{perThread, perThread, perThread})
                    loop.quit();
            });
            // Now and then the loop falls asleep in between.
            if (i % 64 == 0)
                std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
    };
    const std::array threads{std::jthread(postAll, 0), std::jthread(postAll, 1), std::jthread(postAll, 2)};
    runFor(20);
    EXPECT_TRUE(isInOrder);
    EXPECT_EQ(next, (std::array{perThread, perThread, perThread}));
}

} // namespace
} // namespace tolvo::testing
