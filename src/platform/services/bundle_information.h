#pragma once

#include "core/model/wall_time.h"

#include <optional>
#include <string>
#include <string_view>

namespace tolvo {

/// What the build has written down about itself. Main thread only.
class BundleInformation {
public:
    BundleInformation(const BundleInformation&) = delete;
    BundleInformation& operator=(const BundleInformation&) = delete;
    virtual ~BundleInformation() = default;

    /// The raw value: CFBundleShortVersionString, CFBundleVersion, BuildID, ReleaseDate, UpdateAPIURL or
    /// UpdateDownloadBaseURL. Nothing for a key that the build left open.
    virtual std::optional<std::string> objectForInfoDictionaryKey(std::string_view key) const = 0;
    /// When the program's file was last written, if that can be read.
    virtual std::optional<WallTime> modificationDate() const = 0;

protected:
    BundleInformation() = default;
};

} // namespace tolvo
