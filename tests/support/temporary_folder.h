#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace tolvo::testing {

/// A folder that goes with its object.
class TemporaryFolder {
public:
    TemporaryFolder() : path_(::mkdtemp(name_.data())) {}
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    const std::filesystem::path& path() const { return path_; }

private:
    std::string name_ = "/tmp/tolvo-test-XXXXXX";
    std::filesystem::path path_;
};

} // namespace tolvo::testing
