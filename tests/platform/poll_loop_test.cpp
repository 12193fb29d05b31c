#include "platform/linux/poll_loop.h"

#include <gtest/gtest.h>

#include <sys/eventfd.h>

#include <array>
#include <string>

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

} // namespace
} // namespace tolvo::testing
