#pragma once

#include <string>

namespace tolvo {

/// The desktop's clipboard. Main thread only.
class Clipboard {
public:
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;
    virtual ~Clipboard() = default;

    /// Replaces what is on it; text is UTF-8. Whether the desktop took it.
    virtual bool setText(const std::string& text) = 0;

protected:
    Clipboard() = default;
};

} // namespace tolvo
