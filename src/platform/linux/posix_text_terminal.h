#pragma once

#include "core/async/main_loop.h"
#include "platform/services/text_terminal.h"

#include <termios.h>

#include <optional>

namespace tolvo {

/// Standard input and output as a terminal: termios for single keys, the alternate screen for drawing.
class PosixTextTerminal final : public TextTerminal {
public:
    explicit PosixTextTerminal(MainLoop& loop) : loop_(loop) {}
    ~PosixTextTerminal() override { leaveScreen(); }

    bool isInteractive() const override;
    Size size() const override;
    void enterScreen(std::function<void(std::string key)> onKey) override;
    void leaveScreen() override;
    WriteOutcome write(std::string_view text) override;

private:
    void readKeys();
    void giveKeys(bool isInputComplete);
    bool takesOutput() const;

    MainLoop& loop_;
    std::function<void(std::string key)> onKey_;
    std::optional<termios> cookedMode_;
    bool hasScreen_ = false;
    std::string pendingInput_;
    LoopRegistration inputWatch_;
    LoopRegistration escapeTimer_;
};

} // namespace tolvo
