#pragma once

#include <string>

namespace tolvo {

/// Where the certificates of trusted authorities are; an empty text is none.
struct CertificateStore {
    /// One PEM file with all of them.
    std::string bundleFile{};
    /// Single PEM files, named by hash.
    std::string directory{};

    /// The user's (SSL_CERT_FILE, SSL_CERT_DIR), else the system's, which each distribution keeps elsewhere.
    static CertificateStore ofSystem();
};

} // namespace tolvo
