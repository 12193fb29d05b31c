#include "platform/linux/spawn_program.h"

#include <spawn.h>
#include <unistd.h>

#include <csignal>

namespace tolvo {

namespace {

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
    explicit SpawnSettings(std::span<const int> descriptors) {
        sigset_t signals;
        sigfillset(&signals);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
        posix_spawn_file_actions_init(&actions_);
        int target = STDOUT_FILENO;
        for (const int descriptor : descriptors)
            note(posix_spawn_file_actions_adddup2(&actions_, descriptor, target++));
        // Ours close themselves; a library's may not.
        note(posix_spawn_file_actions_addclosefrom_np(&actions_, target));
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

} // namespace

std::expected<pid_t, int> spawnProgram(const std::vector<std::string>& arguments,
                                       const std::vector<std::string>& environment, std::span<const int> descriptors) {
    return SpawnSettings(descriptors).spawn(arguments, environment);
}

} // namespace tolvo
