#include "platform/linux/spawned_child.h"

#include <sys/wait.h>
// glibc 2.36 forgot to give it C linkage.
extern "C" {
#include <sys/pidfd.h>
}

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace tolvo {

namespace {

/// For a child whose status somebody else has taken.
constexpr std::int32_t unknownStatus = 255;

bool holdsNul(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        if (text.contains('\0'))
            return true;
    }
    return false;
}

} // namespace

std::expected<SpawnedChild, SpawnError> spawnChild(const std::vector<std::string>& arguments,
                                                   const std::vector<std::string>& environment,
                                                   const ChildStarter& start) {
    // Such an argument would arrive cut short.
    if (holdsNul(arguments))
        return std::unexpected(SpawnError{EINVAL, {}});
    auto output = OutputPipe::create();
    auto error = output ? OutputPipe::create() : std::nullopt;
    if (!error)
        return std::unexpected(SpawnError{errno, {}});
    const auto pid = start(arguments, environment, std::array{output->writeEnd(), error->writeEnd()});
    if (!pid)
        return std::unexpected(SpawnError{pid.error(), {}});
    UniqueDescriptor pidDescriptor(pidfd_open(*pid, 0));
    if (!pidDescriptor) {
        const int failure = errno;
        ::kill(*pid, SIGKILL);
        return std::unexpected(SpawnError{failure, *pid});
    }
    output->closeWriteEnd();
    error->closeWriteEnd();
    return SpawnedChild{*pid, std::move(pidDescriptor), {std::move(*output), std::move(*error)}};
}

std::optional<std::int32_t> exitStatus(pid_t child, Reaping reaping) {
    siginfo_t info{};
    const int flags = WEXITED | WNOHANG | (reaping == Reaping::Keep ? WNOWAIT : 0);
    if (::waitid(P_PID, static_cast<id_t>(child), &info, flags) != 0)
        return unknownStatus;
    if (info.si_pid == 0)
        return std::nullopt;
    return info.si_code == CLD_EXITED ? info.si_status : 128 + info.si_status;
}

} // namespace tolvo
