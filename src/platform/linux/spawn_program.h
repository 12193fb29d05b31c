#pragma once

#include <sys/types.h>

#include <expected>
#include <span>
#include <string>
#include <vector>

namespace tolvo {

/// Starts the program that is the first argument, with default signal dispositions and nothing blocked. The descriptors
/// become its standard output, its standard error and what follows these; of ours it gets standard input besides. Gives
/// an errno when it can't.
std::expected<pid_t, int> spawnProgram(const std::vector<std::string>& arguments,
                                       const std::vector<std::string>& environment, std::span<const int> descriptors);

} // namespace tolvo
