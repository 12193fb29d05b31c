#pragma once

#include "platform/services/progress_output.h"

namespace tolvo {

/// Progress on standard error: a bar in place on a terminal, a line for each new message otherwise.
class StandardErrorProgress final : public ProgressOutput {
public:
    StandardErrorProgress();

    void show(double share, const std::string& message) override;
    void finish(const std::string& message) override;

private:
    bool isTerminal_;
    std::string shown_;
};

} // namespace tolvo
