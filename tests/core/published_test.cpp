#include "core/async/published.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tolvo::testing {
namespace {

using Log = std::vector<std::string>;

TEST(Published, TellsInOrderOfSubscriptionJustBeforeStoring) {
    Published<int> number(1);
    Log log;
    const auto teller = [&](std::string name) {
        return number.subscribe([&, name](const int& value) {
            log.push_back(name + std::to_string(value) + " old " + std::to_string(number.value()));
        });
    };
    const auto a = teller("a");
    auto b = teller("b");
    number.set(2);
    b = Subscription();
    number.set(2);
    EXPECT_EQ(log, (Log{"a2 old 1", "b2 old 1", "a2 old 2"}));
}

TEST(Published, SubscribersMaySubscribeUnsubscribeAndSetWhileTold) {
    Published<int> number(0);
    Log log;
    std::optional<Subscription> second;
    std::optional<Subscription> newcomer;
    const auto first = number.subscribe([&](const int& value) {
        log.push_back("first " + std::to_string(value));
        if (value == 1)
            number.set(10);
        if (value == 10)
            newcomer = number.subscribe([&](const int& v) { log.push_back("newcomer " + std::to_string(v)); });
        if (value == 2)
            second.reset();
    });
    second = number.subscribe([&](const int& value) { log.push_back("second " + std::to_string(value)); });
    number.set(1);
    EXPECT_EQ(number.value(), 1) << "the outer value is stored last";
    number.set(2);
    EXPECT_EQ(log, (Log{"first 1", "first 10", "second 10", "second 1", "first 2", "newcomer 2"}));
}

TEST(Published, MayEndWhileItTellsAndBeforeItsSubscriptions) {
    auto text = std::make_unique<Published<std::string>>("old");
    int told = 0;
    const auto ending = text->subscribe([&](const std::string&) { text.reset(); });
    const auto after = text->subscribe([&](const std::string& value) { told += value == "new"; });
    text->set("new");
    EXPECT_EQ(told, 1);
}

} // namespace
} // namespace tolvo::testing
