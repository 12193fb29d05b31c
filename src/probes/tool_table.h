#pragma once

#include <array>
#include <set>
#include <string>
#include <string_view>

namespace tolvo {

/// A system tool that the probes run, under the one path by which they know it.
struct SystemTool {
    std::string_view name;
    std::string_view path;
};

inline constexpr std::array<SystemTool, 7> toolTable{{
    {"ping", "/sbin/ping"},
    {"ping6", "/sbin/ping6"},
    {"dig", "/usr/bin/dig"},
    {"netstat", "/usr/sbin/netstat"},
    {"scutil", "/usr/sbin/scutil"},
    {"ifconfig", "/sbin/ifconfig"},
    {"ipconfig", "/usr/sbin/ipconfig"},
}};

/// The paths of the table, for the runners' allow-lists.
std::set<std::string> allowedToolPaths();

} // namespace tolvo
