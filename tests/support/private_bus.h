#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <systemd/sd-bus.h>

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

/// Owns a name on a bus, and has every call on its path answered when it is given the time.
class BusService {
public:
    BusService(const std::string& address, const char* name, const char* path, sd_bus_message_handler_t answer,
               void* self) {
        sd_bus_new(&bus_);
        sd_bus_set_address(bus_, address.c_str());
        sd_bus_set_bus_client(bus_, 1);
        sd_bus_start(bus_);
        sd_bus_add_fallback(bus_, nullptr, path, answer, self);
        EXPECT_GE(sd_bus_request_name(bus_, name, 0), 0);
    }
    BusService(const BusService&) = delete;
    BusService& operator=(const BusService&) = delete;
    ~BusService() { sd_bus_flush_close_unref(bus_); }

    sd_bus* bus() const { return bus_; }
    void process() const {
        while (sd_bus_process(bus_, nullptr) > 0) {
        }
    }

private:
    sd_bus* bus_ = nullptr;
};

} // namespace tolvo::testing
