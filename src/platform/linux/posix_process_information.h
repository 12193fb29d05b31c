#pragma once

#include "platform/services/process_information.h"

#include <cstdlib>

namespace tolvo {

class PosixProcessInformation final : public ProcessInformation {
public:
    std::optional<std::string> environmentVariable(const std::string& name) const override {
        const char* value = std::getenv(name.c_str());
        return value ? std::optional<std::string>(value) : std::nullopt;
    }
};

} // namespace tolvo
