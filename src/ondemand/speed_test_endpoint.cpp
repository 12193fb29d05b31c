#include "ondemand/speed_test_endpoint.h"

#include <string>
#include <string_view>

namespace tolvo {

namespace {

std::optional<URL> below(const std::optional<URL>& baseURL, const std::string& path) {
    if (!baseURL || baseURL->host().empty() || baseURL->text().find_first_of("?#") != std::string::npos)
        return std::nullopt;
    std::string_view base = baseURL->text();
    while (base.ends_with('/'))
        base.remove_suffix(1);
    return URL::parse(std::string(base) + path);
}

} // namespace

std::optional<URL> defaultSpeedTestURL() {
    return URL::parse(TOLVO_SPEED_TEST_URL);
}

SpeedTestEndpoint speedTestEndpoint(const std::optional<URL>& baseURL) {
    return {[baseURL](std::int64_t bytes) { return below(baseURL, "/__down?bytes=" + std::to_string(bytes)); },
            below(baseURL, "/__up")};
}

} // namespace tolvo
