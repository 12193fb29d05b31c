#include "presentation/terminal/json_line_content.h"

#include "core/text.h"
#include "export/json_value.h"
#include "presentation/terminal/terminal_text.h"

namespace tolvo {

namespace {

/// Names come from the air; a byte that is no UTF-8 must not cost the line.
JSONValue textValue(const std::string& text) {
    return isValidUTF8(text) ? text : terminalSafe(text);
}

void setText(JSONObject& object, std::string_view key, const std::optional<std::string>& text) {
    if (text)
        object.insert_or_assign(std::string(key), textValue(*text));
}

/// Like setIfPresent, for records.
template<class Record, class Convert>
void setRecord(JSONObject& object, std::string_view key, const std::optional<Record>& record, Convert convert) {
    if (record)
        object.insert_or_assign(std::string(key), convert(*record));
}

JSONObject wifiObject(const WiFiSnapshot& snapshot) {
    JSONObject object{{"timestamp", snapshot.timestamp},
                      {"interfaceName", textValue(snapshot.interfaceName)},
                      {"rssiDbm", snapshot.rssiDbm},
                      {"noiseFloorDbm", snapshot.noiseFloorDbm},
                      {"isVPNActive", snapshot.isVPNActive}};
    setText(object, "ssid", snapshot.ssid);
    setText(object, "bssid", snapshot.bssid);
    setIfPresent(object, "snrDb", snapshot.snrDb);
    setIfPresent(object, "linkRateMbps", snapshot.linkRateMbps);
    setIfPresent(object, "channelNumber", snapshot.channelNumber);
    if (snapshot.band)
        object.insert_or_assign("band", rawValue(*snapshot.band));
    setText(object, "ipAddress", snapshot.ipAddress);
    return object;
}

JSONObject pingObject(const PingResult& result) {
    JSONObject object{{"target", rawValue(result.target)},
                      {"timestamp", result.timestamp},
                      {"packetLossPercent", result.packetLossPercent},
                      {"didSucceed", result.didSucceed}};
    setIfPresent(object, "latencyMilliseconds", result.latencyMilliseconds);
    setIfPresent(object, "jitterMilliseconds", result.jitterMilliseconds);
    return object;
}

JSONObject dnsObject(const DNSResult& result) {
    JSONObject object{
        {"domain", textValue(result.domain)}, {"timestamp", result.timestamp}, {"didSucceed", result.didSucceed}};
    setIfPresent(object, "latencyMilliseconds", result.latencyMilliseconds);
    return object;
}

JSONObject connectionObject(const ConnectionPressureResult& result) {
    return {{"timestamp", result.timestamp},
            {"established", result.counts.established},
            {"timeWait", result.counts.timeWait},
            {"closeWait", result.counts.closeWait},
            {"quality", rawValue(result.quality)}};
}

JSONObject portalObject(const CaptivePortalStatus& status) {
    JSONObject object{{"timestamp", status.timestamp},
                      {"isCaptivePortal", status.isCaptivePortal},
                      {"reason", rawValue(status.reason)}};
    if (status.portalURL)
        object.insert_or_assign("portalURL", status.portalURL->text());
    if (status.probeURL)
        object.insert_or_assign("probeURL", status.probeURL->text());
    return object;
}

} // namespace

std::string jsonLine(const DashboardSources& sources, WallTime now, bool isAirSimulated) {
    JSONObject line{{"timestamp", now},
                    {"healthState", rawValue(sources.healthState.value())},
                    {"statusMessage", sources.statusMessage()},
                    {"isRouterIgnored", sources.isRouterIgnored.value()}};
    if (isAirSimulated)
        line.insert_or_assign("isAirSimulated", true);
    setRecord(line, "wifi", sources.latestSnapshot.value(), wifiObject);
    setText(line, "routerIPAddress", sources.routerIPAddress.value());
    setRecord(line, "routerPing", sources.routerResult.value(), pingObject);
    setRecord(line, "internetPing", sources.internetResult.value(), pingObject);
    setRecord(line, "dns", sources.dnsResult.value(), dnsObject);
    setRecord(line, "connections", sources.connectionResult.value(), connectionObject);
    setText(line, "connectionErrorMessage", sources.connectionErrorMessage.value());
    setRecord(line, "captivePortal", sources.captivePortalStatus.value(), portalObject);
    setText(line, "captivePortalErrorMessage", sources.captivePortalErrorMessage.value());
    const auto text = encodeJSON(line, JSONLayout::OneLine);
    return text ? *text : "{\"error\":\"" + text.error().message + "\"}";
}

} // namespace tolvo
