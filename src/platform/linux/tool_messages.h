#pragma once

#include <cstddef>
#include <cstdint>

/// What the application and its resident tools say to each other, over a socket that keeps messages apart. Both come
/// from one build, so the numbers are as they lie in memory.
namespace tolvo::toolMessage {

/// Where the tools find their end of the socket.
inline constexpr int descriptor = 3;

enum class RequestKind : std::uint32_t { Run, Cancel };

/// Before the command line of a Run, each argument with its final NUL. The application counts the runs.
struct RequestHeader {
    std::uint32_t run = 0;
    RequestKind kind = RequestKind::Run;
};

/// Before a piece of the standard output, and behind that, to the message's end, one of the standard error. The status
/// is that of the last message.
struct AnswerHeader {
    std::uint32_t run = 0;
    std::int32_t status = 0;
    std::uint32_t outputSize = 0;
    std::uint32_t isLast = 0;
};

inline constexpr std::size_t longestMessage = 32768;

} // namespace tolvo::toolMessage
