#pragma once

#include "core/async/published.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace tolvo {

/// Appends to a published history, oldest first, and drops the oldest beyond the limit.
template<class T>
void appendSample(Published<std::vector<T>>& history, T sample, std::size_t maxHistorySampleCount) {
    std::vector<T> samples = history.value();
    samples.push_back(std::move(sample));
    if (samples.size() > maxHistorySampleCount)
        samples.erase(samples.begin(), samples.end() - static_cast<std::ptrdiff_t>(maxHistorySampleCount));
    history.set(std::move(samples));
}

} // namespace tolvo
