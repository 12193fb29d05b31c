#include "app/app_delegate.h"
#include "app/desktop_front_end.h"
#include "app/process_environment.h"
#include "app/program.h"
#include "platform/linux/termination_signals.h"
#include "platform/qt/display.h"
#include "platform/qt/qt_workspace.h"
#include "platform/qt/running_instance.h"

#include <QApplication>

#include <cstdio>

namespace tolvo {

namespace {

std::optional<ColorScheme> fixedColorScheme() {
    const auto appearance = environmentVariable("TOLVO_APPEARANCE");
    if (appearance == "light")
        return ColorScheme::Light;
    return appearance == "dark" ? std::optional(ColorScheme::Dark) : std::nullopt;
}

void prepareApplication() {
    QApplication::setApplicationName(QStringLiteral("tolvo"));
    QApplication::setDesktopFileName(QStringLiteral("tolvo"));
    // The one style that looks the same, and as designed, on every desktop.
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setQuitOnLastWindowClosed(false);
}

int runApplication(RunningInstance& instance, QtMainLoop& loop) {
    const TerminationSignals terminationSignals(loop, [&loop] { loop.quit(); });
    QtWorkspace workspace;
    DesktopFrontEnd* face = nullptr;
    AppDelegate delegate(
        loop,
        [&](AppDelegate& app) {
            auto made = std::make_unique<DesktopFrontEnd>(app, loop, fixedColorScheme());
            face = made.get();
            return made;
        },
        &workspace);
    delegate.applicationDidFinishLaunching();
    instance.onPresent = [&face] {
        if (face)
            face->present();
    };
    const int status = loop.run();
    instance.onPresent = nullptr;
    delegate.applicationWillTerminate();
    return status;
}

int runDesktop(int argumentCount, char** arguments) {
    if (!hasDisplay()) {
        std::fputs("tolvo: there is no display to draw on; tolvo-terminal does without\n", stderr);
        return 1;
    }
    prepareApplication();
    QApplication application(argumentCount, arguments);
    // Qt has taken its own.
    if (refusesArguments("tolvo", argumentCount, arguments))
        return usageStatus;
    QtMainLoop loop;
    // A connection of its own, since it decides whether there is anything else to build.
    SessionBus bus(loop);
    RunningInstance instance(bus);
    bus.connect();
    if (instance.isFirst())
        return runApplication(instance, loop);
    instance.presentFirst();
    return 0;
}

constexpr ProgramDescription program{"tolvo",
                                     "Shows in the desktop's status area whether the Wi-Fi and the network behind it "
                                     "are well; a click on the icon says\n"
                                     "why not when they aren't. A second start brings the first one's panel up.",
                                     &runDesktop};

} // namespace

} // namespace tolvo

int main(int argumentCount, char** arguments) {
    return tolvo::runProgram(tolvo::program, argumentCount, arguments);
}
