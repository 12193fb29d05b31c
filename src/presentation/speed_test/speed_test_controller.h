#pragma once

#include "platform/services/locale_formats.h"
#include "presentation/speed_test/speed_test_content.h"
#include "presentation/tool_window/live_content.h"

#include <functional>
#include <string>
#include <vector>

namespace tolvo {

/// Between the speed test and its window. A test goes on while the window is closed. Main thread only.
class SpeedTestController final {
public:
    /// The tag says whose server measures; the notice, what will be transferred.
    SpeedTestController(MainLoop& loop, SpeedTestSources sources, SpeedTestActions actions, std::string serverTag,
                        std::string notice, const LocaleFormats& formats);

    const std::string& serverTag() const { return serverTag_; }
    const std::string& notice() const { return notice_; }
    void setDisplay(ContentDisplaying<SpeedTestContent>* display) { live_.setDisplay(display); }
    /// Cancels while a test is running, and starts one otherwise.
    void pressButton();

private:
    SpeedTestContent content() const;

    SpeedTestSources sources_;
    SpeedTestActions actions_;
    std::string serverTag_;
    std::string notice_;
    const LocaleFormats& formats_;
    LiveContent<SpeedTestContent> live_;
    std::vector<Subscription> subscriptions_;
};

} // namespace tolvo
