#include "platform/qt/qt_main_loop.h"
#include "platform/qt/running_instance.h"
#include "tests/support/eventually.h"
#include "tests/support/qt_session_bus.h"

#include <gtest/gtest.h>

#include <thread>

namespace tolvo::testing {
namespace {

struct Start {
    QtMainLoop loop;
    SessionBus bus{loop};
    RunningInstance instance{bus};
};

TEST(RunningInstance, ASecondStartAsksTheFirstToShowItself) {
    QtSessionBus daemon;
    Start first;
    int presented = 0;
    first.instance.onPresent = [&] { ++presented; };
    first.bus.connect();
    EXPECT_TRUE(first.instance.isFirst());
    bool isSecondFirst = true;
    std::jthread second([&] {
        Start start;
        start.bus.connect();
        isSecondFirst = start.instance.isFirst();
        start.instance.presentFirst();
    });
    EXPECT_TRUE(eventually([&] { return presented == 1; }));
    second.join();
    EXPECT_FALSE(isSecondFirst);
    daemon.stop();
    Start alone;
    alone.bus.connect();
    EXPECT_TRUE(alone.instance.isFirst()) << "without a bus there is nobody to find";
}

} // namespace
} // namespace tolvo::testing
