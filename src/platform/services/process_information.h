#pragma once

#include <optional>
#include <string>

namespace tolvo {

/// What the process was given at its start. Main thread only.
class ProcessInformation {
public:
    ProcessInformation(const ProcessInformation&) = delete;
    ProcessInformation& operator=(const ProcessInformation&) = delete;
    virtual ~ProcessInformation() = default;

    virtual std::optional<std::string> environmentVariable(const std::string& name) const = 0;

protected:
    ProcessInformation() = default;
};

} // namespace tolvo
