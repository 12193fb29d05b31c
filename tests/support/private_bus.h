#pragma once

#include <signal.h>
#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace tolvo::testing {

/// A message bus of the test's own, which it can start, freeze and kill. The address stays the same.
class PrivateBus {
public:
    PrivateBus() {
        std::ofstream(directory_ / "config")
            << "<busconfig><listen>" << address() << "</listen><policy context='default'><allow own='*'/>"
            << "<allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/></policy></busconfig>";
    }
    ~PrivateBus() {
        kill();
        std::filesystem::remove_all(directory_);
    }

    std::string address() const { return "unix:path=" + (directory_ / "socket").string(); }

    /// Whether it listens: the daemon's parent ends when it does.
    bool start() {
        const std::string config = (directory_ / "config").string();
        std::FILE* output =
            ::popen(("dbus-daemon --fork --print-pid --config-file=" + config + " 2>/dev/null").c_str(), "r");
        const bool isListening = std::fscanf(output, "%d", &process_) == 1;
        return ::pclose(output) == 0 && isListening;
    }
    void freeze() const { ::kill(process_, SIGSTOP); }
    void kill() {
        if (process_ > 0)
            ::kill(process_, SIGKILL);
        process_ = 0;
        std::filesystem::remove(directory_ / "socket");
    }

private:
    std::string pattern_ = "/tmp/tolvo-bus-XXXXXX";
    std::filesystem::path directory_ = ::mkdtemp(pattern_.data());
    int process_ = 0;
};

} // namespace tolvo::testing
