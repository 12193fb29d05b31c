#include "platform/linux/response_collector.h"

#include "core/text.h"

namespace tolvo {

namespace {

/// Over all heads of an exchange, interim ones included: far beyond what a server has reason to send.
constexpr std::int64_t headerByteLimit = 262'144;
constexpr std::int64_t headerLineLimit = 1000;

} // namespace

bool ResponseCollector::addHeaderLine(std::string_view line) {
    headerBytes_ += static_cast<std::int64_t>(line.size());
    ++headerLines_;
    hasTooManyHeaders_ = headerBytes_ > headerByteLimit || headerLines_ > headerLineLimit;
    if (hasTooManyHeaders_)
        return false;
    if (isHeadOver_ && line.starts_with("HTTP/")) {
        // The head so far was an interim one.
        response_.headers.clear();
        isHeadOver_ = false;
    } else if (trimmed(line).empty()) {
        isHeadOver_ = true;
    } else if (!isHeadOver_) {
        addHeader(line);
    }
    return true;
}

void ResponseCollector::addHeader(std::string_view line) {
    const auto colon = line.find(':');
    if (colon == std::string_view::npos || colon == 0)
        return;
    response_.headers.emplace_back(lowerCased(trimmed(line.substr(0, colon))), trimmed(line.substr(colon + 1)));
}

bool ResponseCollector::addBody(std::string_view bytes) {
    const std::size_t room = bodyLimit_ - static_cast<std::size_t>(response_.receivedBodyBytes);
    isBodyFull_ = bytes.size() > room;
    bytes = bytes.substr(0, room);
    if (mode_ == ResponseBody::Keep)
        response_.body.append(bytes);
    response_.receivedBodyBytes += static_cast<std::int64_t>(bytes.size());
    return !isBodyFull_;
}

HTTPResponse ResponseCollector::takeResponse(int statusCode) {
    response_.statusCode = statusCode;
    return std::move(response_);
}

} // namespace tolvo
