#pragma once

#include "core/model/wall_time.h"
#include "core/task_sleeper.h"
#include "platform/linux/built_bundle_information.h"
#include "platform/linux/curl_url_session.h"
#include "platform/linux/inet_address_parser.h"
#include "platform/linux/json_file_user_defaults.h"
#include "platform/linux/logind_sleep_notifier.h"
#include "platform/linux/netlink_path_monitor.h"
#include "platform/linux/posix_process_service.h"
#include "platform/linux/tool_server_process_service.h"
#include "platform/linux/unguarded_location_manager.h"
#include "platform/linux/xdg_workspace.h"
#include "platform/re2/re2_regular_expression.h"
#include "platform/services/wifi_client.h"

#include <memory>

namespace tolvo {

/// The operating system's services that the program stands on, one of each.
class SystemServices {
public:
    /// Without a workspace of the desktop's own, addresses are opened through xdg-open.
    SystemServices(MainLoop& loop, Workspace* desktopWorkspace);
    SystemServices(const SystemServices&) = delete;
    SystemServices& operator=(const SystemServices&) = delete;

    MainLoop& loop;
    BuiltBundleInformation bundle;
    TaskSleeper sleeper;
    DateProvider dateProvider = [] { return std::chrono::system_clock::now(); };
    JsonFileUserDefaults userDefaults;

private:
    PosixProcessService programs_;

public:
    ToolServerProcessService processService;

private:
    XdgWorkspace xdgWorkspace_;

public:
    Workspace& workspace;
    UnguardedLocationManager locationManager;
    Re2RegularExpressionCompiler regularExpressions;
    InetAddressParser addressParser;
    NetlinkPathMonitor pathMonitor;
    LogindSleepNotifier sleepNotifications;
    CurlURLSession urlSession;
    /// Whether the Wi-Fi that is read is a simulated one, because the user asked for it.
    bool isAirSimulated;
    /// The Wi-Fi hardware, or the simulated air in its place.
    std::unique_ptr<WiFiClient> wifiClient;
};

} // namespace tolvo
