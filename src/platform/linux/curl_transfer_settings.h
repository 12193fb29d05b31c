#pragma once

#include "platform/linux/certificate_store.h"

#include <string>

namespace tolvo {

/// What all transfers of a session have in common.
struct CurlTransferSettings {
    /// Product and version.
    std::string userAgent;
    /// Without any, no HTTPS server is trusted.
    CertificateStore certificates;
};

} // namespace tolvo
