#pragma once

#include <functional>

namespace tolvo {

enum class PathStatus { Satisfied, Unsatisfied };

/// The way that traffic to anywhere takes from this machine, as one value. Several kinds of interface may be in use.
struct NetworkPath {
    PathStatus status = PathStatus::Unsatisfied;
    bool usesWiFi = false;
    bool usesWiredEthernet = false;
    bool usesCellular = false;
    /// Tunnels and whatever is none of the above.
    bool usesOther = false;

    bool operator==(const NetworkPath&) const = default;
};

/// Watches the network path over all interfaces. Main thread only.
class PathMonitor {
public:
    using Handler = std::function<void(const NetworkPath&)>;

    PathMonitor(const PathMonitor&) = delete;
    PathMonitor& operator=(const PathMonitor&) = delete;
    virtual ~PathMonitor() = default;

    /// The handler is given the current path soon after (never inside this call), then again after changes; an update
    /// may equal the one before. It may cancel and start. A running monitor gets the new handler and starts anew.
    virtual void start(Handler pathUpdateHandler) = 0;
    /// No more updates. May be repeated.
    virtual void cancel() = 0;

protected:
    PathMonitor() = default;
};

} // namespace tolvo
