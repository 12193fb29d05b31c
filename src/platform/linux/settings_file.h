#pragma once

#include "platform/linux/unique_descriptor.h"

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace tolvo {

/// Tells one state of a file from another.
struct FileStamp {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    std::int64_t modifiedNanoseconds = 0;
    std::int64_t changedNanoseconds = 0;

    bool operator==(const FileStamp&) const = default;
};

/// What a settings file held at one moment.
struct SettingsFileReading {
    enum class Kind { Missing, Read, Unreadable };
    Kind kind = Kind::Missing;
    std::string text;
    std::optional<FileStamp> stamp;
    /// False when the file changed so shortly before that a further change may not show in its stamp.
    bool isSettled = false;
};

/// A small text file that is replaced as a whole, so that a crash or a power cut leaves the old or the new one. A
/// symbolic link stays one: what it leads to is replaced.
class SettingsFile {
public:
    /// Bytes; more than any settings need, and little enough to be read on the main thread. Longer files are cut.
    static constexpr std::size_t sizeLimit = 1 << 20;

    enum class OldFile { Replace, KeepAside };
    enum class Outcome { Replaced, ChangedMeanwhile, Failed };

    explicit SettingsFile(std::filesystem::path path) : path_(std::move(path)) {}

    /// Nothing when there is no file, or none that can be asked.
    std::optional<FileStamp> stamp() const;
    SettingsFileReading read() const;
    /// Replaces what was read; does nothing if the file is not the same any more. Leaves nothing behind when it fails.
    Outcome replace(const std::string& text, const SettingsFileReading& old, OldFile oldFile) const;

    /// Keeps other processes of ours from replacing the file while this object lives. It waits for a moment only, and
    /// then is no lock: a stopped process must not stop this one.
    class Lock {
    public:
        explicit Lock(const SettingsFile& file);

    private:
        UniqueDescriptor folder_;
    };
    /// Makes the file's folder, takes the lock, and removes what a process that was killed while writing has left.
    Lock prepareToReplace() const;

private:
    std::filesystem::path target() const;
    std::optional<std::filesystem::path> keepAside(const std::filesystem::path& target) const;

    std::filesystem::path path_;
};

} // namespace tolvo
