#pragma once

#include "platform/services/bundle_information.h"

namespace tolvo {

/// What CMake put into the program, and the date of the program's file.
class BuiltBundleInformation final : public BundleInformation {
public:
    std::optional<std::string> objectForInfoDictionaryKey(std::string_view key) const override;
    std::optional<WallTime> modificationDate() const override;
};

} // namespace tolvo
