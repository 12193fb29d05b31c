#pragma once

#include <string>

namespace tolvo {

/// Tells whoever waits for a program how far it is. Main thread only.
class ProgressOutput {
public:
    ProgressOutput(const ProgressOutput&) = delete;
    ProgressOutput& operator=(const ProgressOutput&) = delete;
    virtual ~ProgressOutput() = default;

    /// The share is from 0 to 1. What was shown last is not shown again.
    virtual void show(double share, const std::string& message) = 0;
    /// Ends the progress with a sentence of its own.
    virtual void finish(const std::string& message) = 0;

protected:
    ProgressOutput() = default;
};

} // namespace tolvo
