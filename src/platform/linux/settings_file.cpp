#include "platform/linux/settings_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <thread>
#include <utility>

namespace tolvo {

namespace {

namespace fs = std::filesystem;

/// Between the dot that hides a new file and the six characters that make it unique stand the file's name and this.
constexpr std::string_view newFileMark = ".new-";

std::string newFilePrefix(const fs::path& target) {
    return "." + target.filename().string() + std::string(newFileMark);
}

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

FileStamp stampOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

/// The clock of file times ticks every few milliseconds only.
bool isLongAgo(std::int64_t changedNanoseconds) {
    constexpr std::int64_t margin = 100'000'000;
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::nanoseconds(now).count() - changedNanoseconds > margin;
}

bool writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno != EINTR)
            return false;
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

std::optional<std::string> readUpTo(int descriptor, std::size_t limit) {
    constexpr std::size_t piece = 64 << 10;
    std::string text;
    std::size_t size = 0;
    while (size < limit) {
        text.resize(std::min(limit, size + piece));
        const ssize_t count = ::read(descriptor, text.data() + size, text.size() - size);
        if (count < 0 && errno != EINTR)
            return std::nullopt;
        if (count == 0)
            break;
        size += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    text.resize(size);
    return text;
}

void syncFolder(const fs::path& folder) {
    if (const UniqueDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)); descriptor)
        ::fsync(descriptor.get());
}

/// A file beside the target that takes its place, or goes. It is locked while it is written.
class NewFile {
public:
    explicit NewFile(const fs::path& target)
        : path_((target.parent_path() / (newFilePrefix(target) + "XXXXXX")).string()),
          descriptor_(::mkostemp(path_.data(), O_CLOEXEC)),
          isThere_(static_cast<bool>(descriptor_)) {
        if (isThere_)
            ::flock(descriptor_.get(), LOCK_EX);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() {
        if (isThere_)
            ::unlink(path_.c_str());
    }

    bool store(std::string_view text) {
        return isThere_ && writeAll(descriptor_.get(), text) && ::fsync(descriptor_.get()) == 0;
    }

    bool takePlaceOf(const fs::path& target) {
        const bool didReplace = ::rename(path_.c_str(), target.c_str()) == 0;
        isThere_ = !didReplace;
        return didReplace;
    }

private:
    std::string path_;
    UniqueDescriptor descriptor_;
    bool isThere_;
};

/// Removes new files of processes that were killed while they wrote: nobody holds their lock.
void removeForsakenFiles(const fs::path& target) {
    const std::string prefix = newFilePrefix(target);
    std::error_code error;
    for (fs::directory_iterator entry(target.parent_path(), error), end; !error && entry != end;
         entry.increment(error)) {
        const fs::path& path = entry->path();
        if (!path.filename().string().starts_with(prefix))
            continue;
        const UniqueDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        if (file && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0)
            ::unlink(path.c_str());
    }
}

} // namespace

std::optional<FileStamp> SettingsFile::stamp() const {
    struct stat status{};
    if (::stat(path_.c_str(), &status) != 0)
        return std::nullopt;
    return stampOf(status);
}

SettingsFileReading SettingsFile::read() const {
    using Kind = SettingsFileReading::Kind;
    // Not blocking, for the case that it is a pipe.
    const UniqueDescriptor file(::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return {errno == ENOENT ? Kind::Missing : Kind::Unreadable, {}, stamp(), true};
    struct stat status{};
    if (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return {Kind::Unreadable, {}, stamp(), true};
    auto text = readUpTo(file.get(), sizeLimit + 1);
    if (!text)
        return {Kind::Unreadable, {}, stamp(), true};
    const FileStamp stamp = stampOf(status);
    return {Kind::Read, std::move(*text), stamp,
            isLongAgo(std::max(stamp.modifiedNanoseconds, stamp.changedNanoseconds))};
}

SettingsFile::Outcome SettingsFile::replace(const std::string& text, const SettingsFileReading& old,
                                            OldFile oldFile) const {
    const fs::path target = this->target();
    NewFile newFile(target);
    if (!newFile.store(text))
        return Outcome::Failed;
    if (stamp() != old.stamp)
        return Outcome::ChangedMeanwhile;
    std::optional<fs::path> aside;
    if (oldFile == OldFile::KeepAside) {
        aside = keepAside(target);
        if (!aside)
            return Outcome::Failed;
    }
    if (!newFile.takePlaceOf(target)) {
        if (aside)
            ::unlink(aside->c_str());
        return Outcome::Failed;
    }
    syncFolder(target.parent_path());
    return Outcome::Replaced;
}

/// What the path leads to, which may not exist yet.
fs::path SettingsFile::target() const {
    constexpr int mostLinks = 40;
    fs::path target = path_;
    std::error_code error;
    for (int i = 0; i < mostLinks && fs::is_symlink(target, error); ++i)
        target = target.parent_path() / fs::read_symlink(target, error);
    return target;
}

/// A second name for the file, or a copy where the file system knows no such names.
std::optional<fs::path> SettingsFile::keepAside(const fs::path& target) const {
    constexpr int mostCopies = 1000;
    for (int i = 1; i <= mostCopies; ++i) {
        fs::path aside = target;
        aside += i == 1 ? ".broken" : ".broken-" + std::to_string(i);
        std::error_code error;
        fs::create_hard_link(target, aside, error);
        if (error && error != std::errc::file_exists)
            fs::copy_file(target, aside, error);
        if (!error)
            return aside;
        if (error != std::errc::file_exists) {
            // What a copy may have left half done.
            fs::remove(aside, error);
            return std::nullopt;
        }
    }
    return std::nullopt;
}

SettingsFile::Lock::Lock(const SettingsFile& file)
    : folder_(::open(file.target().parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    // Whoever writes again and again lets go for microseconds only, so the tries must not be far apart.
    constexpr std::chrono::microseconds pause(100);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
    while (folder_ && ::flock(folder_.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK &&
           std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(pause);
}

SettingsFile::Lock SettingsFile::prepareToReplace() const {
    const fs::path folder = path_.parent_path();
    ::mkdir(folder.parent_path().c_str(), 0700);
    ::mkdir(folder.c_str(), 0700);
    Lock lock(*this);
    removeForsakenFiles(target());
    return lock;
}

} // namespace tolvo
