#pragma once

#include "core/model/wall_time.h"
#include "platform/services/locale_formats.h"

#include <optional>
#include <string>

namespace tolvo {

/// What the build has written down about itself, as it stands there: a value may be absent, or a variable that was
/// never filled in.
struct BundleBuildFacts {
    std::optional<std::string> shortVersion;
    std::optional<std::string> buildNumber;
    std::optional<std::string> buildID;
    std::optional<std::string> releaseDate;
    /// When the program's file was last written.
    std::optional<WallTime> modificationDate;
};

/// The build facts as the settings show them.
struct AppBuildMetadataDisplayInfo {
    std::string version;
    std::string buildID;
    std::string releaseDate;

    bool operator==(const AppBuildMetadataDisplayInfo&) const = default;
};

AppBuildMetadataDisplayInfo appBuildMetadataDisplayInfo(const BundleBuildFacts& facts, const LocaleFormats& formats);

} // namespace tolvo
