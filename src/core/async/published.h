#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tolvo {

/// Keeps a subscription alive. It may outlive the published value. Main thread only.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> token) : token_(std::move(token)) {}

private:
    std::shared_ptr<void> token_;
};

/// A value that others can subscribe to. Subscribers are told, in order of subscription, the value that is about to be
/// stored; value() still gives the old one meanwhile. While they are told, they may subscribe (the newcomer hears of
/// later values), unsubscribe (also each other, at once) and set: a value set from within is told and stored first, and
/// the outer one follows it. Setting an equal value tells as well. Main thread only.
template<class T>
class Published {
public:
    using Subscriber = std::function<void(const T& newValue)>;

    explicit Published(T initial = T{}) : state_(std::make_shared<State>(std::move(initial))) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    const T& value() const { return state_->value; }

    void set(T newValue) {
        // A subscriber may end this object; the state stays until the value is stored.
        const auto state = state_;
        const auto subscribers = state->subscribers;
        for (const std::weak_ptr<const Subscriber>& entry : subscribers) {
            if (const auto subscriber = entry.lock())
                (*subscriber)(newValue);
        }
        state->value = std::move(newValue);
    }

    Subscription subscribe(Subscriber subscriber) {
        std::erase_if(state_->subscribers, [](const auto& entry) { return entry.expired(); });
        auto token = std::make_shared<Subscriber>(std::move(subscriber));
        state_->subscribers.push_back(token);
        return Subscription(std::move(token));
    }

private:
    struct State {
        explicit State(T initial) : value(std::move(initial)) {}
        T value;
        std::vector<std::weak_ptr<const Subscriber>> subscribers;
    };

    std::shared_ptr<State> state_;
};

/// Calls back on a new value of any of them, just before it is stored.
template<class... Ts>
std::vector<Subscription> subscribeToEach(const std::function<void()>& onChange, Published<Ts>&... published) {
    std::vector<Subscription> subscriptions;
    (subscriptions.push_back(published.subscribe([onChange](const Ts&) { onChange(); })), ...);
    return subscriptions;
}

} // namespace tolvo
