#pragma once

#include "core/async/main_loop.h"

#include <functional>
#include <utility>

namespace tolvo {

/// Shows one window's content.
template<class Content>
class ContentDisplaying {
public:
    ContentDisplaying(const ContentDisplaying&) = delete;
    ContentDisplaying& operator=(const ContentDisplaying&) = delete;
    virtual ~ContentDisplaying() = default;

    virtual void show(const Content& content) = 0;

protected:
    ContentDisplaying() = default;
};

/// Keeps a window's display up to date, but only while it is on the screen. Main thread only.
template<class Content>
class LiveContent final {
public:
    LiveContent(MainLoop& loop, std::function<Content()> make) : loop_(loop), make_(std::move(make)) {}

    /// The display, while it is on the screen; null when it isn't. Shows the present content at once.
    void setDisplay(ContentDisplaying<Content>* display) {
        display_ = display;
        update();
    }

    /// A value is about to change. Those that change together are shown together.
    void scheduleUpdate() {
        if (display_ != nullptr && !std::exchange(isUpdateScheduled_, true))
            update_ = loop_.after(updateDelay, [this] { update(); });
    }

private:
    static constexpr Seconds updateDelay{0.03};

    void update() {
        update_.reset();
        isUpdateScheduled_ = false;
        if (display_ != nullptr)
            display_->show(make_());
    }

    MainLoop& loop_;
    std::function<Content()> make_;
    ContentDisplaying<Content>* display_ = nullptr;
    bool isUpdateScheduled_ = false;
    LoopRegistration update_;
};

} // namespace tolvo
