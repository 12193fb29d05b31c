#pragma once

#include <functional>

namespace tolvo {

/// The platform's guard of where the machine is, and with it of network names. Main thread only.
class LocationManager {
public:
    LocationManager(const LocationManager&) = delete;
    LocationManager& operator=(const LocationManager&) = delete;
    virtual ~LocationManager() = default;

    /// Called after each change of the status.
    std::function<void()> onDidChangeAuthorization;

    /// 0 not determined, 1 restricted, 2 denied, 3 authorised always, 4 authorised when in use; a newer platform may
    /// give others.
    virtual int authorizationStatus() const = 0;
    /// Asks the user, if the platform still lets itself be asked.
    virtual void requestWhenInUseAuthorization() = 0;

protected:
    LocationManager() = default;
};

} // namespace tolvo
