#pragma once

#include "presentation/dashboard/dashboard_sources.h"

#include <optional>
#include <string>

namespace tolvo {

/// Lines of JSON with what the monitors know at a moment. Keys are the model's field names, in ascending order; a key
/// stands once its monitor has a value. Bytes of names that are not UTF-8 are replaced, so that a line always comes.
class JSONLineContent {
public:
    /// `isAirSimulated` is added when the readings are made up.
    JSONLineContent(const DashboardSources& sources, bool isAirSimulated)
        : sources_(sources), isAirSimulated_(isAirSimulated) {}

    /// Without the newline.
    std::string line(WallTime now);

    /// A record beside its JSON. Most records of a line are those of the line before; encoding them all anew took a
    /// twentieth of the program's processor time in the background.
    template<class Record>
    struct Encoded {
        std::optional<Record> record;
        std::string text;
    };

private:
    const DashboardSources sources_;
    const bool isAirSimulated_;
    Encoded<WiFiSnapshot> wifi_;
    Encoded<PingResult> routerPing_;
    Encoded<PingResult> internetPing_;
    Encoded<DNSResult> dns_;
    Encoded<ConnectionPressureResult> connections_;
    Encoded<CaptivePortalStatus> captivePortal_;
};

} // namespace tolvo
