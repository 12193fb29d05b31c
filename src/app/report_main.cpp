#include "app/app_delegate.h"
#include "app/program.h"
#include "app/report_run.h"
#include "platform/linux/atomic_file_writer.h"
#include "platform/linux/poll_loop.h"
#include "platform/linux/posix_text_terminal.h"
#include "platform/linux/signal_watcher.h"
#include "platform/linux/standard_error_progress.h"

#include <filesystem>

namespace tolvo {

namespace {

/// As shells report a program that an interrupt ended.
constexpr int interruptedStatus = 130;

/// A program without a face: the composition starts, and there is nothing to install.
class NoFrontEnd final : public FrontEnd {
public:
    NoFrontEnd() = default;
    void install() override {}
    void remove() override {}
};

/// Brings the report to where it is wanted: standard output when that is no terminal, else a file in this folder.
class ReportDelivery {
public:
    ReportDelivery(PollLoop& loop, StandardErrorProgress& progress) : loop_(loop), progress_(progress), tasks_(loop) {}

    void deliver(std::string report, const std::string& fileName) {
        PosixTextTerminal output(loop_);
        if (output.isInteractive())
            tasks_.start(save(fileName, std::move(report)));
        else
            end(output.write(report + "\n") == TextTerminal::WriteOutcome::Written, "The report is on standard output.",
                "standard output");
    }

    int status() const { return status_; }

private:
    Task<void> save(std::filesystem::path path, std::string report) {
        const bool isSaved = co_await writer_.writeAtomically(path, std::move(report));
        end(isSaved, "Saved " + path.string() + ".", path.string());
    }

    void end(bool isWritten, const std::string& success, const std::string& place) {
        status_ = isWritten ? 0 : 1;
        progress_.finish(isWritten ? success : "tolvo-report: the report could not be written to " + place + ".");
        loop_.quit();
    }

    PollLoop& loop_;
    StandardErrorProgress& progress_;
    int status_ = interruptedStatus;
    AtomicFileWriter writer_;
    TaskScope tasks_;
};

int makeReport(int argumentCount, char** arguments) {
    if (refusesArguments("tolvo-report", argumentCount, arguments))
        return usageStatus;
    PollLoop loop;
    StandardErrorProgress progress;
    // Before anything that starts a thread.
    const SignalWatcher signals(loop, {.onTerminate = [&] {
                                    progress.finish("Interrupted.");
                                    loop.quit();
                                }});
    AppDelegate delegate(loop, [](AppDelegate&) { return std::make_unique<NoFrontEnd>(); });
    delegate.applicationDidFinishLaunching();
    ReportDelivery delivery(loop, progress);
    ReportRun run(
        delegate, [&](double share, const std::string& message) { progress.show(share, message); },
        [&](std::string report, const std::string& fileName) { delivery.deliver(std::move(report), fileName); });
    run.start();
    loop.run();
    delegate.applicationWillTerminate();
    return delivery.status();
}

constexpr ProgramDescription program{
    "tolvo-report",
    "Measures for a moment and writes one JSON report about the Wi-Fi and the network: to a file in this folder,\n"
    "or to standard output where that is no terminal. The progress is on standard error.",
    &makeReport};

} // namespace

} // namespace tolvo

int main(int argumentCount, char** arguments) {
    return tolvo::runProgram(tolvo::program, argumentCount, arguments);
}
