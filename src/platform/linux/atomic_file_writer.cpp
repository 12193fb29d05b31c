#include "platform/linux/atomic_file_writer.h"

#include "core/async/off_main.h"
#include "platform/linux/unique_descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

namespace tolvo {

namespace {

namespace fs = std::filesystem;

constexpr mode_t mode = 0666; // The user's umask takes away from it.

/// A file that is being written, which goes away with this object unless it was put in its place.
class NewFile {
public:
    explicit NewFile(const fs::path& target) : target_(target), folder_(target.parent_path()) {
        file_ = UniqueDescriptor(::open(folder_.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode));
        if (!file_)
            openWithName(); // Not every file system knows files without a name.
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() {
        if (!temporaryName_.empty())
            ::unlink(temporaryName_.c_str());
    }

    bool write(std::string_view bytes) {
        while (file_ && !bytes.empty()) {
            const ssize_t count = ::write(file_.get(), bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR)
                continue;
            if (count <= 0)
                return false;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return file_ && ::fsync(file_.get()) == 0;
    }

    bool putInPlace() {
        if (temporaryName_.empty() && link(target_))
            return syncFolder();
        // Only a rename replaces a file in one step, and only a file with a name can be renamed.
        if (temporaryName_.empty() && (errno != EEXIST || !linkToTemporaryName()))
            return false;
        if (::rename(temporaryName_.c_str(), target_.c_str()) != 0)
            return false;
        temporaryName_.clear();
        return syncFolder();
    }

private:
    fs::path nameForAttempt(int attempt) const {
        return folder_ / (".tolvo-" + std::to_string(::getpid()) + "-" + std::to_string(attempt) + ".tmp");
    }

    template<class Create>
    bool createWithName(Create create) {
        for (int attempt = 0; attempt < 100; ++attempt) {
            const fs::path name = nameForAttempt(attempt);
            if (create(name)) {
                temporaryName_ = name;
                return true;
            }
            if (errno != EEXIST)
                return false;
        }
        return false;
    }

    void openWithName() {
        createWithName([this](const fs::path& name) {
            file_ = UniqueDescriptor(::open(name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, mode));
            return static_cast<bool>(file_);
        });
    }

    bool linkToTemporaryName() {
        return createWithName([this](const fs::path& name) { return link(name); });
    }

    bool link(const fs::path& name) const {
        const std::string source = "/proc/self/fd/" + std::to_string(file_.get());
        return ::linkat(AT_FDCWD, source.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    }

    /// The file is there already; that its name is on the disk too is more than some file systems promise.
    bool syncFolder() const {
        const UniqueDescriptor folder(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder)
            ::fsync(folder.get());
        return true;
    }

    fs::path target_;
    fs::path folder_;
    UniqueDescriptor file_;
    fs::path temporaryName_;
};

bool writeFile(const fs::path& path, std::string_view bytes) {
    std::error_code error;
    const fs::path target = fs::weakly_canonical(fs::absolute(path, error), error);
    if (error || !target.has_filename())
        return false;
    NewFile file(target);
    return file.write(bytes) && file.putInPlace();
}

} // namespace

Task<bool> AtomicFileWriter::writeAtomically(std::filesystem::path path, std::string bytes) {
    co_return co_await offMain(
        [path = std::move(path), bytes = std::move(bytes)](const std::stop_token&) { return writeFile(path, bytes); });
}

} // namespace tolvo
