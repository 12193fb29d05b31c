#include "app/app_delegate.h"
#include "app/terminal_front_end.h"
#include "platform/linux/poll_loop.h"
#include "platform/linux/posix_text_terminal.h"
#include "platform/linux/signal_watcher.h"
#include "platform/linux/standard_descriptors.h"

#include <clocale>
#include <cstdio>
#include <exception>

namespace tolvo {

namespace {

int runTerminal() {
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

} // namespace

} // namespace tolvo

int main() {
    tolvo::openStandardDescriptors();
    std::setlocale(LC_ALL, "");
    try {
        return tolvo::runTerminal();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tolvo-terminal: %s\n", error.what());
        return 1;
    }
}
