#pragma once

#include "platform/services/url_session.h"

#include <cstddef>
#include <string_view>

namespace tolvo {

/// Takes an answer piece by piece, and no more of it than is wanted. Whoever feeds it ends the transfer when it
/// refuses.
class ResponseCollector {
public:
    ResponseCollector(ResponseBody mode, std::size_t bodyLimit) : mode_(mode), bodyLimit_(bodyLimit) {}

    /// One line of a head or of a trailer, with its line end. False when there were too many.
    [[nodiscard]] bool addHeaderLine(std::string_view line);
    /// False when the body has grown beyond its limit.
    [[nodiscard]] bool addBody(std::string_view bytes);

    bool hasTooManyHeaders() const { return hasTooManyHeaders_; }
    /// Whether an empty line ended the head.
    bool hasWholeHead() const { return isHeadOver_; }
    bool isBodyFull() const { return isBodyFull_; }
    std::int64_t receivedBytes() const { return headerBytes_ + response_.receivedBodyBytes; }

    HTTPResponse takeResponse(int statusCode);

private:
    void addHeader(std::string_view line);

    ResponseBody mode_;
    std::size_t bodyLimit_;
    HTTPResponse response_;
    std::int64_t headerBytes_ = 0;
    std::int64_t headerLines_ = 0;
    bool isHeadOver_ = false;
    bool hasTooManyHeaders_ = false;
    bool isBodyFull_ = false;
};

} // namespace tolvo
