#pragma once

#include "core/async/task.h"

#include <expected>
#include <string>

namespace tolvo {

/// Has somebody with the right to it start a Wi-Fi scan. Main thread only.
class WiFiScanRequesting {
public:
    WiFiScanRequesting(const WiFiScanRequesting&) = delete;
    WiFiScanRequesting& operator=(const WiFiScanRequesting&) = delete;
    virtual ~WiFiScanRequesting() = default;

    /// Succeeds when the request was taken; the scan itself may begin later. Fails in words for a person.
    virtual Task<std::expected<void, std::string>> requestScan(std::string interfaceName) = 0;

protected:
    WiFiScanRequesting() = default;
};

} // namespace tolvo
