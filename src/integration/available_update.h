#pragma once

#include "platform/services/json_reading.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tolvo {

/// A newer build, as the update endpoint describes it.
struct AvailableUpdate {
    /// For people.
    std::string version;
    /// What is compared.
    std::int64_t buildNumber = 0;
    std::string releaseDate;
    /// As the reply has it; absolute once the reply was checked.
    std::string downloadUrl;
    std::optional<std::string> releaseNotes{};
    std::optional<std::string> minimumSystemVersion{};

    bool operator==(const AvailableUpdate&) const = default;
};

/// The update that a reply describes; nothing when a required key is missing or any of the six is of another type. An
/// optional one may be null.
std::optional<AvailableUpdate> decodeAvailableUpdate(const JSONMembers& reply);

} // namespace tolvo
