#pragma once

#include "presentation/panel/panel_controller.h"
#include "tests/support/dashboard_values.h"

#include "core/async/signal.h"

#include <string>
#include <vector>

namespace tolvo::testing {

/// English in UTC, whatever the machine speaks.
struct FixedLocaleFormats final : LocaleFormats {
    std::string decimalSeparator() const override { return "."; }
    std::string timeOfDay(std::chrono::system_clock::time_point time) const override {
        const auto second = std::chrono::floor<std::chrono::seconds>(time.time_since_epoch()).count() % 86400;
        return "second " + std::to_string(second);
    }
    std::string shortTime(std::chrono::system_clock::time_point time) const override { return timeOfDay(time); }
    std::string longDate(std::chrono::year_month_day date) const override {
        return std::to_string(static_cast<unsigned>(date.day())) + "." +
               std::to_string(static_cast<unsigned>(date.month())) + "." +
               std::to_string(static_cast<int>(date.year()));
    }
    std::chrono::year_month_day localDate(std::chrono::system_clock::time_point time) const override {
        return std::chrono::floor<std::chrono::days>(time);
    }
};

/// All that the panels show, to be set at will, and what their controls asked for.
struct PanelValues {
    DashboardValues dashboard;
    Published<LocationPermissionStatus> location{LocationPermissionStatus::Authorized};
    Published<std::vector<ConnectionPressureResult>> connectionHistory;
    Published<bool> isBatteryFriendly{true};
    Published<bool> isLoginItem{false};
    Published<bool> requiresApproval{false};
    Published<std::optional<std::string>> update;
    std::optional<std::string> loginItemError;
    Signal updateCheckEnds;
    FixedLocaleFormats formats;
    std::vector<std::string> requests;

    Task<void> checkForUpdate() {
        requests.push_back("check for update");
        co_await updateCheckEnds.wait();
    }

    std::expected<void, std::string> setLoginItem(bool isEnabled) {
        requests.push_back(isEnabled ? "login item on" : "login item off");
        if (loginItemError)
            return std::unexpected(*loginItemError);
        isLoginItem.set(isEnabled);
        return {};
    }

    SettingsSources settings() {
        return {isBatteryFriendly,
                [this](bool isOn) { isBatteryFriendly.set(isOn); },
                {isLoginItem, requiresApproval, [this](bool isOn) { return setLoginItem(isOn); },
                 [this] { requests.push_back("login item settings"); }},
                {[this] { return update.value(); },
                 [this](std::function<void()> onChange) {
                     return update.subscribe([onChange](const auto&) { onChange(); });
                 },
                 [this] { return checkForUpdate(); }, [this] { requests.push_back("download"); }},
                {"v1.2 (3)", "abc", "today"}};
    }

    PanelActions actions() {
        return {[this](bool isOn) { requests.push_back(isOn ? "monitoring on" : "monitoring off"); },
                [this] { requests.push_back("location"); },
                [this](double height) { requests.push_back("height " + std::to_string(static_cast<int>(height))); },
                [this](ToolWindowKind kind) { requests.push_back(toolName(kind)); },
                [this] { requests.push_back("quit"); }};
    }

    static std::string toolName(ToolWindowKind kind) {
        constexpr const char* names[] = {"radar", "speed test", "channel scan", "export"};
        return names[static_cast<std::size_t>(kind)];
    }
};

} // namespace tolvo::testing
