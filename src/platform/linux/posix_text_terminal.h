#pragma once

#include "core/async/main_loop.h"
#include "platform/linux/unique_descriptor.h"
#include "platform/services/text_terminal.h"

#include <termios.h>

#include <optional>
#include <string>

namespace tolvo {

/// Standard input and output as a terminal: termios for single keys, the alternate screen for drawing. It never waits
/// for whoever reads the output: a text that was begun is ended with the next one, and others are skipped until then.
class PosixTextTerminal final : public TextTerminal {
public:
    explicit PosixTextTerminal(MainLoop& loop);
    ~PosixTextTerminal() override { leaveScreen(); }

    bool isInteractive() const override;
    Size size() const override;
    void enterScreen(std::function<void(std::string key)> onKey) override;
    void leaveScreen() override;
    WriteOutcome write(std::string_view text) override;

private:
    void readKeys();
    void giveKeys(bool isInputComplete);
    int output() const;
    bool waitForOutput(int milliseconds) const;
    bool sendUnwritten();

    MainLoop& loop_;
    /// The terminal, opened once more; absent where the output is something else.
    UniqueDescriptor ownOutput_;
    /// The rest of a text that the output took in part.
    std::string unwritten_;
    std::function<void(std::string key)> onKey_;
    std::optional<termios> cookedMode_;
    bool hasScreen_ = false;
    std::string pendingInput_;
    LoopRegistration inputWatch_;
    LoopRegistration escapeTimer_;
};

} // namespace tolvo
