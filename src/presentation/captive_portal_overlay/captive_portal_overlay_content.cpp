#include "presentation/captive_portal_overlay/captive_portal_overlay_content.h"

#include "presentation/rows/value_format.h"

#include <string_view>
#include <utility>

namespace tolvo {

namespace {

struct ReasonTexts {
    std::string_view row;
    /// After "detected via".
    std::string_view sentence;
};

ReasonTexts reasonTexts(CaptivePortalDetectionReason reason) {
    switch (reason) {
    case CaptivePortalDetectionReason::None:
        return {"No anomalies", "no anomalies"};
    case CaptivePortalDetectionReason::Redirect:
        return {"HTTP redirect detected", "an HTTP redirect"};
    case CaptivePortalDetectionReason::ContentInjection:
        return {"Probe content mismatch", "unexpected probe content"};
    }
    std::unreachable();
}

std::string statusText(const std::optional<CaptivePortalStatus>& status,
                       const std::optional<std::string>& lastErrorMessage) {
    if (lastErrorMessage)
        return *lastErrorMessage;
    if (!status)
        return "Running periodic captive portal probes.";
    if (!status->isCaptivePortal)
        return "No captive portal detected.";
    return "Captive portal detected via " + std::string(reasonTexts(status->reason).sentence) + ".";
}

std::vector<MetricRow> rows(const std::optional<CaptivePortalStatus>& status, const LocaleFormats& formats) {
    if (!status)
        return {{"State", "Unknown"}, {"Reason", "Awaiting probes"}, {"Last Check", std::string(absentValueText)}};
    return {{"State", status->isCaptivePortal ? "Captive" : "Open Internet"},
            {"Reason", std::string(reasonTexts(status->reason).row)},
            {"Last Check", formats.timeOfDay(status->timestamp)}};
}

} // namespace

CaptivePortalOverlayContent captivePortalOverlayContent(const std::optional<CaptivePortalStatus>& latestStatus,
                                                        const std::optional<std::string>& lastErrorMessage,
                                                        const LocaleFormats& formats) {
    const bool hasURL = latestStatus && latestStatus->portalURL;
    return {statusText(latestStatus, lastErrorMessage),
            rows(latestStatus, formats),
            {"Portal URL", hasURL ? latestStatus->portalURL->text() : std::string(absentValueText)}};
}

} // namespace tolvo
