#include "app/app_delegate.h"
#include "app/program.h"
#include "app/terminal_front_end.h"
#include "platform/linux/poll_loop.h"
#include "platform/linux/posix_text_terminal.h"
#include "platform/linux/signal_watcher.h"

namespace tolvo {

namespace {

int runTerminal(int argumentCount, char** arguments) {
    if (refusesArguments("tolvo-terminal", argumentCount, arguments))
        return usageStatus;
    PollLoop loop;
    TerminalScreenFrontEnd* screen = nullptr;
    const auto onScreen = [&screen](auto action) {
        return [&screen, action] {
            if (screen)
                action(*screen);
        };
    };
    // Before anything that starts a thread.
    const SignalWatcher signals(loop, {.onTerminate = [&loop] { loop.quit(); },
                                       .onWindowResize = onScreen([](auto& s) { s.redraw(); }),
                                       .onSuspend = onScreen([](auto& s) { s.leaveScreen(); }),
                                       .onContinue = onScreen([](auto& s) { s.enterScreen(); })});
    PosixTextTerminal terminal(loop);
    AppDelegate delegate(loop, [&](AppDelegate& app) -> std::unique_ptr<FrontEnd> {
        if (!terminal.isInteractive())
            return std::make_unique<JSONLinesFrontEnd>(app, terminal, [&loop] { loop.quit(); });
        auto front = std::make_unique<TerminalScreenFrontEnd>(app, terminal, [&loop] { loop.quit(); });
        screen = front.get();
        return front;
    });
    delegate.applicationDidFinishLaunching();
    loop.run();
    delegate.applicationWillTerminate();
    return 0;
}

constexpr ProgramDescription program{
    "tolvo-terminal",
    "Shows in the terminal whether the Wi-Fi and the network behind it are well, until q is pressed.\n"
    "Where its output is no terminal, it writes one JSON object a line each second.",
    &runTerminal};

} // namespace

} // namespace tolvo

int main(int argumentCount, char** arguments) {
    return tolvo::runProgram(tolvo::program, argumentCount, arguments);
}
