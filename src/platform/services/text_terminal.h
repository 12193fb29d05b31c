#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace tolvo {

/// The user's text terminal, or whatever stands in the place of one as standard output. Main thread only.
class TextTerminal {
public:
    struct Size {
        std::size_t columns = 80;
        std::size_t rows = 24;
    };

    /// Skipped is an output that takes nothing at the moment, such as a terminal that its user has halted: it loses
    /// what was written, so that nothing waits for it.
    enum class WriteOutcome { Written, Skipped, Closed };

    TextTerminal(const TextTerminal&) = delete;
    TextTerminal& operator=(const TextTerminal&) = delete;
    virtual ~TextTerminal() = default;

    /// Whether the output is a terminal, and not a file or a pipe.
    virtual bool isInteractive() const = 0;
    virtual Size size() const = 0;

    /// Takes the whole screen and single keys until leaveScreen() or the end of this object. A key is its character as
    /// UTF-8, "escape", "enter", "up", "down", "left" or "right".
    virtual void enterScreen(std::function<void(std::string key)> onKey) = 0;
    virtual void leaveScreen() = 0;

    /// Writes all of it, a rest with the next call, or nothing. Never waits for whoever reads it.
    virtual WriteOutcome write(std::string_view text) = 0;

protected:
    TextTerminal() = default;
};

} // namespace tolvo
