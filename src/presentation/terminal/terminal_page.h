#pragma once

#include "presentation/terminal/terminal_line.h"

#include <functional>
#include <string>
#include <vector>

namespace tolvo {

/// One screenful of the terminal program with the keys that belong to it. Main thread only.
class TerminalPage {
public:
    TerminalPage(const TerminalPage&) = delete;
    TerminalPage& operator=(const TerminalPage&) = delete;
    virtual ~TerminalPage() = default;

    /// Called by the page when its lines may have changed.
    std::function<void()> onChange;

    virtual void open() {}
    virtual void close() {}
    /// At most size.rows lines.
    virtual std::vector<TerminalLine> lines(TerminalSize size) const = 0;
    virtual void handleKey(const std::string& key) = 0;

protected:
    TerminalPage() = default;
    void changed() const {
        if (onChange)
            onChange();
    }
};

} // namespace tolvo
