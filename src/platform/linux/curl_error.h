#pragma once

#include "platform/services/url_session.h"

#include <curl/curl.h>

namespace tolvo {

/// An error of this kind in words for a person.
URLSessionError urlSessionError(URLSessionError::Kind kind);

/// What a transfer's failure means to its caller.
URLSessionError urlSessionError(CURLcode code);

} // namespace tolvo
