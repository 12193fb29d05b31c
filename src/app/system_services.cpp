#include "app/system_services.h"

#include "app/wifi_hardware.h"
#include "platform/linux/tool_paths.h"
#include "probes/tool_table.h"

namespace tolvo {

namespace {

std::string userAgent(const BundleInformation& bundle) {
    return "Tolvo/" + bundle.objectForInfoDictionaryKey("CFBundleShortVersionString").value_or("");
}

} // namespace

SystemServices::SystemServices(MainLoop& mainLoop, Workspace* desktopWorkspace)
    : loop(mainLoop),
      userDefaults(JsonFileUserDefaults::standardPath()),
      programs_(loop, toolPaths(allowedToolPaths(), toolsFolder())),
      processService(loop, programs_, toolPaths(allowedToolPaths(), toolsFolder()), servingProgram(toolsFolder())),
      xdgWorkspace_(processService),
      workspace(desktopWorkspace ? *desktopWorkspace : xdgWorkspace_),
      pathMonitor(loop),
      sleepNotifications(loop),
      urlSession(loop, {.userAgent = userAgent(bundle), .certificates = CertificateStore::ofSystem()}),
      isAirSimulated(isSimulatedAirAskedFor()),
      wifiClient(makeWiFiClient(loop)) {}

} // namespace tolvo
