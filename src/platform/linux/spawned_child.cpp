#include "platform/linux/spawned_child.h"

#include <spawn.h>
#include <sys/wait.h>
// glibc 2.36 forgot to give it C linkage.
extern "C" {
#include <sys/pidfd.h>
}

#include <cerrno>
#include <csignal>
#include <utility>

namespace tolvo {

namespace {

/// For a child whose status somebody else has taken.
constexpr std::int32_t unknownStatus = 255;

std::vector<char*> pointers(const std::vector<std::string>& texts) {
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (const std::string& text : texts)
        result.push_back(const_cast<char*>(text.c_str()));
    result.push_back(nullptr);
    return result;
}

/// What posix_spawn is told. Its parts fail for want of memory only.
class SpawnSettings {
public:
    SpawnSettings(int standardOutput, int standardError) {
        sigset_t signals;
        sigfillset(&signals);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
        posix_spawn_file_actions_init(&actions_);
        note(posix_spawn_file_actions_adddup2(&actions_, standardOutput, STDOUT_FILENO));
        note(posix_spawn_file_actions_adddup2(&actions_, standardError, STDERR_FILENO));
        // Ours close themselves; a library's may not.
        note(posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1));
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }

    std::expected<pid_t, int> spawn(const std::vector<std::string>& arguments,
                                    const std::vector<std::string>& environment) const {
        pid_t pid = -1;
        int error = error_;
        if (error == 0)
            error = posix_spawn(&pid, arguments.front().c_str(), &actions_, &attributes_, pointers(arguments).data(),
                                pointers(environment).data());
        if (error != 0)
            return std::unexpected(error);
        return pid;
    }

private:
    void note(int error) {
        if (error_ == 0)
            error_ = error;
    }

    posix_spawnattr_t attributes_;
    posix_spawn_file_actions_t actions_;
    int error_ = 0;
};

bool holdsNul(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        if (text.contains('\0'))
            return true;
    }
    return false;
}

} // namespace

std::expected<SpawnedChild, SpawnError> spawnChild(const std::vector<std::string>& arguments,
                                                   const std::vector<std::string>& environment) {
    // Such an argument would arrive cut short.
    if (holdsNul(arguments))
        return std::unexpected(SpawnError{EINVAL, {}});
    auto output = OutputPipe::create();
    auto error = output ? OutputPipe::create() : std::nullopt;
    if (!error)
        return std::unexpected(SpawnError{errno, {}});
    const SpawnSettings settings(output->writeEnd(), error->writeEnd());
    const auto pid = settings.spawn(arguments, environment);
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
