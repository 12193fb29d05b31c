/// Stands for logind on a private bus: `mock_logind ADDRESS`. It owns the name, gives an inhibitor to whoever asks, and
/// tells of the sleeps and wakes that it reads, "sleep" or "wake" a line. Before a sleep's line is answered, the
/// inhibitors are waited for, five seconds at most, as logind does; the answer is what became of them.
#include <poll.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr const char* name = "org.freedesktop.login1";
constexpr const char* path = "/org/freedesktop/login1";
constexpr const char* manager = "org.freedesktop.login1.Manager";

/// The ends that we keep of the pipes that were given out: closed when the inhibitor is.
std::vector<int> inhibitors;
bool isAsleep = false;

int giveInhibitor(sd_bus_message* call) {
    int ends[2];
    if (::pipe(ends) != 0)
        return -1;
    inhibitors.push_back(ends[0]);
    const int result = sd_bus_reply_method_return(call, "h", ends[1]);
    ::close(ends[1]);
    return result;
}

int answer(sd_bus_message* call, void*, sd_bus_error*) {
    if (sd_bus_message_is_method_call(call, manager, "Inhibit") > 0)
        return giveInhibitor(call);
    if (sd_bus_message_is_method_call(call, "org.freedesktop.DBus.Properties", "Get") > 0)
        return sd_bus_reply_method_return(call, "v", "b", isAsleep);
    return 0;
}

bool areInhibitorsReleased() {
    for (const int inhibitor : inhibitors) {
        pollfd end{inhibitor, 0, 0};
        if (::poll(&end, 1, 5000) != 1)
            return false;
        ::close(inhibitor);
    }
    inhibitors.clear();
    return true;
}

void tell(sd_bus* bus, const std::string& line) {
    isAsleep = line == "sleep";
    const auto held = inhibitors.size();
    sd_bus_emit_signal(bus, path, manager, "PrepareForSleep", "b", isAsleep);
    sd_bus_flush(bus);
    const bool isReleased = !isAsleep || areInhibitorsReleased();
    std::cout << line << ' ' << held << (isReleased ? " released" : " held") << std::endl;
}

} // namespace

int main(int, char** arguments) {
    sd_bus* bus = nullptr;
    sd_bus_new(&bus);
    sd_bus_set_address(bus, arguments[1]);
    sd_bus_set_bus_client(bus, 1);
    sd_bus_start(bus);
    sd_bus_add_fallback(bus, nullptr, path, answer, nullptr);
    if (sd_bus_request_name(bus, name, 0) < 0)
        return 1;
    std::cout << "ready" << std::endl;
    pollfd ready[] = {{STDIN_FILENO, POLLIN, 0}, {sd_bus_get_fd(bus), POLLIN, 0}};
    while (::poll(ready, 2, 1000) >= 0) {
        while (sd_bus_process(bus, nullptr) > 0) {
        }
        std::string line;
        if ((ready[0].revents & (POLLIN | POLLHUP)) != 0 && !std::getline(std::cin, line))
            break;
        if (!line.empty())
            tell(bus, line);
    }
    sd_bus_flush_close_unref(bus);
}
