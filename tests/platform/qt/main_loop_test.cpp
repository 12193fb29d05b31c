#include "platform/linux/poll_loop.h"
#include "platform/qt/qt_main_loop.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <thread>

namespace tolvo::testing {
namespace {

/// What every loop of the program promises, held against each of them.
template<class Loop>
class LoopContract : public ::testing::Test {
protected:
    Loop loop;
    std::string order;
};

using Loops = ::testing::Types<PollLoop, QtMainLoop>;
TYPED_TEST_SUITE(LoopContract, Loops);

TYPED_TEST(LoopContract, RunsPostedWorkInOrderAndNeverInsideTheCall) {
    auto& loop = this->loop;
    auto& order = this->order;
    loop.post([&] {
        loop.post([&] { order += "c"; });
        loop.post([&] { loop.quit(); });
        loop.post([&] { order += "left"; });
        order += "a";
    });
    loop.post([&] { order += "b"; });
    EXPECT_EQ(order, "");
    loop.run();
    EXPECT_EQ(order, "abc") << "what is queued behind the quitting work is left";
}

TYPED_TEST(LoopContract, FiresTimersByDeadlineThenByCreationAndNeverEarly) {
    auto& loop = this->loop;
    auto& order = this->order;
    const MonotonicTime start = loop.now();
    const auto last = loop.after(Seconds(0.03), [&] {
        EXPECT_GE(loop.now() - start, std::chrono::milliseconds(30));
        loop.quit();
    });
    const auto second = loop.after(Seconds(0.01), [&] { order += "b"; });
    const auto never = loop.after(Seconds(1e300), [&] { order += "never"; });
    const auto first = loop.after(Seconds(-5), [&] { order += "a"; });
    auto cancelled = loop.after(Seconds(0.005), [&] { order += "cancelled"; });
    const auto cancelling = loop.after(Seconds(0), [&] { cancelled.reset(); });
    loop.run();
    EXPECT_EQ(order, "ab");
}

TYPED_TEST(LoopContract, WatchesUntilTheRegistrationGoesAlsoInsideItsOwnWork) {
    auto& loop = this->loop;
    auto& order = this->order;
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    LoopRegistration watch;
    watch = loop.watch(ends[0], DescriptorEvent::Readable, [&, kept = std::string("x")] {
        char byte = 0;
        if (::read(ends[0], &byte, 1) == 1) {
            order += kept;
            return;
        }
        watch.reset();
        order += kept + "end"; // The work outlives its registration until it returns.
        loop.quit();
    });
    LoopRegistration writable = loop.watch(ends[1], DescriptorEvent::Writable, [&] {
        writable.reset();
        ASSERT_EQ(::write(ends[1], "12", 2), 2);
        ::close(ends[1]);
    });
    loop.run();
    EXPECT_EQ(order, "xxxend");
    ::close(ends[0]);
}

TYPED_TEST(LoopContract, WorkFromOtherThreadsWakesItAndKeepsItsOrder) {
    auto& loop = this->loop;
    constexpr int perThread = 2000;
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
    loop.run();
    EXPECT_TRUE(isInOrder);
}

TYPED_TEST(LoopContract, WorkThatPostsItselfDoesNotStarveTimers) {
    auto& loop = this->loop;
    std::function<void()> again = [&] { loop.post([&] { again(); }); };
    loop.post([&] { again(); });
    const auto timer = loop.after(Seconds(0.005), [&] { loop.quit(); });
    loop.run();
    SUCCEED();
}

} // namespace
} // namespace tolvo::testing
