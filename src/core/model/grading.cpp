#include "core/model/grading.h"

namespace tolvo {

std::optional<SignalQuality> latencyQuality(const std::optional<PingResult>& result) {
    if (!result)
        return std::nullopt;
    if (!result->didSucceed || !result->latencyMilliseconds)
        return SignalQuality::Poor;
    if (*result->latencyMilliseconds <= 50)
        return SignalQuality::Good;
    return *result->latencyMilliseconds <= 100 ? SignalQuality::Warning : SignalQuality::Poor;
}

std::optional<SignalQuality> jitterQuality(const std::optional<PingResult>& result) {
    if (!result)
        return std::nullopt;
    if (!result->didSucceed || !result->jitterMilliseconds)
        return SignalQuality::Poor;
    if (*result->jitterMilliseconds < 10)
        return SignalQuality::Good;
    return *result->jitterMilliseconds <= 30 ? SignalQuality::Warning : SignalQuality::Poor;
}

std::optional<SignalQuality> latencyQuality(const std::optional<DNSResult>& result) {
    if (!result)
        return std::nullopt;
    return queryTimeQuality(result->didSucceed ? result->latencyMilliseconds : std::nullopt);
}

SignalQuality queryTimeQuality(std::optional<double> milliseconds) {
    if (!milliseconds)
        return SignalQuality::Poor;
    if (*milliseconds < 50)
        return SignalQuality::Good;
    return *milliseconds <= 100 ? SignalQuality::Warning : SignalQuality::Poor;
}

} // namespace tolvo
