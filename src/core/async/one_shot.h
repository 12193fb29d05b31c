#pragma once

#include "core/async/signal.h"

#include <memory>
#include <optional>

namespace tolvo {

/// A result that arrives once: the bridge from a callback to a task. Copies are the same one-shot; the first value
/// counts and later ones are dropped. One task takes the value. Main thread only.
template<class T>
class OneShot {
public:
    /// Whether this was the first value.
    bool set(T value) const {
        if (state_->isSet)
            return false;
        state_->isSet = true;
        state_->value.emplace(std::move(value));
        state_->arrival.notify();
        return true;
    }

    bool isSet() const { return state_->isSet; }

    /// Waits for the value and takes it. A value that is there already wins over a cancellation.
    Task<T> take(OnCancellation onCancellation = OnCancellation::Throw) const {
        const auto state = state_;
        if (!state->isSet)
            co_await state->arrival.wait(onCancellation);
        co_return std::move(*state->value);
    }

private:
    struct State {
        bool isSet = false;
        std::optional<T> value;
        Signal arrival;
    };

    std::shared_ptr<State> state_ = std::make_shared<State>();
};

} // namespace tolvo
