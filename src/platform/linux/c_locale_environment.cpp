#include "platform/linux/c_locale_environment.h"

#include <unistd.h>

#include <string_view>

namespace tolvo {

std::vector<std::string> environmentInCLocale() {
    std::vector<std::string> environment{"LC_ALL=C"};
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        if (!std::string_view(*entry).starts_with("LC_ALL="))
            environment.emplace_back(*entry);
    }
    return environment;
}

} // namespace tolvo
