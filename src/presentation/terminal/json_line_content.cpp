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

/// An object's members, which come in ascending order of their keys.
class Members {
public:
    void add(std::string_view key, const JSONValue& value) {
        if (const auto text = encoded(value))
            append(key, *text);
    }

    void addText(std::string_view key, const std::optional<std::string>& text) {
        if (text)
            add(key, textValue(*text));
    }

    template<class Record>
    void addRecord(std::string_view key, const std::optional<Record>& record, JSONLineContent::Encoded<Record>& kept,
                   JSONObject (*convert)(const Record&)) {
        if (!record)
            return;
        if (kept.record != record) {
            auto text = encoded(convert(*record));
            if (!text)
                return;
            kept = {record, *std::move(text)};
        }
        append(key, kept.text);
    }

    /// The object; what went wrong first in place of all if something did.
    std::string object() && { return error_ ? "{\"error\":\"" + *error_ + "\"}" : std::move(text_) + '}'; }

private:
    std::optional<std::string> encoded(const JSONValue& value) {
        auto text = encodeJSON(value, JSONLayout::OneLine);
        if (text)
            return *std::move(text);
        if (!error_)
            error_ = std::move(text.error().message);
        return std::nullopt;
    }

    void append(std::string_view key, std::string_view value) {
        text_.append(text_.size() > 1 ? ",\"" : "\"").append(key).append("\":").append(value);
    }

    std::string text_ = "{";
    std::optional<std::string> error_;
};

} // namespace

std::string JSONLineContent::line(WallTime now) {
    Members members;
    members.addRecord("captivePortal", sources_.captivePortalStatus.value(), captivePortal_, portalObject);
    members.addText("captivePortalErrorMessage", sources_.captivePortalErrorMessage.value());
    members.addText("connectionErrorMessage", sources_.connectionErrorMessage.value());
    members.addRecord("connections", sources_.connectionResult.value(), connections_, connectionObject);
    members.addRecord("dns", sources_.dnsResult.value(), dns_, dnsObject);
    members.add("healthState", rawValue(sources_.healthState.value()));
    members.addRecord("internetPing", sources_.internetResult.value(), internetPing_, pingObject);
    if (isAirSimulated_)
        members.add("isAirSimulated", true);
    members.add("isRouterIgnored", sources_.isRouterIgnored.value());
    members.addText("routerIPAddress", sources_.routerIPAddress.value());
    members.addRecord("routerPing", sources_.routerResult.value(), routerPing_, pingObject);
    members.add("statusMessage", sources_.statusMessage());
    members.add("timestamp", now);
    members.addRecord("wifi", sources_.latestSnapshot.value(), wifi_, wifiObject);
    return std::move(members).object();
}

} // namespace tolvo
