#pragma once

#include "platform/services/json_reading.h"

namespace tolvo {

class NlohmannJSONReader final : public JSONReading {
public:
    std::optional<JSONMembers> members(std::string_view document) const override;
};

} // namespace tolvo
